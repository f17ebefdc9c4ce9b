// The classical fits by the door on 1000 points, every third of them suspended, and the
// many small sets of a batch: sample and fit together.
#include <benchmark/benchmark.h>

#include <string>

#include "fit/door/fit.h"
#include "support/random_samples.h"

namespace tavlo {
namespace {

void fit_classical(benchmark::State& state, std::int16_t model, std::int16_t method) {
  test::RandomNumbers random(7);
  const Sample sample =
      make_sample(test::draws(random, test::weibull(2.5, 1000), 1000, 0.67), RankKind::benard);
  FitRequest request;
  request.model = model;
  request.method = method;
  if (find_model(model)->fixes_slope()) request.slope = 1.5;
  Companion companion;
  for (auto _ : state) {
    const FitAnswer answer = fit(sample, request, companion);
    if (!answer.fit()) return state.SkipWithError("refused");
    benchmark::DoNotOptimize(answer);
  }
}

/// One set after the other, as a batch reads them.
void small_sets(benchmark::State& state, std::int16_t model, int n) {
  test::RandomNumbers random(8);
  std::vector<std::vector<SampleRow>> sets;
  const Life life = model == model_code::weibull2 ? test::weibull(2.5, 1000)
                                                  : test::weibull5c(3, 1000, 2, 50, 0.2);
  for (int i = 0; i < 64; ++i) sets.push_back(test::draws(random, life, n));
  FitRequest request;
  request.model = model;
  request.method = method_code::mle;
  Companion companion;
  std::size_t next = 0;
  for (auto _ : state)
    benchmark::DoNotOptimize(
        fit(make_sample(sets[next++ % sets.size()], RankKind::benard), request, companion));
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK_CAPTURE(small_sets, W2P_mle_of_20, model_code::weibull2, 20)->UseRealTime();
BENCHMARK_CAPTURE(small_sets, W5C_mle_of_30, model_code::weibull5c, 30)->UseRealTime();

const bool registered = [] {
  for (const char* name : {"W2P", "Wb", "N", "LN", "G-", "G+"}) {
    const Model* model = find_model_by_name(name);
    for (const Method& method : methods()) {
      if (model->routine != FitRoutine::weibull && method.code == method_code::mle) continue;
      benchmark::RegisterBenchmark((std::string(name) + "/" + method.command_name).c_str(),
                                   fit_classical, model->code, method.code)
          ->Unit(benchmark::kMicrosecond);
    }
  }
  return true;
}();

}  // namespace
}  // namespace tavlo
