// Whole fits by the door on 100 to a million failures: W2P, and the models with a search.
#include <benchmark/benchmark.h>

#include <string>

#include "fit/door/fit.h"
#include "support/random_samples.h"

namespace tavlo {
namespace {

Life truth_of(std::int16_t model) {
  if (model == model_code::weibull2) return test::weibull(2.5, 1000);
  if (model == model_code::weibull3) return test::weibull(2.5, 1000, 500);
  if (model == model_code::weibull4) return test::weibull4(4, 1000, 1, 1500);
  if (model == model_code::weibull5c) return test::weibull5c(3, 1000, 2, 50, 0.2);
  return test::weibull7(4, 1000, 1, 3000, 2, 50, 0.15);
}

void fit_model(benchmark::State& state, std::int16_t model, std::int16_t method) {
  test::RandomNumbers random(17);
  const int n = static_cast<int>(state.range(0));
  const Sample sample = make_sample(test::draws(random, truth_of(model), n), RankKind::benard);
  FitRequest request;
  request.model = model;
  request.method = method;
  Companion companion;
  FitAnswer answer;
  for (auto _ : state) {
    answer = fit(sample, request, companion);
    benchmark::DoNotOptimize(answer);
  }
  if (!answer.fit()) return state.SkipWithError("refused");
  if (answer.fit()->starts) state.counters["starts"] = answer.fit()->starts->tried;
}

const bool registered = [] {
  for (const char* name : {"W2P", "W3T", "W4P", "W5C", "W7P"})
    for (const Method& method : methods())
      benchmark::RegisterBenchmark((std::string(name) + "/" + method.command_name).c_str(),
                                   fit_model, find_model_by_name(name)->code, method.code)
          ->Arg(100)
          ->Arg(10'000)
          ->Arg(1'000'000)
          ->UseRealTime()
          ->Unit(benchmark::kMillisecond);
  return true;
}();

}  // namespace
}  // namespace tavlo
