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
