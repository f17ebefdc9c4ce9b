#include "chart/scales/scale_points.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include "support/test_world.h"

namespace tavlo {
namespace {

class ScalePointsTest : public ::testing::Test {
 protected:
  ScalePoints points(int kind, double a, double b) {
    return GetScalePoints(world.session.errors, kind, a, b);
  }
  void expect_failure() {
    world.prompts.expect_box("Error", "Scale Point Generator: \nGetScalePoints:");
  }
  test::TestWorld world;
};

TEST_F(ScalePointsTest, HopelessLimitsAreReportedOnceAndGiveNothing) {
  const std::pair<double, double> hopeless[] = {{1e9, std::nextafter(1e9, 2e9)},
                                                {std::nan(""), 1},
                                                {0, HUGE_VAL},
                                                {-1e308, 1e308},
                                                {0, 5e-324}};
  for (const auto& [low, high] : hopeless) {
    expect_failure();
    EXPECT_EQ(points(scale_kind::linear, low, high).major.bound(), 0) << low;
    world.prompts.verify();
  }
  EXPECT_EQ(points(scale_kind::linear, 7, 7).major.bound(), 0);
  EXPECT_EQ(points(9, 1, 7).major.bound(), 0);
}

// For any limits: few ticks, all strictly inside (but for the label that an
// all-negative axis gets), and no endless walk.
TEST_F(ScalePointsTest, AnyPairOfLimitsStaysBounded) {
  std::mt19937_64 generator(11);
  std::uniform_real_distribution<double> exponent(-300, 300);
  world.prompts.accept_all();
  for (int round = 0; round < 40000; ++round) {
    const int kind = 1 + round % 4;
    double low = std::pow(10.0, exponent(generator)) * (round % 8 < 4 ? 1 : -1);
    double high = round % 3 == 0 ? low * (1 + 1e-13 * exponent(generator))
                                 : std::pow(10.0, exponent(generator));
    if (low > high) std::swap(low, high);
    const ScalePoints found = points(kind, low, high);
    ASSERT_LE(found.major.bound(), 21) << low << " " << high;
    ASSERT_LE(found.medium.bound() + found.minor.bound(), 700) << low << " " << high;
    for (int i = 1; kind == scale_kind::linear && i < found.major.bound(); ++i)
      ASSERT_TRUE(found.major(i) > low && found.major(i) < high) << low << " " << high;
  }
}

}  // namespace
}  // namespace tavlo
