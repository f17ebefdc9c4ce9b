// Ranking and the two-parameter Weibull on a million rows, and exact median
// ranks. Each round of a fit ranks the set again.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "actions/classical_fits.h"
#include "actions/median_ranks.h"
#include "actions/ranking.h"
#include "life/models.h"
#include "support/test_world.h"

namespace tavlo {
namespace {

constexpr int rows = 1'000'000;

/// Sorted Weibull times (beta 2.5, eta 1000); every `period`-th is a suspension.
DataSet sorted_data(int period) {
  std::mt19937_64 random(20240611);
  std::weibull_distribution<double> weibull(2.5, 1000);
  std::vector<double> times(rows);
  for (double& time : times) time = weibull(random);
  std::sort(times.begin(), times.end());
  DataSet data = fuStandardData();
  data.Count = rows;
  data.Points.resize(rows);
  for (int i = 1; i <= rows; ++i) {
    DataPoint& row = data.Points(i);
    const bool suspended = period > 0 && i % period == 0;
    row.X = static_cast<float>(times[static_cast<std::size_t>(i) - 1]);
    row.Fails = suspended ? 0 : 1;
    row.Susps = suspended ? 1 : 0;
    row.Order = i;
  }
  return data;
}

void rank(benchmark::State& state, int period, bool benard) {
  test::TestWorld world;
  world.prompts.accept_all();
  DataSet data = sorted_data(period);
  for (auto _ : state) {
    Make_Ranks(world.session.errors, benard, data);
    benchmark::DoNotOptimize(data.YMax);
  }
  if (!world.prompts.shown().empty()) state.SkipWithError("a box was shown");
}
BENCHMARK_CAPTURE(rank, failures_only, 0, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(rank, failures_without_benard, 0, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(rank, third_suspended, 3, true)->Unit(benchmark::kMillisecond);

void exact_median_ranks(benchmark::State& state) {
  const int n = static_cast<int>(state.range(0));
  for (auto _ : state) {
    Slots<double> table;
    fn_MedianRanks(false, table, 0.5, n, 1e-12);
    benchmark::DoNotOptimize(table.data());
  }
}
BENCHMARK(exact_median_ranks)->Arg(20)->Arg(1000)->Arg(5000)->Unit(benchmark::kMillisecond);

void rank_and_fit(benchmark::State& state, std::int16_t method, int period) {
  test::TestWorld world;
  world.prompts.accept_all();
  DataSet data = sorted_data(period);
  FitResult fit;
  fit.ModelCode = model_code::weibull2;
  fit.Method = method;
  fit.Rows.resize(1);
  for (auto _ : state) {
    fit.Rows(1).Shape = -1;
    Make_Ranks(world.session.errors, true, data);
    Fit_Wb123(world.session.errors, world.prompts, data, fit, 1);
    benchmark::DoNotOptimize(fit.Quality);
  }
  if (fit.Status != FitStatus::calculated) state.SkipWithError("no fit");
  state.counters["beta"] = fit.Rows(1).Shape;
}
BENCHMARK_CAPTURE(rank_and_fit, mle, method_code::mle, 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(rank_and_fit, mle_suspended, method_code::mle, 3)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(rank_and_fit, x_on_y, method_code::x_on_y, 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(rank_and_fit, y_on_x, method_code::y_on_x, 0)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tavlo
