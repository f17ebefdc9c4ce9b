#include "chart/scales/fitted_limits.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "chart/chart_world.h"
#include "chart/scales/limit_rules.h"

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

// The stated limits cut no data off; with fitted ones nothing sits on an edge either, and a
// third of the axis has data.
TEST_F(FittedLimitsTest, DataFillTheAxisAndKeepOffItsEnds) {
  std::mt19937_64 generator(3);
  std::uniform_real_distribution<double> power(-6, 6), spread(-4, 6);
  for (int i = 0; i < 20000; ++i) {
    const double low = i == 0 ? 1000 : std::pow(10.0, power(generator));
    const double high = i == 0 ? 1002 : low * (1 + std::pow(10.0, spread(generator)));
    for (const int code : {x_scale::linear, x_scale::log}) {
      const Limits stated = round_limits(world.session.errors, code, {low, high}, zone);
      ASSERT_TRUE(stated.low <= low && stated.high >= high) << code << " " << low << " " << high;
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
      const Limits stated = round_limits(world.session.errors, code, {low, high}, zone);
      EXPECT_TRUE(stated.low <= low && stated.high >= high && stated.high < 1) << n;
      const Limits found = fitted_limits(world.session.errors, code, {low, high}, zone);
      EXPECT_LE(found.low, low) << n;
      EXPECT_LE(place(code, found, high), 0.991) << code << " " << n;
      EXPECT_GE(place(code, found, high), code == y_scale::gumbel ? 0.7 : 0.8) << code << " " << n;
    }
  }
}

// By both rules. What can't be divided is an error; a logarithm needs a number above 0.
TEST_F(FittedLimitsTest, HostileRangesEnd) {
  const double values[] = {-1e290, -5, -5e-324, 0, 5e-324, 1e-300, 1, 1e9, 1e9 + 1e-6, 1e290};
  for (const double low : values)
    for (const double high : values)
      for (const int code : {x_scale::linear, x_scale::log, y_scale::weibull, y_scale::normal})
        for (const bool is_fitted : {true, false}) {
          if (!(low < high)) continue;
          SCOPED_TRACE(testing::Message() << code << " " << low << " " << high);
          try {
            const Limits found =
                (is_fitted ? fitted_limits(world.session.errors, code, {low, high}, zone)
                           : round_limits(world.session.errors, code, {low, high}, zone));
            EXPECT_TRUE((found.low < found.high || !is_fitted) &&
                        std::isfinite(found.high - found.low));
            EXPECT_TRUE(!needs_positive(code) || found.low > 0) << found.low;
            EXPECT_TRUE(!is_probability_scale(code) || found.high < 1) << found.high;
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
