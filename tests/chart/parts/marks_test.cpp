#include "chart/parts/marks.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "chart/chart_world.h"

namespace tavlo {
namespace {

using namespace drawing;

class MarksTest : public ::testing::Test {
 protected:
  int hit(std::int32_t x, std::int32_t y) {
    return mark_at(here.measure, here.chart(), {x, y}, 40);
  }
  test::ChartWorld here;
};

TEST_F(MarksTest, AreFoundUnderThePointerTheUppermostFirst) {
  Chart& chart = here.chart();
  EXPECT_EQ(add_mark(chart, line_mark({2000, 2000}, {6000, 4000})), 1);
  EXPECT_EQ(add_mark(chart, text_mark({4000, 3000}, "Infant mortality")), 2);
  EXPECT_EQ(add_mark(chart, arrow_mark({3000, 1000}, {3000, 1900})), 3);
  EXPECT_EQ(add_mark(chart, symbol_mark({7000, 4000}, 5)), 4);
  const int cases[][3] = {{2400, 2200, 1}, {2400, 2400, 0}, {1950, 1990, 0}, {4100, 3100, 2},
                          {3030, 1500, 3}, {3000, 2010, 0}, {7070, 4070, 4}, {7200, 4000, 0}};
  for (const auto& [x, y, mark] : cases) EXPECT_EQ(hit(x, y), mark) << x << "," << y;
  delete_mark(chart, 2);
  EXPECT_EQ(hit(4100, 3050), 1) << "the line below the text";
  EXPECT_EQ(hit(7000, 4000), 3) << "those behind move up";
}

TEST_F(MarksTest, HostileMarksAreDrawnWithoutHarm) {
  constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
  ChartItem wild = arrow_mark({0, 0}, {0, 0});
  wild.PointsX(0) = std::numeric_limits<float>::quiet_NaN();
  wild.PointsY(1) = std::numeric_limits<float>::infinity();
  wild.LineWidth = std::numeric_limits<std::int32_t>::min();
  add_mark(here.chart(), wild);
  ChartItem symbol = symbol_mark({most, -most}, 1);
  symbol.Int5 = -32768;
  symbol.Int3 = 300;
  add_mark(here.chart(), symbol);
  here.chart().nTexts = 500;  // more than there are
  EXPECT_GT(here.draw().records.size(), 10u);
  hit(most, -most);
  here.chart().nTexts = 32767;
  EXPECT_THROW(add_mark(here.chart(), symbol), RunTimeError);
}

}  // namespace
}  // namespace tavlo
