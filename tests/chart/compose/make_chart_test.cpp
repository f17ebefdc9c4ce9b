#include "chart/compose/make_chart.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <limits>
#include <map>

#include "chart/chart_world.h"
#include "chart/metafile/metafile_writer.h"
#include "chart/parts/legend.h"
#include "chart/parts/marks.h"
#include "project/chart_looks.h"
#include "project/chart_types.h"

namespace tavlo {
namespace {

using namespace drawing;
using test::all;
using test::has_text;

class MakeChartTest : public ::testing::Test {
 protected:
  MakeChartTest() { here.show_published(); }
  test::ChartWorld here;
};

// Across the longer extent of each of its parts, as the thinning measures.
TEST_F(MakeChartTest, ACurvedFitLineIsAsExactAsItMustBeAndNoMore) {
  const double low = std::log(-std::log1p(-0.01)), high = std::log(std::log(2.0));
  double farthest = 0;
  for (const double early : {40, 50, 60, 80, 100, 130}) {
    here.show(test::fit_of(model_code::weibull5x,
                           {{1 / early, 0.3, 3, 0, 1}, {1 / 400.0, 0.7, 2, 0, 2}}));
    const std::vector<Polyline> lines = all<Polyline>(here.draw());
    const Polyline& line = *std::max_element(
        lines.begin(), lines.end(),
        [](const auto& a, const auto& b) { return a.places.size() < b.places.size(); });
    for (std::size_t k = 1; k < line.places.size(); ++k) {
      const Place a = line.places[k - 1], b = line.places[k];
      const double slope = static_cast<double>(b.y - a.y) / (b.x - a.x);
      for (std::int32_t x = a.x; x < b.x; ++x) {
        const double time = std::pow(10, 1 + (x - 1250) / 4000.0);
        const double left =
            0.3 * std::exp(-std::pow(time / early, 3)) + 0.7 * std::exp(-std::pow(time / 400, 2));
        const double y = 5150 - 4500 * (std::log(-std::log(left)) - low) / (high - low);
        const double miss = std::fabs(y - a.y - slope * (x - a.x));
        farthest = std::max(farthest, miss / std::max(1.0, std::fabs(slope)));
      }
    }
  }
  EXPECT_GT(farthest, 2.3);
  EXPECT_LT(farthest, 3.2);
}

/// Charts in which every part shows in several forms.
std::map<std::string, DrawingRecord> all_kinds_of_charts() {
  std::map<std::string, DrawingRecord> charts;
  for (const int code : {162, 857, 922, 1057, 1137}) {
    test::ChartWorld here;
    here.show(test::ranked(test::published_times()));
    here.show(test::fit_of(code, {{1 / 300.0, 1, code == 857 ? 0.01 : 2, 50, 1}}));
    if (code == 857 || code == 922) here.session.project.fits(1).Fits(1).Rows(1).Scale = 300;
    here.chart().Boxes(chart_item::sub_title).Text2 = std::string(30, 'W') + " of the rig";
    here.chart().Axes(code % 2).Label.Text2 = "0.000";
    charts["model_" + std::to_string(code)] = here.draw_metafile();
    Chart stated = here.chart();
    apply_chart_look(here.chart(), report_chart_type);
    charts["report_" + std::to_string(code)] = here.draw_metafile();
    here.chart() = stated;
    here.chart().Axes(0).ScaleType = x_scale::linear;
    here.chart().Axes(1).ScaleType = y_scale::linear;
    here.chart().Axes(1).AutoMin = false;
    here.chart().Axes(1).Min = -0.1;
    charts["linear_" + std::to_string(code)] = here.draw_metafile();
  }
  for (const int code : {98, 857, 922, 1057, 1137}) {  // labels on long axes, titles too long
    test::ChartWorld here;
    std::vector<test::Point> points;
    for (int i = 1; i <= 300; ++i) points.push_back({0.001 * i * i});
    here.show(test::ranked(points));
    here.show(test::fit_of(code, {{1, 1, 1, 0, 1}}));
    for (int item = chart_item::main_title; item <= chart_item::y_title; ++item) {
      here.chart().Boxes(item).Text2 =
          "A long title of a chart " +
          std::string(code == 98 ? 5000 : static_cast<std::size_t>(code) / 10, 'W');
      here.chart().Boxes(item).Fill = 1;
    }
    charts["labels_" + std::to_string(code)] = here.draw_metafile();
  }
  for (const int sets : {4, 60}) {
    test::SetsWorld here(sets);
    here.legend().Mode = legend_mode::always;
    here.chart().Boxes(chart_item::parameter_box).FontSize = sets == 4 ? 9 : 16;
    here.chart().Markers(2).SymbolStyle = pen_style::none;
    here.chart().Markers(3).SymbolFill = 0;
    here.chart().Markers(4).LineStyle = pen_style::none;
    charts["sets_" + std::to_string(sets)] = here.draw_metafile();
    apply_chart_look(here.chart(), report_chart_type);
    charts["report_sets_" + std::to_string(sets)] = here.draw_metafile();
  }
  test::ChartWorld here;
  std::vector<test::Point> points;
  for (int i = 1; i <= 4000; ++i) points.push_back({200.0 + i / 20});
  here.show(test::ranked(points));
  here.show(
      test::fit_of(model_code::weibull5x, {{1 / 100.0, 0.3, 3, 0, 1}, {1 / 400.0, 0.7, 2, 0, 2}}));
  here.chart().SubPopulations = true;
  here.chart().Markers(1).LineWidth = 96;
  add_mark(here.chart(), text_mark({4000, 3000}, "Here"));
  add_mark(here.chart(), arrow_mark({3000, 1000}, {3500, 1900}));
  here.chart().Texts(2).Mode = mark_mode::head_at_end | mark_mode::head_at_start;
  add_mark(here.chart(), line_mark({5000, 1000}, {5500, 1900}));
  for (int symbol = 1; symbol <= 27; ++symbol)
    add_mark(here.chart(), symbol_mark({1500 + 200 * symbol, 4000}, symbol));
  charts["marks"] = here.draw_metafile();
  apply_chart_look(here.chart(), report_chart_type);
  charts["report_marks"] = here.draw_metafile();
  return charts;
}

// Golden pictures, to be looked at with any viewer. A chart that should look otherwise now is
// written beside the other test files; it replaces the old picture when it looks right.
TEST(MakeChart, EveryPartLooksAsItDid) {
  for (const auto& [name, drawing] : all_kinds_of_charts()) {
    const std::string bytes = metafile_bytes(drawing), made = testing::TempDir() + name + ".wmf";
    std::ifstream file(TAVLO_TEST_DATA "/charts/" + name + ".wmf", std::ios::binary);
    if (std::string{std::istreambuf_iterator<char>(file), {}} == bytes) continue;
    std::ofstream(made, std::ios::binary) << bytes;
    ADD_FAILURE() << name << " looks otherwise: " << made;
  }
}

// In a metafile a Greek letter is its name, and has the room of it.
TEST(MakeChart, AMetafileDrawingDoesNotKnowGreekLettersFromTheirNames) {
  test::SetsWorld here(3);
  apply_chart_look(here.chart(), report_chart_type);
  const auto metafile = [&](const char* sigma, const char* beta) {
    here.chart().Boxes(chart_item::x_title).Text2 = sigma;
    here.session.project.data(2).Title = beta;
    return metafile_bytes(here.draw_metafile());
  };
  EXPECT_EQ(metafile("\u03C3", "\u03B2"), metafile("sigma", "beta"));
}

TEST_F(MakeChartTest, AFaultIsOneBoxHoweverOftenItStrikes) {
  here.draw();
  here.chart().Axes(0).ScaleType = 5;  // no such scale
  here.world.prompts.expect_box("", "DrawGrid type not recognized");
  here.world.prompts.expect_box("", "Undefined Xscale in xy2long");
  here.world.prompts.expect_box("", "undefined X scale in drawdata_one_Line");
  const DrawingRecord drawing = fl_Make_WMF(here.session, 1);
  EXPECT_TRUE(has_text(drawing, "Results"));
}

TEST_F(MakeChartTest, HostileChartsEndInAReportNotInAHang) {
  here.world.prompts.accept_all();
  here.draw();
  const Chart sound = here.chart();
  const double values[] = {
      0,      -1,           1e308,     -1e308,
      5e-324, std::nan(""), 1 - 1e-16, std::numeric_limits<double>::infinity()};
  for (const double low : values) {
    for (const double high : values) {
      here.chart() = sound;
      for (ChartAxis& axis : here.chart().Axes) {
        axis.Min = low;
        axis.Max = high;
      }
      EXPECT_LT(fl_Make_WMF(here.session, 1).records.size(), 5000u) << low << " " << high;
    }
  }
  here.chart() = sound;
  for (ChartItem& box : here.chart().Boxes) {
    box.FontSize = std::numeric_limits<float>::quiet_NaN();
    box.LineWidth = std::numeric_limits<std::int32_t>::min();
    box.Left = std::numeric_limits<std::int32_t>::max();
    box.Mode = 99;
    box.LineStyle = 77;
  }
  here.chart().Markers(1).Symbol = 300;
  here.chart().Markers(1).Size = -32768;
  EXPECT_GT(fl_Make_WMF(here.session, 1).records.size(), 10u);
  here.chart() = sound;
  here.chart().Boxes(chart_item::legend).FontSize = 1e38F;
  here.chart().Axes(1).ScaleType = -1;
  EXPECT_GT(fl_Make_WMF(here.session, 1).records.size(), 5u);
  EXPECT_TRUE(fl_Make_WMF(here.session, 9).records.empty());
}

TEST(MakeChart, TheSignOfAnOldFitIsLaidOverTheSameDrawing) {
  test::ChartWorld here;
  here.show_published();
  here.chart().Boxes(chart_item::chart_box).Height = 5000;
  const DrawingRecord drawing = here.draw();
  const DrawingRecord old = with_out_of_date_sign(here.session, here.chart(), drawing);
  EXPECT_EQ(std::pair(old.width, old.height), std::pair(drawing.width, drawing.height));
  EXPECT_EQ(old.areas.size(), drawing.areas.size());
  EXPECT_TRUE(std::equal(drawing.records.begin(), drawing.records.end(), old.records.begin()));
  EXPECT_TRUE(test::has_text(old, "Out of date: the data or their ranks have changed"));
}

}  // namespace
}  // namespace tavlo
