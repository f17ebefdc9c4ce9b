#include "project/chart_records.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <set>
#include <tuple>

namespace tavlo {
namespace {

TEST(ChartRecords, FactoryChartHoldsTheKnownPlacesAndSizes) {
  const Chart chart = fuStandard_Chart();
  ASSERT_EQ(chart.Boxes.bound(), chart.nBoxes);
  ASSERT_EQ(chart.Markers.bound(), chart.nMarkers);
  ASSERT_EQ(chart.Axes.bound(), chart.nAxes);
  const ChartItem& plot = chart.Boxes(chart_item::plot_box);
  EXPECT_EQ(std::tuple(plot.Left, plot.Top, plot.Width, plot.Height),
            std::tuple(1250, 650, 8000, 4500));
  EXPECT_EQ(plot.FillColor, 0xEAFFFF);  // red is the low byte: pale yellow
  EXPECT_EQ(plot.LineColor, 8388608);
  EXPECT_EQ(chart.Boxes(chart_item::parameter_box).LineColor, 16711680);
  EXPECT_EQ(chart.Boxes(chart_item::y_title).Text2, "Occurrence CDF%");
  EXPECT_EQ(chart.Boxes(chart_item::y_title).FontSize, 14);
  EXPECT_EQ(chart.Boxes(chart_item::date).Text2, "dd mmm yyyy");
  EXPECT_EQ(chart.Boxes(chart_item::file_name).Mode, 0);
  EXPECT_EQ(chart.Axes(0).ScaleType, 2);
  EXPECT_EQ(chart.Axes(1).ScaleType, 32);
  EXPECT_EQ(chart.Axes(1).Max, 0.99);
  EXPECT_EQ(chart.Axes(0).Label.FontSize, 14);
}

TEST(ChartRecords, PlotSetsCanBeToldApart) {
  const Chart chart = fuStandard_Chart();
  std::set<std::pair<int, int>> looks;
  for (int i = 1; i <= 20; ++i) {
    const ChartMarker& set = chart.Markers(i);
    EXPECT_TRUE(looks.emplace(set.SymbolColor, set.Symbol).second) << i;
    EXPECT_EQ(set.Label, "Data " + std::to_string(i));
    EXPECT_EQ(set.LineWidth, i == 1 ? 96 : 15) << i;
    EXPECT_EQ(set.SymbolWidth, i >= 8 && i <= 14 ? 10 : 15) << i;
  }
  EXPECT_EQ(chart.Markers(3).LineColor, rgb(0, 0, 255));
  EXPECT_EQ(chart.Markers(3).SymbolColor, rgb(0, 0, 128));
  EXPECT_EQ(chart.Markers(0).Symbol, chart.Markers(1).Symbol);
  EXPECT_EQ(chart.Markers(0).Label, "");
}

}  // namespace
}  // namespace tavlo
