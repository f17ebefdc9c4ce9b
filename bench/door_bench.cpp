// A fit of 1000 points, every third of them suspended: the routine alone, and
// through the door with grid and log entry.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "actions/dispatch.h"
#include "actions/fit_routines.h"
#include "actions/ranking.h"
#include "life/models.h"
#include "support/test_world.h"

namespace tavlo {
namespace {

/// Answers every question with a slope of 1.5.
struct SlopePrompts : test::ScriptedPrompts {
  std::optional<std::string> ask_line(const std::string&, const std::string&,
                                      const std::string&) override {
    return "1.5";
  }
};

DataSet thousand_points() {
  std::mt19937_64 random(7);
  std::weibull_distribution<double> weibull(2.5, 1000);
  std::vector<test::Point> points(1000);
  int i = 0;
  for (test::Point& point : points) {
    point.x = weibull(random);
    if (++i % 3 == 0) std::swap(point.fails, point.susps);
  }
  std::sort(points.begin(), points.end(), [](auto& a, auto& b) { return a.x < b.x; });
  return test::make_data(points);
}

struct BenchWorld : test::TestWorld {
  BenchWorld() : session_with_slope(with_slope()) {
    DataSet data = thousand_points();
    Make_Ranks(session_with_slope.errors, true, data);
    session_with_slope.gData(1) = data;
  }
  Ports with_slope() {
    return {slope_prompts, event_loop, clock, entropy, clipboard, text_measure, files, host, views};
  }
  SlopePrompts slope_prompts;
  Session session_with_slope;
};

void through_door(benchmark::State& state, std::int16_t code, std::int16_t method) {
  BenchWorld world;
  Session& session = world.session_with_slope;
  for (auto _ : state) {
    std::int16_t model = code;
    session.gFit(1).nFits = 0;
    session.gFit(1).Fits.resize(0);
    Fit_Distribution(session, 1, 1, model, method, false, true);
    state.PauseTiming();
    session.log = RichText();
    world.views.said.clear();
    state.ResumeTiming();
  }
  if (session.gFit(1).nFits != 1) state.SkipWithError("no fit");
}

void routine(benchmark::State& state, std::int16_t code, std::int16_t method) {
  BenchWorld world;
  FitResult fit;
  fit.ModelCode = code;
  fit.Method = method;
  fit.nRows = 1;
  fit.Rows.resize(1);
  for (auto _ : state) {
    fit.Rows(1).Shape = find_model(code)->fixes_slope() ? 1.5 : -1;
    run_routine(world.session_with_slope, *find_model(code), 1, 1, fit);
    benchmark::DoNotOptimize(fit.Quality);
  }
  if (fit.Status != FitStatus::calculated) state.SkipWithError("no fit");
}

const bool registered = [] {
  for (const char* name : {"W2P", "Wb", "N", "LN", "G-", "G+"}) {
    const Model* model = find_model_by_name(name);
    for (const Method& method : methods()) {
      if (model->routine != FitRoutine::weibull && method.code == method_code::mle) continue;
      const std::string fit = std::string(name) + "/" + method.command_name;
      benchmark::RegisterBenchmark(("routine/" + fit).c_str(), routine, model->code, method.code)
          ->Unit(benchmark::kMicrosecond);
      benchmark::RegisterBenchmark(("door/" + fit).c_str(), through_door, model->code, method.code)
          ->Unit(benchmark::kMicrosecond);
    }
  }
  return true;
}();

}  // namespace
}  // namespace tavlo
