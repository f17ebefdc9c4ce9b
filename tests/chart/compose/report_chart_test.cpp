// A chart of type Report: its axes.
#include <gtest/gtest.h>

#include <set>

#include "chart/chart_world.h"
#include "chart/scales/plot_coordinates.h"
#include "project/chart_looks.h"
#include "project/chart_types.h"

namespace tavlo {
namespace {

// Each grid line of an axis has its number, whatever the numbers' length; at the right
// edge a long one would leave the chart.
TEST(ReportChart, EveryTickHasItsLabel) {
  const Limits cases[] = {{1, 1e3},   {1e6, 1e10},    {1e-30, 1e30},      {0.001, 0.01},
                          {1e3, 1e4}, {1000, 1002},   {2, 3000},          {1e-9, 1e9},
                          {54, 386},  {1e8, 1.001e8}, {0.12345, 0.12346}, {1e5, 1e11}};
  for (const Limits& limits : cases)
    for (const int scale : {x_scale::linear, x_scale::log}) {
      test::ChartWorld here;
      here.show_published();
      apply_chart_look(here.chart(), report_chart_type);
      ChartAxis& axis = here.chart().Axes(0);
      axis.AutoMin = axis.AutoMax = false;
      axis.Min = limits.low;
      axis.Max = limits.high;
      axis.ScaleType = static_cast<std::int16_t>(scale);
      const DrawingRecord drawing = here.draw();
      const ChartItem& plot = here.chart().Boxes(chart_item::plot_box);
      const int bottom = plot.Top + plot.Height;
      std::set<int> ticks, labels;
      for (const auto& [places] : test::all<drawing::Polyline>(drawing))
        if (places.size() == 2 && places[0].y == bottom && places[1].y == bottom + 40 &&
            places[0].x < plot.Left + plot.Width)
          ticks.insert(places[0].x);
      for (const auto& [place, words] : test::all<drawing::Text>(drawing))
        if (place.y > bottom) labels.insert(place.x);
      EXPECT_GE(ticks.size(), 2u);
      EXPECT_TRUE(std::ranges::includes(labels, ticks)) << limits.low << " to " << limits.high;
    }
}

}  // namespace
}  // namespace tavlo
