#include "chart/compose/auto_scale.h"

#include <gtest/gtest.h>

#include "chart/chart_world.h"

namespace tavlo {
namespace {

class AutoScaleTest : public ::testing::Test {
 protected:
  const ChartAxis& x() { return here.chart().Axes(0); }
  void scale() { SetAutoScale(here.session, here.chart()); }
  test::ChartWorld here;
};

TEST_F(AutoScaleTest, OnlyFailuresCountAndAnEmptyChartStays) {
  here.show(test::ranked({{5, 0, 1}, {900, 0, 3}}));
  scale();
  EXPECT_EQ(x().Min, 1);
  here.show(test::ranked({{5, 0, 1}, {54}, {386}, {90000, 0, 3}}));
  scale();
  EXPECT_EQ(x().Min, 10);
  EXPECT_EQ(x().Max, 1000);
}

TEST_F(AutoScaleTest, HeldLimitsStayThroughAnyNumberOfRuns) {
  here.show(test::ranked({{54}, {386}}));
  here.chart().Axes(0).AutoMin = false;
  here.chart().Axes(0).Min = 3.75;
  for (int i = 0; i < 3; ++i) scale();
  EXPECT_EQ(x().Min, 3.75);
  EXPECT_EQ(x().Max, 1000);
}

}  // namespace
}  // namespace tavlo
