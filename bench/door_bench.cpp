// A fit of 1000 points, every third of them suspended: the value alone, and as a request
// of the windows with grid and log entry.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "actions/dispatch.h"
#include "fit/door/fit.h"
#include "project/fit_records.h"
#include "project/ranking.h"
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

void value(benchmark::State& state, std::int16_t code, std::int16_t method) {
  const DataSet data = thousand_points();
  FitRequest request;
  request.model = code;
  request.method = method;
  if (find_model(code)->fixes_slope()) request.slope = 1.5;
  Companion nobody;
  for (auto _ : state) {
    const FitAnswer answer = fit(sample_of(data, request.ranks), request, nobody);
    if (!answer.fit()) state.SkipWithError("no fit");
  }
}

const bool registered = [] {
  for (const char* name : {"W2P", "Wb", "N", "LN", "G-", "G+"}) {
    const Model* model = find_model_by_name(name);
    for (const Method& method : methods()) {
      if (model->routine != FitRoutine::weibull && method.code == method_code::mle) continue;
      const std::string fit = std::string(name) + "/" + method.command_name;
      benchmark::RegisterBenchmark(("value/" + fit).c_str(), value, model->code, method.code)
          ->Unit(benchmark::kMicrosecond);
      benchmark::RegisterBenchmark(("door/" + fit).c_str(), through_door, model->code, method.code)
          ->Unit(benchmark::kMicrosecond);
    }
  }
  return true;
}();

}  // namespace
}  // namespace tavlo
