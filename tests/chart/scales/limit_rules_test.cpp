#include "chart/scales/limit_rules.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "life/models.h"
#include "support/test_world.h"

namespace tavlo {
namespace {

class LimitRulesTest : public ::testing::Test {
 protected:
  Limits limits(int code, double low, double high) {
    return round_limits(world.session.errors, code, {low, high}, 0.02);
  }
  test::TestWorld world;
};

TEST_F(LimitRulesTest, KnownLimits) {
  struct Case {
    int code;
    double low, high, min, max;
  };
  const Case cases[] = {
      {x_scale::linear, 10, 100, 8.2, 110},
      {x_scale::linear, 0, 100, -2, 100},
      {x_scale::linear, -100, -10, -100, -8.1},
      {x_scale::linear, 1261, 1330, 1259.62, 1340},       // 1300 would cut off the first point
      {x_scale::linear, -0.005, 0.005, -0.0051, 0.0052},  // steps of 0.001
      {x_scale::log, 54, 386, 10, 1000},
      {x_scale::log, 0.001, 5, 1e-4, 10},
      {y_scale::weibull, 0.7 / 10.4, 9.7 / 10.4, 0.01, 0.95},
      {y_scale::weibull, 0.7 / 50.4, 49.7 / 50.4, 0.01, 0.99},
      {y_scale::normal, 0.7 / 100.4, 99.7 / 100.4, 0.001, 0.99999999},
      {y_scale::gumbel, 0.01, 0.99, 0.001, 0.99}};
  for (const Case& c : cases) {
    const Limits found = limits(c.code, c.low, c.high);
    EXPECT_LE(test::relative_difference(found.low, c.min), 1e-9) << c.low << ": " << found.low;
    EXPECT_LE(test::relative_difference(found.high, c.max), 1e-9) << c.high << ": " << found.high;
  }
}

// No data is cut off, whatever it is.
TEST_F(LimitRulesTest, LimitsHoldTheData) {
  std::mt19937_64 generator(7);
  std::uniform_real_distribution<double> power(-9, 9), fraction(1e-6, 1 - 1e-6);
  for (int i = 0; i < 20000; ++i) {
    double low = std::pow(10.0, power(generator)), high = std::pow(10.0, power(generator));
    if (low > high) std::swap(low, high);
    for (const int code : {x_scale::linear, x_scale::log}) {
      const Limits found = limits(code, low, high);
      ASSERT_TRUE(found.low <= low && found.high >= high) << code << " " << low << " " << high;
    }
    low = fraction(generator);
    high = fraction(generator);
    if (low > high) std::swap(low, high);
    const Limits found = limits(y_scale::weibull, low, high);
    ASSERT_TRUE(found.low <= low && found.high >= high && found.high < 1) << low << " " << high;
  }
}

TEST_F(LimitRulesTest, HostileRangesEnd) {
  EXPECT_GT(limits(x_scale::log, 5e-324, 1).low, 0);
  EXPECT_LT(limits(x_scale::log, -5, 0).low, 1e-5);
  EXPECT_TRUE(std::isfinite(limits(x_scale::log, 1, 1.7e308).high));
  EXPECT_LT(limits(y_scale::weibull, -1, 5).high, 1);
  EXPECT_EQ(limits(x_scale::linear, 1e6, 1e6 + 1).low, 1e6);
  EXPECT_THROW(limits(x_scale::linear, 1e9, std::nextafter(1e9, 2e9)), RunTimeError);
  EXPECT_THROW(limits(x_scale::linear, -1.7e308, 1.7e308), RunTimeError);
  EXPECT_THROW(limits(x_scale::log, std::nan(""), 1), RunTimeError);
}

}  // namespace
}  // namespace tavlo
