#include "chart/compose/auto_scale.h"

#include <gtest/gtest.h>

#include "chart/chart_world.h"

namespace tavlo {
namespace {

TEST(AutoScale, FollowsFailuresAloneAndLeavesHeldLimits) {
  test::ChartWorld here;
  ChartAxis& x = here.chart().Axes(0);
  const auto limits_for = [&](const std::vector<test::Point>& points) {
    here.show(test::ranked(points));
    SetAutoScale(here.session, here.chart());
    return std::pair(x.Min, x.Max);
  };
  EXPECT_EQ(limits_for({{5, 0, 1}, {900, 0, 3}}).first, 1) << "no failure: as it was";
  EXPECT_EQ(limits_for({{5, 0, 1}, {54}, {386}, {90000, 0, 3}}), std::pair(10.0, 1000.0));
  EXPECT_EQ(limits_for({{54}}), std::pair(10.0, 100.0));
  x.AutoMin = false;
  x.Min = 3.75;
  for (int i = 0; i < 3; ++i) EXPECT_EQ(limits_for({{54}, {386}}), std::pair(3.75, 1000.0));
}

}  // namespace
}  // namespace tavlo
