// Samples of a million points to their text, planned tests, and the comparison of all models
// on 1000 points, each from its door to its answer.
#include <benchmark/benchmark.h>

#include "analyses/comparison.h"
#include "analyses/planned_runs.h"
#include "analyses/sample_text.h"
#include "files/system_ports.h"
#include "fit/door/fit.h"
#include "support/random_samples.h"

namespace tavlo {
namespace {

const Life w2p{model_code::weibull2, {{0.001, 1, 2, 0, 1}}};
const Life w5c{model_code::weibull5c, {{0.01, 0.2, 3, 0, 1}, {0.001, 0.8, 3, 0, 3}}};
const Life w7p{model_code::weibull7,
               {{0.01, 0.15, 4, 0, 1}, {0.0002, 0.85, 1, 0, 3}, {0.001, 0, 3, 0, 3}}};

void million_points(benchmark::State& state, const Life& life) {
  RandomEntropy chance;
  WichmannHill random({1, 2, 3, 4});
  for (auto _ : state) {
    const DrawnPoints points = draw_points({life, 1000000}, random, chance);
    std::size_t bytes = 0;
    write_points(points, ">", "\n",
                 [&](std::string_view text) { return bytes += text.size(), true; });
    benchmark::DoNotOptimize(bytes);
  }
}
BENCHMARK_CAPTURE(million_points, W2P, w2p)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(million_points, W7P, w7p)->Unit(benchmark::kMillisecond)->UseRealTime();

void ten_thousand_runs(benchmark::State& state, const Life& life) {
  RandomEntropy chance;
  WichmannHill random({1, 2, 3, 4});
  RunPlan plan{{life, 30}, 10000, {}, {}};
  plan.fits.push_back({.model = life.model, .method = method_code::mle});
  for (auto _ : state)
    benchmark::DoNotOptimize(make_runs(plan, random, chance, [](std::int32_t) { return true; }));
}
BENCHMARK_CAPTURE(ten_thousand_runs, W2P_mle_of_30, w2p)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(ten_thousand_runs, W5C_mle_of_30, w5c)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(1);

/// All models that have a routine for the method.
void compare_all(benchmark::State& state, std::int16_t method) {
  test::RandomNumbers random(9);
  const Sample sample = make_sample(test::draws(random, w5c, 1000, 0.2), RankKind::benard);
  Companion companion;
  for (auto _ : state) {
    std::vector<ComparedFit> fits;
    for (const Model& model : models()) {
      FitRequest request{.model = model.code, .method = method};
      if (model.fixes_slope()) request.slope = model.fixed_slope > 0 ? model.fixed_slope : 1.5;
      const FitAnswer answer = fit(sample, request, companion);
      fits.push_back({request, answer.fit() ? std::optional(answer.fit()->quality) : std::nullopt});
    }
    benchmark::DoNotOptimize(compare(sample, fits));
  }
}
BENCHMARK_CAPTURE(compare_all, mle_of_1000, method_code::mle)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(compare_all, rr_of_1000, method_code::x_on_y)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

}  // namespace
}  // namespace tavlo
