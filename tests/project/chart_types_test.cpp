#include "project/chart_types.h"

#include <gtest/gtest.h>

#include <set>

namespace tavlo {
namespace {

TEST(ChartTypes, SafePlotSetsDifferInColourLineOrSymbol) {
  const Chart chart = chart_of_type("Colour-safe");
  std::set<std::pair<int, int>> lines, symbols;
  for (int i = 1; i <= 20; ++i) {
    EXPECT_TRUE(lines.emplace(chart.Markers(i).LineColor, chart.Markers(i).LineStyle).second) << i;
    EXPECT_TRUE(symbols.emplace(chart.Markers(i).SymbolColor, chart.Markers(i).Symbol).second) << i;
  }
}

}  // namespace
}  // namespace tavlo
