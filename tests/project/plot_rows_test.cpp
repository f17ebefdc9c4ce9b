#include "project/plot_rows.h"

#include <gtest/gtest.h>

#include <set>
#include <string_view>
#include <tuple>

#include "project/chart_types.h"

namespace tavlo {
namespace {

/// What is seen of a row.
auto look_of(const ChartMarker& row) {
  return std::tuple(row.Symbol, row.FillColor, row.LineColor, row.LineStyle);
}

TEST(PlotRows, NoTwoRowsLookTheSameBeyondTheTwentieth) {
  for (const std::string_view type : {"Standard", "Colour-safe", report_chart_type}) {
    Chart chart = chart_of_type(type);
    std::set<decltype(look_of({}))> seen;
    for (int i = 1; i <= 60; ++i) {
      ensure_plot_row(chart, i);
      EXPECT_TRUE(seen.insert(look_of(chart.Markers(i))).second) << type << i;
    }
  }
}

TEST(PlotRows, AreTakenInOrderAndAFreeOneFirst) {
  Chart chart = fuStandard_Chart();
  for (int i = 1; i <= 45; ++i) {
    EXPECT_EQ(add_plot_set(chart, 1000 + i, 2000 + i, 3), i);
    const ChartMarker& row = chart.Markers(i);
    EXPECT_EQ(std::tuple(row.DataId, row.FitId, row.FitNumber), std::tuple(1000 + i, 2000 + i, 3));
    EXPECT_EQ(row.Label, "Data " + std::to_string(i));
  }
  EXPECT_EQ(chart.nMarkers, 45);
  chart.Markers(7).DataId = 0;
  EXPECT_EQ(add_plot_set(chart, 5, 6, 1), 7) << "a free row first";
}

}  // namespace
}  // namespace tavlo
