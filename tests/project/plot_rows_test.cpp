#include "project/plot_rows.h"

#include <gtest/gtest.h>

namespace tavlo {
namespace {

TEST(PlotRows, LooksComeAgainBeyondTheTwentiethRow) {
  Chart chart = fuStandard_Chart();
  const Chart factory = chart;
  for (int i = 1; i <= 45; ++i) EXPECT_EQ(add_plot_set(chart, 1000 + i, 2000 + i, 3), i);
  EXPECT_EQ(chart.nMarkers, 45);
  for (int i = 21; i <= 45; ++i) {
    ChartMarker expected = factory.Markers((i - 1) % 20 + 1);
    expected.Label = "Data " + std::to_string(i);
    expected.DataId = 1000 + i;
    expected.FitId = 2000 + i;
    expected.FitNumber = 3;
    EXPECT_EQ(chart.Markers(i), expected) << i;
  }
  chart.Markers(7).DataId = 0;
  EXPECT_EQ(add_plot_set(chart, 5, 6, 1), 7) << "a free row first";
}

}  // namespace
}  // namespace tavlo
