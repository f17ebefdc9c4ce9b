#include "chart/scales/scale_points.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include "support/test_world.h"

namespace tavlo {
namespace {

using List = std::vector<double>;

void expect_list(const Slots<double>& found, const List& expected, const std::string& what) {
  const List list(found.begin() + 1, found.end());
  ASSERT_EQ(list.size(), expected.size()) << what;
  for (std::size_t i = 0; i < list.size(); ++i)
    EXPECT_LE(test::relative_difference(list[i], expected[i]), 1e-14) << what << " slot " << i + 1;
}

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

TEST_F(ScalePointsTest, WorkedExamples) {
  struct Case {
    int kind;
    double low, high;
    List major, medium, minor;
  };
  const Case cases[] = {
      {1, 0, 100, {20, 40, 60, 80}, {10, 30, 50, 70, 90}, {5, 15, 25, 35, 45, 55, 65, 75, 85, 95}},
      {2, 1000, 1, {10, 100}, {5, 50, 500}, {2,  3,  4,  6,   7,   8,   9,   20,  30,  40, 60,
                                             70, 80, 90, 200, 300, 400, 600, 700, 800, 900}},
      {2, 1, 100, {2, 4, 6, 8, 10, 20, 40, 60, 80}, {}, {3, 5, 7, 9, 10, 30, 50, 70, 90}},
      {4,
       0.01,
       0.99,
       {0.5, 0.3, 0.7, 0.1, 0.9, 0.05, 0.95, 0.02},
       {},
       {0.4, 0.6, 0.2, 0.8, 0.02, 0.98}},
      {3, 0.06, 0.97, {0.5, 0.3, 0.7, 0.1, 0.9, 0.95}, {}, {0.4, 0.6, 0.2, 0.8}}};
  for (const Case& c : cases) {
    const std::string what = std::to_string(c.kind) + ": " + std::to_string(c.low);
    const ScalePoints found = points(c.kind, c.low, c.high);
    expect_list(found.major, c.major, what + " major");
    expect_list(found.medium, c.medium, what + " medium");
    expect_list(found.minor, c.minor, what + " minor");
  }
}

TEST_F(ScalePointsTest, HopelessLimitsAreReportedOnceAndGiveNothing) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  for (const auto& [low, high] : {std::pair{1e9, std::nextafter(1e9, 2e9)},
                                  {std::nan(""), 1.0},
                                  {0.0, infinity},
                                  {-1e308, 1e308},
                                  {0.0, 5e-324}}) {
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
