// Composition of charts: many points, and one fit line.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "chart/chart_world.h"
#include "chart/compose/readout.h"
#include "chart/parts/fit_line.h"
#include "chart/record/canvas.h"
#include "life/models.h"
#include "project/ranking.h"

namespace tavlo {
namespace {

struct BenchWorld : test::ChartWorld {
  BenchWorld() { show(test::fit_of(model_code::weibull2, {{1 / 1000.0, 1, 2, 0, 1}})); }
};

DataSet weibull_sample(int count) {
  std::mt19937_64 generator(1);
  std::weibull_distribution<double> sample(2, 1000);
  std::vector<double> times;
  for (int i = 0; i < count; ++i) times.push_back(sample(generator));
  std::vector<test::Point> points;
  for (const double time : times) points.push_back({time});
  DataSet data = test::make_data(points);
  UnheardReports reports;
  Make_Ranks(reports.errors, true, data);
  return data;
}

void compose(benchmark::State& state) {
  BenchWorld here;
  DataSet data = weibull_sample(static_cast<int>(state.range(0)));
  data.UniqueId = here.session.project.data(1).UniqueId;
  here.session.project.data(1) = std::move(data);
  for (auto _ : state) {
    SetAutoScale(here.session, here.session.project.charts(1));
    benchmark::DoNotOptimize(fl_Make_WMF(here.session, 1));
  }
}
BENCHMARK(compose)->Arg(20)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

/// Twenty sets, each with its fit, symbols and a line of the legend.
void compose_twenty_sets(benchmark::State& state) {
  test::ChartWorld here;
  for (int i = 1; i <= 20; ++i) {
    if (i > 1) New_frm_Data(here.session);
    if (i > 1) New_frm_Fit(here.session);
    DataSet data = weibull_sample(static_cast<int>(state.range(0)));
    data.UniqueId = here.session.project.data(i).UniqueId;
    here.session.project.data(i) = std::move(data);
    here.session.project.fits(i).nFits = 1;
    here.session.project.fits(i).Fits.resize(1);
    here.session.project.fits(i).Fits(1) =
        test::fit_of(model_code::weibull2, {{1 / (500.0 * i), 1, 2, 0, 1}});
  }
  for (auto _ : state) benchmark::DoNotOptimize(here.draw());
}
BENCHMARK(compose_twenty_sets)->Arg(20)->Arg(1000)->Unit(benchmark::kMillisecond);

/// One move of the pointer over a chart of many points, with the fit's sayings.
void precise_reading(benchmark::State& state) {
  BenchWorld here;
  DataSet data = weibull_sample(static_cast<int>(state.range(0)));
  data.UniqueId = here.session.project.data(1).UniqueId;
  here.session.project.data(1) = std::move(data);
  here.draw();
  Readout readout(here.session, here.chart());
  for (auto _ : state) benchmark::DoNotOptimize(readout.precise_at({5000, 3000}, 60));
}
BENCHMARK(precise_reading)->Arg(20)->Arg(1000000)->Unit(benchmark::kMicrosecond);

void fit_line(benchmark::State& state) {
  BenchWorld here;
  Chart& chart = here.session.project.charts(1);
  const FitResult& fit = here.session.project.fits(1).Fits(1);
  for (auto _ : state) {
    DrawingRecord drawing;
    Recorder recorder(drawing);
    Canvas canvas{recorder, chart, here.measure, here.world.prompts, here.session.errors};
    DrawData_One_Line(canvas, chart.Markers(1), fit);
    benchmark::DoNotOptimize(drawing);
  }
}
BENCHMARK(fit_line)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tavlo
