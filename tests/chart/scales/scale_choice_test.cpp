#include "chart/scales/scale_choice.h"

#include <gtest/gtest.h>

#include "life/models.h"

namespace tavlo {

namespace {

TEST(ScaleChoice, LimitsWithoutAPlaceBecomeTheFactorys) {
  ChartAxis axis = fuStandard_Chart().Axes(1);
  axis.Min = 0;
  choose_scale(axis, y_scale::linear);
  EXPECT_EQ(axis.Min, 0);
  axis.Max = 50;
  choose_scale(axis, y_scale::log);
  EXPECT_EQ(axis.Min, 1);
  EXPECT_EQ(axis.Max, 1000);
  choose_scale(axis, y_scale::gumbel);
  EXPECT_EQ(axis.ScaleType, y_scale::gumbel);
  EXPECT_EQ(axis.Max, 0.99);
  EXPECT_TRUE(is_limit(y_scale::weibull, 1.0));
  EXPECT_FALSE(is_limit(y_scale::weibull, 1.01));
  EXPECT_FALSE(is_limit(x_scale::log, 0));
}

}  // namespace

}  // namespace tavlo
