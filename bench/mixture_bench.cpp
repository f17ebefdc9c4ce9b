// Whole fits by the mixture solver, further starts included, on 100 to a million
// failures.
#include <benchmark/benchmark.h>

#include "life/models.h"
#include "solver/fit_line.h"
#include "support/mixture_samples.h"
#include "support/test_world.h"

namespace tavlo {
namespace {

test::TrueMixture truth_of(std::int16_t model) {
  if (model == model_code::weibull3) return {4, 2.5, 1000, 0, 1, 0, 1, 0};
  if (model == model_code::weibull4) return {4, 4, 1000, 1, 1500, 0, 1, 0};
  if (model == model_code::weibull5c) return {5, 3, 1000, 0, 1, 2, 50, 0.2};
  return {7, 4, 1000, 1, 3000, 2, 50, 0.15};
}

void fit(benchmark::State& state, std::int16_t model, std::int16_t method) {
  const DataSet data =
      test::random_sample(truth_of(model), {.n = static_cast<int>(state.range(0)), .seed = 17});
  for (auto _ : state) {
    state.PauseTiming();
    test::TestWorld world;  // a fresh one: nothing is solved before
    world.prompts.accept_all();
    New_frm_Data(world.session);
    New_frm_Fit(world.session);
    world.session.gData(1) = data;
    state.ResumeTiming();
    Fit_Line(world.session, 1, 1, model, method);
    state.PauseTiming();
    if (world.session.gFit(1).nFits != 1) state.SkipWithError("no fit");
    state.ResumeTiming();
  }
}

void sizes(benchmark::internal::Benchmark* bench) {
  bench->Arg(100)->Arg(10'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
}

#define TAVLO_FIT_BENCH(model)                                                                  \
  BENCHMARK_CAPTURE(fit, model##_x_on_y, model_code::model, method_code::x_on_y)->Apply(sizes); \
  BENCHMARK_CAPTURE(fit, model##_mle, model_code::model, method_code::mle)->Apply(sizes);       \
  BENCHMARK_CAPTURE(fit, model##_y_on_x, model_code::model, method_code::y_on_x)->Apply(sizes)

TAVLO_FIT_BENCH(weibull3);
TAVLO_FIT_BENCH(weibull4);
TAVLO_FIT_BENCH(weibull5c);
TAVLO_FIT_BENCH(weibull7);

}  // namespace
}  // namespace tavlo
