// How long a chart's window of 1920 x 1080 pixels takes to show a drawing that is
// composed already.
#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <random>

#include "chart/compose/auto_scale.h"
#include "chart/compose/make_chart.h"
#include "numerics/unheard_reports.h"
#include "painter/player.h"
#include "project/ranking.h"
#include "support/test_world.h"

namespace tavlo {
namespace {

/// So many different times with their ranks, scattered as those of a real sample.
DataSet sample(int count) {
  std::mt19937_64 generator(1);
  std::exponential_distribution<double> exponential;
  std::vector<double> times;
  for (int i = 0; i < count; ++i) times.push_back(1000 * std::sqrt(exponential(generator)));
  std::sort(times.begin(), times.end());
  std::vector<test::Point> points;
  for (const double time : times) points.push_back({time});
  DataSet data = test::make_data(points);
  UnheardReports reports;
  Make_Ranks(reports.errors, true, data);
  return data;
}

void replay(benchmark::State& state) {
  test::TestWorld world;
  DataSet data = sample(static_cast<int>(state.range(0)));
  data.UniqueId = world.session.project.data(1).UniqueId;
  world.session.project.data(1) = std::move(data);
  SetAutoScale(world.session, world.session.project.charts(1));
  const DrawingRecord drawing = fl_Make_WMF(world.session, 1);
  QImage window(1920, 1080, QImage::Format_RGB32);
  for (auto step : state) {
    QPainter painter(&window);
    PlayChart(painter, drawing, QRectF(0, 0, 1920, 1080));
  }
  state.counters["records"] = static_cast<double>(drawing.records.size());
}
BENCHMARK(replay)->Arg(20)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tavlo

int main(int count, char** words) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication application(count, words);
  benchmark::Initialize(&count, words);
  benchmark::RunSpecifiedBenchmarks();
}
