#include "files/chart_section.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <limits>
#include <random>
#include <sstream>

#include "fuzz/chart_section_law.h"
#include "project/chart_types.h"
#include "support/case_list.h"
#include "support/test_world.h"

namespace tavlo {
namespace {

using test::section_of;
using test::TestWorld;

std::string factory_section() { return *section_of(fuStandard_Chart()); }

std::vector<std::string> lines_of(const std::string& bytes) {
  std::vector<std::string> lines;
  std::istringstream stream(bytes);
  for (std::string line; std::getline(stream, line);)
    lines.push_back(line.ends_with('\r') ? line.substr(0, line.size() - 1) : line);
  return lines;
}

std::string joined(const std::vector<std::string>& lines) {
  std::string bytes;
  for (const std::string& line : lines) bytes += line + "\r\n";
  return bytes;
}

/// The factory section with one line, from 1, replaced by others.
std::string with_line(std::size_t number, const std::string& by) {
  std::vector<std::string> lines = lines_of(factory_section());
  lines.at(number - 1) = by;
  return joined(lines);
}

std::optional<ReadFault> read(const std::string& bytes, Chart& chart) {
  ProjectReader file(bytes);
  return read_chart(file, chart);
}

TEST(ChartSection, FactoryChartIsTheGoldenFile) {
  std::ifstream file(TAVLO_TEST_DATA "/factory_chart.vpr", std::ios::binary);
  const std::string golden{std::istreambuf_iterator<char>(file), {}};
  EXPECT_EQ(factory_section(), golden);
}

TEST(ChartSection, MutatedFilesKeepTheLaw) {
  const std::string whole = factory_section();
  std::mt19937_64 random(9);
  const std::string letters = "0123456789,-\"#\r\nE.x \x80";
  int read_well = 0;
  for (int i = 0; i < 4000; ++i) {
    std::string bytes = whole;
    for (auto changes = 1 + random() % 3; changes > 0; --changes)
      bytes[random() % bytes.size()] = letters[random() % letters.size()];
    ASSERT_EQ(test::breach_of_chart_law(bytes), "") << bytes;
    Chart chart;
    read_well += read(bytes, chart) ? 0 : 1;
  }
  EXPECT_GT(read_well, 400);  // the law speaks of these only
  EXPECT_LT(read_well, 3600);
}

TEST(ChartSection, HostileCountsAreRefusedBeforeAnythingGrows) {
  for (const auto& row : test::case_list("hostile_counts.txt")) {
    TestWorld world;
    Chart chart = fuStandard_Chart();
    world.prompts.expect_box("Error: " + row[2], "Chart Read Write Error: ");
    const std::string bytes = with_line(std::stoul(row[0]), row[1]);
    ProjectReader file(bytes);
    EXPECT_FALSE(RW_Chart(world.session.errors, file, chart)) << row[1];
    EXPECT_EQ(chart, fuStandard_Chart()) << row[1];
    world.prompts.verify();
  }
}

// A later version's fields are dropped; so are its texts, but those of an item
// only from 27 on.
TEST(ChartSection, FieldsOfALaterVersionAreSkipped) {
  std::vector<std::string> lines = lines_of(factory_section());
  const std::size_t marker = 31 + 90 + 1;
  lines[lines.size() - 4] = "5";
  lines.insert(lines.end(), {"later", "texts"});
  lines[marker + 2] = "20";
  lines[marker + 3] = "\r\n" + joined(std::vector<std::string>(18, "t")) + "t";
  lines[marker] = "21";
  lines[marker + 1] += ",\"a,b\",c";
  lines[15] = "27";
  lines[18] += "\r\n" + joined(std::vector<std::string>(23, "t")) + "t";
  lines[12] += ",1,2";
  lines[10] = "28";
  lines[9] += ",7";
  lines[8] = "12";
  lines[2] += ",1,2,3";
  lines[1] = "12";
  Chart chart;
  const auto fault = read(joined(lines), chart);
  ASSERT_FALSE(fault) << fault->line << ": " << fault->what;
  EXPECT_EQ(chart, fuStandard_Chart());
}

// What a file may say and a drawing can't bear: sizes, fonts, missing boxes, limits off the
// scale.
TEST(ChartSection, WhatADrawingNeedsIsThereHoweverItIsRead) {
  Chart odd = fuStandard_Chart();
  odd.nBoxes = 2;
  odd.nAxes = 0;
  odd.nMarkers = 0;
  odd.Boxes(chart_item::chart_box).Width = -4;
  odd.Boxes(chart_item::plot_box).Height = 2147483647;
  odd.Boxes(chart_item::plot_box).FontSize = 1e38F;
  odd.Axes(0).Label.FontSize = -1;
  Chart chart;
  ASSERT_FALSE(read(*section_of(odd), chart));
  EXPECT_EQ(std::tuple(chart.nBoxes, chart.nAxes, chart.nMarkers), std::tuple(9, 1, 1));
  const ChartItem& plot = chart.Boxes(chart_item::plot_box);
  EXPECT_EQ(std::tuple(chart.Boxes(chart_item::chart_box).Width, plot.Height, plot.FontSize,
                       chart.Axes(0).Label.FontSize),
            std::tuple(1, 32767, 500, 1));
  for (const int scale : {3, 24, 32, 40, -1}) {
    chart.Axes(0).ScaleType = chart.Axes(1).ScaleType = static_cast<std::int16_t>(scale);
    chart.Axes(1).Max = 50;
    Chart again;
    ASSERT_FALSE(read(*section_of(chart), again));
    EXPECT_EQ(again.Axes(1).Max, scale == 24 || scale == 32 ? 0.99999999 : 50) << scale;
  }
}

}  // namespace
}  // namespace tavlo
