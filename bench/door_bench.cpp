// A million rows at the door of the fits: making the sample, and the two-parameter Weibull;
// and exact median ranks.
#include <benchmark/benchmark.h>

#include "fit/door/fit.h"
#include "fit/ranks/median_ranks.h"
#include "support/random_samples.h"

namespace tavlo {
namespace {

constexpr int million = 1'000'000;

std::vector<SampleRow> million_rows(double suspended) {
  test::RandomNumbers random(20240611);
  return test::draws(random, test::weibull(2.5, 1000), million, suspended);
}

void sample(benchmark::State& state, double suspended) {
  const std::vector<SampleRow> rows = million_rows(suspended);
  for (auto _ : state) benchmark::DoNotOptimize(make_sample(rows, RankKind::benard));
}
BENCHMARK_CAPTURE(sample, failures_only, 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(sample, third_suspended, 0.67)->Unit(benchmark::kMillisecond);

void sample_and_fit(benchmark::State& state, std::int16_t method, double suspended) {
  const std::vector<SampleRow> rows = million_rows(suspended);
  FitRequest request;
  request.method = method;
  Companion companion;
  for (auto _ : state) {
    const FitAnswer answer = fit(make_sample(rows, RankKind::benard), request, companion);
    if (!answer.fit()) return state.SkipWithError("refused");
    state.counters["beta"] = answer.fit()->life.rows[0].Shape;
  }
}
BENCHMARK_CAPTURE(sample_and_fit, mle, method_code::mle, 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(sample_and_fit, mle_suspended, method_code::mle, 0.67)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(sample_and_fit, x_on_y, method_code::x_on_y, 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(sample_and_fit, y_on_x, method_code::y_on_x, 0)->Unit(benchmark::kMillisecond);

void exact_median_ranks(benchmark::State& state) {
  const int n = static_cast<int>(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(fn_MedianRanks(false, 0.5, n, 1e-12));
}
BENCHMARK(exact_median_ranks)->Arg(20)->Arg(1000)->Arg(5000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tavlo
