#include "project/chart_looks.h"

#include <gtest/gtest.h>

#include <set>

#include "project/chart_types.h"

namespace tavlo {
namespace {

/// A chart with ties, words and marks of its own.
Chart own_chart() {
  Chart chart = fuStandard_Chart();
  chart.UniqueId = 7;
  chart.Name = "own";
  chart.SubPopulations = true;
  chart.Markers(2).DataId = 73;
  chart.Markers(2).FitId = 74;
  chart.Markers(2).Label = "Pumps";
  chart.Markers(3).DataId = 73;  // whose points stand on the chart already
  chart.Markers(3).SymbolStyle = pen_style::none;
  chart.Markers(3).SymbolFill = 0;
  chart.Boxes(chart_item::file_name).Text2 = "pumps.txt";
  chart.Boxes(chart_item::main_title).Text2 = "Pump life";
  chart.nTexts = 1;
  chart.Texts.resize(1);
  chart.Texts(1).Text2 = "overhaul";
  chart.Axes(0).Max = 5000;
  return chart;
}

TEST(ChartLooks, AProfileLeavesWhatTheChartShows) {
  const auto dress = [](Chart& chart) {
    chart.nMarkers = 22;
    chart.Markers.resize(22);
    chart.Markers(22).Label = "Data 22";
    chart.Markers(2).Symbol = 9;
    chart.Boxes(chart_item::main_title).Text2 = "House";
    chart.Axes(0).Max = 12;
    chart.Profile = "House style";
  };
  Chart profile = fuStandard_Chart(), chart = own_chart(), expected = chart;
  dress(profile);
  dress(expected);
  profile.UniqueId = 9;
  profile.Name = "theirs";
  profile.Markers(22).DataId = 99;  // means nothing here
  profile.nTexts = 1;               // nor does an answer of a fit there
  profile.Texts.resize(1);
  profile.Texts(1).Text1 = "answer share 0.1 99 W2P/mle";
  chart.Markers(4).DataId = expected.Markers(4).DataId = 75;
  chart.Markers(4).SymbolStyle = pen_style::none;  // its only row takes the profile's symbols
  chart.Markers(4).SymbolFill = 0;
  apply_profile(chart, profile);
  EXPECT_EQ(chart, expected);
}

TEST(ChartLooks, ATypeKeepsTitlesAndColoursKeepTheAxes) {
  Chart chart = own_chart();
  apply_chart_type(chart, "Normal");
  EXPECT_EQ(chart.Axes(1).ScaleType, 24);
  EXPECT_EQ(chart.Axes(0).Max, 1000);
  EXPECT_EQ(chart.Boxes(chart_item::main_title).Text2, "Pump life");
  EXPECT_EQ(chart.Profile, "Normal");
  apply_chart_type(chart, "Colour-safe");
  EXPECT_EQ(chart.Axes(1).ScaleType, 24);
  EXPECT_EQ(chart.Markers(1).LineColor, chart_of_type("Colour-safe").Markers(1).LineColor);
  EXPECT_EQ(chart.Markers(2).DataId, 73);
}

// From look to look and back: what a person chose stays, all else is the new look's.
TEST(ChartLooks, ALookLeavesNoTraceOfTheOneBefore) {
  Chart zoomed = own_chart();
  zoomed.Axes(0).AutoMax = false;
  zoomed.Axes(1).ScaleType = 24;
  zoomed.Axes(1).Label.Text2 = "0.00";
  for (const char* const first : chart_looks())
    for (const char* const last : chart_looks()) {
      Chart direct = zoomed;
      apply_chart_look(direct, last);
      EXPECT_EQ(direct.Profile, last);
      EXPECT_EQ(direct.Axes(0).Max, 5000);
      EXPECT_FALSE(direct.Axes(0).AutoMax);
      EXPECT_EQ(direct.Axes(1).ScaleType, 24);
      EXPECT_EQ(direct.Axes(1).Label.Text2, "0.00");
      EXPECT_EQ(direct.Boxes(chart_item::main_title).Text2, "Pump life");
      Chart round_about = zoomed;
      apply_chart_look(round_about, first);
      apply_chart_look(round_about, last);
      EXPECT_EQ(round_about, direct) << first << ", then " << last;
    }
}

TEST(ChartLooks, TypesAreFoundInAnyCapitals) {
  for (const char* const type : chart_types()) EXPECT_EQ(find_chart_type(type), type);
  EXPECT_EQ(find_chart_type("rEPORT"), find_chart_type(report_chart_type));
  EXPECT_EQ(find_chart_type("Reports"), nullptr);
  EXPECT_EQ(find_chart_type(""), nullptr);
}

TEST(ChartLooks, SafePlotSetsDifferInColourLineOrSymbol) {
  for (const char* const type : {"Colour-safe", report_chart_type}) {
    const Chart chart = chart_of_type(type);
    std::set<std::pair<int, int>> lines, symbols;
    for (int i = 1; i <= 20; ++i) {
      const ChartMarker& row = chart.Markers(i);
      EXPECT_TRUE(lines.emplace(row.LineColor, row.LineStyle).second) << i;
      EXPECT_TRUE(symbols.emplace(row.SymbolColor, row.Symbol).second) << i;
    }
  }
}

}  // namespace
}  // namespace tavlo
