// Composition of charts: many points, and one fit line.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "chart/auto_scale.h"
#include "chart/canvas.h"
#include "chart/fit_line.h"
#include "chart/font_metrics.h"
#include "chart/make_chart.h"
#include "project/models.h"
#include "project/session.h"

namespace tavlo {
namespace {

// A world in which nothing happens.
struct NoPrompts : Prompts {
  BoxAnswer show(const Box&) override { return BoxAnswer::ok; }
  std::optional<std::string> ask_line(const std::string&, const std::string&,
                                      const std::string&) override {
    return std::nullopt;
  }
  std::optional<std::string> choose_file(const FileRequest&) override { return std::nullopt; }
};
struct NoEvents : EventLoop {
  void yield() override {}
};
struct StoppedClock : Clock {
  double seconds_since_midnight() override { return 0; }
  DateTime now() override { return {}; }
  double day_count() override { return 46000; }
  double steady_seconds() override { return 0; }
};
struct NoEntropy : Entropy {
  std::uint32_t next() override { return 1; }
};
struct NoClipboard : Clipboard {
  std::string text() override { return {}; }
  void set_text(const std::string&, const std::string&) override {}
};
struct NoFiles : FileSystem {
  FileResult read_whole(const std::string&, std::uint64_t, std::string&) override { return {}; }
  FileResult write_whole(const std::string&, std::string_view) override { return {}; }
  bool exists(const std::string&) override { return false; }
};
struct NoHost : Host {
  std::string environment(const std::string&) override { return {}; }
  bool start_program(const std::string&, const std::vector<std::string>&) override { return false; }
};
struct NoViews : Views {
  void status(const std::string&) override {}
  void busy_pointer(bool) override {}
  void fit_button_caption(int, const std::string&) override {}
  void sheet_changed(int) override {}
  void fit_grid_changed(int) override {}
  void chart_changed(int) override {}
  void log_changed() override {}
};

struct BenchWorld {
  BenchWorld()
      : session(
            Ports{prompts, event_loop, clock, entropy, clipboard, measure, files, host, views}) {
    FitResult fit;
    fit.ModelCode = model_code::weibull2;
    fit.Status = FitStatus::calculated;
    fit.nRows = 1;
    fit.Rows.push_back({1 / 1000.0, 1, 2, 0, 1});
    session.gFit(1).nFits = 1;
    session.gFit(1).Fits.resize(1);
    session.gFit(1).Fits(1) = fit;
  }

  NoPrompts prompts;
  NoEvents event_loop;
  StoppedClock clock;
  NoEntropy entropy;
  NoClipboard clipboard;
  MetricTextMeasure measure;
  NoFiles files;
  NoHost host;
  NoViews views;
  Session session;
};

DataSet weibull_sample(int count) {
  std::mt19937_64 generator(1);
  std::weibull_distribution<double> sample(2, 1000);
  std::vector<double> times;
  for (int i = 0; i < count; ++i) times.push_back(sample(generator));
  std::sort(times.begin(), times.end());
  DataSet data = fuStandardData();
  data.Count = count;
  data.Points.resize(count);
  for (int i = 1; i <= count; ++i) {
    DataPoint& point = data.Points(i);
    point.X = static_cast<float>(times[static_cast<std::size_t>(i) - 1]);
    point.Y = static_cast<float>((i - 0.3) / (count + 0.4));
    point.Fails = 1;
  }
  return data;
}

void compose(benchmark::State& state) {
  BenchWorld here;
  DataSet data = weibull_sample(static_cast<int>(state.range(0)));
  data.UniqueId = here.session.gData(1).UniqueId;
  here.session.gData(1) = std::move(data);
  for (auto _ : state) {
    SetAutoScale(here.session, here.session.gChart(1));
    benchmark::DoNotOptimize(fl_Make_WMF(here.session, 1));
  }
}
BENCHMARK(compose)->Arg(20)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

void fit_line(benchmark::State& state) {
  BenchWorld here;
  Chart& chart = here.session.gChart(1);
  const FitResult& fit = here.session.gFit(1).Fits(1);
  for (auto _ : state) {
    DrawingRecord drawing;
    Recorder recorder(drawing);
    Canvas canvas{recorder, chart, here.measure, here.prompts, here.session.errors};
    DrawData_One_Line(canvas, chart.Markers(1), fit);
    benchmark::DoNotOptimize(drawing);
  }
}
BENCHMARK(fit_line)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tavlo
