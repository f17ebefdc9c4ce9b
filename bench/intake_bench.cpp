// The whole way of a large sheet: paste, intake, fit.
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <string>

#include "actions/clipboard_text.h"
#include "actions/intake.h"
#include "numerics/number_text.h"
#include "project/fit_records.h"
#include "support/test_world.h"

namespace tavlo {
namespace {

std::string column_of_times(int rows) {
  std::mt19937_64 random(1);
  std::weibull_distribution<double> weibull(2.0, 1000.0);
  std::string text;
  for (int i = 0; i < rows; ++i) text += number_text(weibull(random) + 1e-3, 7) + "\n";
  return text;
}

void paste(benchmark::State& state) {
  const std::string text = column_of_times(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    test::TestWorld world;
    world.clipboard.plain = text;
    PasteClip(world.session, 1);
  }
}

void intake_and_fit(benchmark::State& state) {
  test::TestWorld world;
  world.clipboard.plain = column_of_times(static_cast<int>(state.range(0)));
  PasteClip(world.session, 1);
  world.session.gFitForm(1)->nModel = 98;
  world.session.gFitForm(1)->nMethod = 0;
  for (auto _ : state) {
    mark_changed(world.session.project.data(1));
    CheckAndFit(world.session, 1);
  }
}

BENCHMARK(paste)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(intake_and_fit)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tavlo
