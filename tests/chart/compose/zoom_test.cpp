#include "chart/compose/zoom.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "chart/chart_world.h"
#include "chart/scales/chart_view.h"
#include "chart/scales/plot_coordinates.h"
#include "life/models.h"

namespace tavlo {
namespace {

using drawing::Place;

constexpr int papers[][2] = {{x_scale::log, y_scale::weibull},   {x_scale::linear, y_scale::normal},
                             {x_scale::log, y_scale::normal},    {x_scale::linear, y_scale::gumbel},
                             {x_scale::linear, y_scale::linear}, {x_scale::log, y_scale::log}};

Chart on_paper(const int (&codes)[2]) {
  Chart chart = fuStandard_Chart();
  chart.Axes(0).ScaleType = static_cast<std::int16_t>(codes[0]);
  chart.Axes(1).ScaleType = static_cast<std::int16_t>(codes[1]);
  return chart;
}

// What stood in the corners of the rectangle stands in the corners of the plot.
TEST(Zoom, TheRectangleFillsThePlot) {
  test::TestWorld world;
  std::mt19937_64 generator(5);
  std::uniform_int_distribution<std::int32_t> x(1250, 9250), y(650, 5150);
  for (const auto& codes : papers) {
    for (int i = 0; i < 50; ++i) {
      Chart chart = on_paper(codes);
      const Place a{x(generator), y(generator)}, b{x(generator), y(generator)};
      if (std::abs(a.x - b.x) < 20 || std::abs(a.y - b.y) < 20) continue;
      ErrorReporter& errors = world.session.errors;
      const ChartItem& plot = chart.Boxes(chart_item::plot_box);
      const double low = AxisMap::x(errors, plot, chart.Axes(0)).read(std::min(a.x, b.x));
      const double high = AxisMap::y(errors, plot, chart.Axes(1)).read(std::min(a.y, b.y));
      ASSERT_TRUE(zoom_in(chart, a, b));
      EXPECT_EQ(AxisMap::x(errors, plot, chart.Axes(0))(low), 1250);
      EXPECT_EQ(AxisMap::y(errors, plot, chart.Axes(1))(high), 650);
      EXPECT_FALSE(chart.Axes(0).AutoMin || chart.Axes(1).AutoMax);
    }
  }
}

// A run of turns of the wheel, and of moves of the paper, is a single step; what the person
// looks at stays under the pointer all the way.
TEST(Zoom, ThePointerHoldsWhatItIsOver) {
  test::TestWorld world;
  std::mt19937_64 generator(11);
  std::uniform_int_distribution<std::int32_t> x(1250, 9250), y(650, 5150);
  std::uniform_real_distribution<double> factor(0.7, 1.3);
  ErrorReporter& errors = world.session.errors;
  for (const auto& codes : papers) {
    Chart chart = on_paper(codes);
    const Chart first = chart;
    const ChartItem& plot = chart.Boxes(chart_item::plot_box);
    ZoomStep step = ZoomStep::own;
    for (int i = 0; i < 60; ++i, step = ZoomStep::last) {
      const Place at{x(generator), y(generator)}, to{x(generator) / 8 + 5000, y(generator)};
      const Place end = i % 3 == 0 ? to : at;
      const double over = AxisMap::x(errors, plot, chart.Axes(0)).read(at.x);
      const double beside = AxisMap::y(errors, plot, chart.Axes(1)).read(at.y);
      const Chart before = chart;
      const bool moves = i % 3 == 0 ? pan(chart, at, to, step)
                                    : zoom_about(chart, at, i % 5 ? factor(generator) : 1.0,
                                                 factor(generator), step);
      if (!moves) {
        EXPECT_EQ(chart, before);
        continue;
      }
      EXPECT_NEAR(AxisMap::x(errors, plot, chart.Axes(0))(over), end.x, 1);
      EXPECT_NEAR(AxisMap::y(errors, plot, chart.Axes(1))(beside), end.y, 1);
      if (end == at && i % 5 == 0) {
        EXPECT_EQ(chart.Axes(0).Max, before.Axes(0).Max);
      }
    }
    EXPECT_EQ(zoom_depth(chart), 1u);
    ASSERT_TRUE(zoom_back(chart));
    EXPECT_EQ(chart, first);
    for (int i = 0; i < 2000; ++i) zoom_about(chart, {4000, 3000}, 1.2, 1.2, ZoomStep::last);
    for (int axis : {0, 1})
      EXPECT_TRUE(has_place(codes[axis], chart.Axes(axis).Min) &&
                  has_place(codes[axis], chart.Axes(axis).Max));
  }
}

// Any number of steps in, the same number out: every record on the way is met again.
TEST(Zoom, EachStepIsUndone) {
  std::mt19937_64 generator(7);
  std::uniform_int_distribution<std::int32_t> x(-500, 11000), y(-500, 7000);
  for (const auto& codes : papers) {
    Chart chart = on_paper(codes);
    chart.Axes(0).AutoMin = false;
    chart.Axes(1).Min = -7;  // guarded when drawn, kept in the record
    const Chart first = chart;
    std::vector<Chart> seen;
    for (int i = 0; i < 40; ++i) {
      seen.push_back(chart);
      if (!zoom_in(chart, {x(generator), y(generator)}, {x(generator), y(generator)}, 50)) {
        EXPECT_EQ(chart, seen.back()) << "refused, so nothing changes";
        seen.pop_back();
      }
    }
    ASSERT_EQ(zoom_depth(chart), seen.size());
    ASSERT_GE(seen.size(), 3u);
    for (; seen.size() > 1; seen.pop_back()) {
      ASSERT_TRUE(zoom_back(chart));
      ASSERT_EQ(chart, seen.back());
    }
    EXPECT_TRUE(end_zoom(chart));
    EXPECT_EQ(chart, first);
    EXPECT_FALSE(zoom_back(chart));
    EXPECT_FALSE(end_zoom(chart));
  }
}

// Another paper shows what it would have shown without the zoom.
TEST(Zoom, AnotherPaperEndsIt) {
  for (const auto& from : papers) {
    for (const auto& to : papers) {
      if (from[0] == to[0] && from[1] == to[1]) continue;
      test::ChartWorld here;
      here.show(test::ranked(test::published_times()));
      const auto change_paper = [&] {
        choose_scale(here.chart(), 0, to[0]);
        choose_scale(here.chart(), 1, to[1]);
        SetAutoScale(here.session, here.chart());
      };
      choose_scale(here.chart(), 0, from[0]);
      choose_scale(here.chart(), 1, from[1]);
      SetAutoScale(here.session, here.chart());
      const Chart first = here.chart();
      change_paper();
      const Chart expected = here.chart();
      here.chart() = first;
      ASSERT_TRUE(zoom_in(here.chart(), {3000, 1500}, {5000, 2000}));
      ASSERT_TRUE(zoom_in(here.chart(), {3000, 1500}, {5000, 2000}));
      change_paper();
      EXPECT_EQ(here.chart(), expected) << from[0] << " " << from[1] << " to " << to[0];
      EXPECT_EQ(zoom_depth(here.chart()), 0u);
    }
  }
}

// What somebody sets in the middle of a zoom is not taken back by it.
TEST(Zoom, LimitsThatAreSetEndItWhereItStands) {
  Chart chart = on_paper(papers[0]);
  ASSERT_TRUE(zoom_in(chart, {3000, 1500}, {5000, 2000}));
  const double top = chart.Axes(1).Max;
  set_limit(chart, 1, &ChartAxis::Max, top);
  EXPECT_EQ(zoom_depth(chart), 1u) << "no change";
  set_limit(chart, 0, &ChartAxis::Min, 7);
  EXPECT_FALSE(end_zoom(chart));
  EXPECT_EQ(chart.Axes(0).Min, 7);
  EXPECT_EQ(chart.Axes(1).Max, top);
}

}  // namespace
}  // namespace tavlo
