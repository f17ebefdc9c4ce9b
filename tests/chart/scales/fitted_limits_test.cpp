#include "chart/scales/fitted_limits.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "chart/chart_world.h"

namespace tavlo {
namespace {

constexpr double zone = 0.02;

struct FittedLimitsTest : ::testing::Test {
  test::TestWorld world;
  double place(int code, Limits limits, double value) {
    const auto at = [&](double v) { return scale_transform(world.session.errors, code, v); };
    return (at(value) - at(limits.low)) / (at(limits.high) - at(limits.low));
  }
};

// Nothing sits on an edge or is cut off, and a third of the axis has data.
TEST_F(FittedLimitsTest, DataFillTheAxisAndKeepOffItsEnds) {
  std::mt19937_64 generator(3);
  std::uniform_real_distribution<double> power(-6, 6), spread(-4, 6);
  for (int i = 0; i < 20000; ++i) {
    const double low = i == 0 ? 1000 : std::pow(10.0, power(generator));
    const double high = i == 0 ? 1002 : low * (1 + std::pow(10.0, spread(generator)));
    for (const int code : {x_scale::linear, x_scale::log}) {
      const Limits found = fitted_limits(world.session.errors, code, {low, high}, zone);
      const double begin = place(code, found, low), end = place(code, found, high);
      const bool starts_at_zero = code == x_scale::linear && found.low == 0.0;
      ASSERT_GE(begin, starts_at_zero ? 0.0 : 0.015) << code << " " << low << " " << high;
      ASSERT_LE(end, 0.985) << code << " " << low << " " << high;
      ASSERT_GE(end - begin, 0.333) << code << " " << low << " " << high;
    }
  }
}

// Of a complete sample of any size: room for the last point, and not much more.
TEST_F(FittedLimitsTest, AProbabilityAxisEndsAboveTheLargestRank) {
  for (int n = 20; n < 2000000; n += 1 + n / 7) {
    const double low = 0.7 / (n + 0.4), high = (n - 0.3) / (n + 0.4);
    for (const int code : {y_scale::weibull, y_scale::normal, y_scale::gumbel}) {
      const Limits found = fitted_limits(world.session.errors, code, {low, high}, zone);
      EXPECT_LE(found.low, low) << n;
      EXPECT_LE(place(code, found, high), 0.991) << code << " " << n;
      EXPECT_GE(place(code, found, high), code == y_scale::gumbel ? 0.7 : 0.8) << code << " " << n;
    }
  }
}

TEST_F(FittedLimitsTest, HostileRangesEnd) {
  const double values[] = {-1e290, -5, -5e-324, 0, 5e-324, 1e-300, 1, 1e9, 1e9 + 1e-6, 1e290};
  for (const double low : values)
    for (const double high : values)
      for (const int code : {x_scale::linear, x_scale::log, y_scale::weibull, y_scale::normal}) {
        if (!(low < high)) continue;
        try {
          const Limits found = fitted_limits(world.session.errors, code, {low, high}, zone);
          EXPECT_TRUE(found.low < found.high && std::isfinite(found.high - found.low))
              << code << " " << low << " " << high;
        } catch (const RunTimeError& error) {
          EXPECT_EQ(error.number(), run_time::overflow);
        }
      }
}

TEST_F(FittedLimitsTest, NewChartsFitTheStatedRoutineKeepsItsOwn) {
  test::ChartWorld here;
  std::vector<test::Point> points;
  for (int i = 0; i < 75; ++i) points.push_back({100.0 + i});
  here.show(test::ranked(points));
  SetAutoScale(here.session, here.chart());
  EXPECT_EQ(here.chart().Axes(1).Max, 0.999);
  Chart stated = fuStandard_Chart();
  stated.Markers = here.chart().Markers;
  SetAutoScale(here.session, stated);
  EXPECT_EQ(stated.Axes(1).Max, 0.99999999);
  EXPECT_EQ(stated.Axes(0).Max, 1000);
}

}  // namespace
}  // namespace tavlo
