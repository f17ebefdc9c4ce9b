#include "chart/parts/find_x.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "chart/chart_world.h"
#include "chart/parts/fraction_on_chart.h"

namespace tavlo {
namespace {

using test::fit_of;

FitResult weibull(double eta, double beta) {
  return fit_of(model_code::weibull2, {{1 / eta, 1, beta, 0, 1}});
}

class FindXTest : public ::testing::Test {
 protected:
  double find(const FitResult& fit, double y, double xa, double xb) {
    found = false;
    return fd_FindX(world.session.errors, fit, y, xa, xb, 1e-8, 1e-8, found);
  }
  test::TestWorld world;
  bool found = false;
};

TEST_F(FindXTest, WeibullQuantilesInClosedForm) {
  std::mt19937_64 generator(5);
  std::uniform_real_distribution<double> log_eta(-2, 4), beta(0.4, 6), fraction(0.01, 0.99);
  for (int i = 0; i < 3000; ++i) {
    const double eta = std::pow(10.0, log_eta(generator)), shape = beta(generator);
    const double y = fraction(generator);
    const double exact = eta * std::pow(-std::log1p(-y), 1 / shape);
    const double x = find(weibull(eta, shape), y, exact / 50, exact * 30);
    ASSERT_TRUE(found) << eta << " " << shape << " " << y;
    ASSERT_NEAR(Fd_YofX(weibull(eta, shape), x), y, 1e-6);
  }
}

TEST_F(FindXTest, WidensABracketThatLiesAboveAndGivesUpBelow) {
  const double median = 100 * std::sqrt(std::log(2.0));
  EXPECT_NEAR(find(weibull(100, 2), 0.5, 120, 200), median, 1e-4);
  EXPECT_TRUE(found);
  EXPECT_EQ(find(weibull(100, 2), 0.5, 1, 20), 1);
  EXPECT_FALSE(found);
}

TEST_F(FindXTest, SaturatedEndsOfASteepMixture) {
  const FitResult batch =
      fit_of(model_code::weibull5x, {{1 / 10.0, 0.3, 8, 0, 1}, {1 / 1e5, 0.7, 9, 0, 2}});
  for (const double y : {0.05, 0.29, 0.31, 0.9}) {
    const double x = find(batch, y, 1e-3, 1e9);
    EXPECT_TRUE(found) << y;
    EXPECT_NEAR(Fd_YofX(batch, x), y, 1e-6);
  }
}

TEST_F(FindXTest, NothingHangsAndFaultsAreSaidOnce) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  const double cases[][4] = {{2, std::nan(""), 1, 10},
                             {2, 0.5, 1, infinity},
                             {2, 0.5, -infinity, 10},
                             {std::nan(""), 0.5, 1, 10}};
  for (const auto& [shape, y, low, high] : cases) {
    world.prompts.expect_box("", "fd_FindX_Error: \ndX = ");
    find(weibull(100, shape), y, low, high);
    EXPECT_FALSE(found);
    world.prompts.verify();
  }
}

// Whatever the parameters, the search ends, and success means a solution.
TEST_F(FindXTest, EndsForAnyWeibull) {
  std::mt19937_64 generator(17);
  std::uniform_real_distribution<double> power(-12, 12), shape(-3, 3), limit(-14, 14);
  world.prompts.accept_all();
  for (int i = 0; i < 3000; ++i) {
    const FitResult fit =
        weibull(std::pow(10.0, power(generator)), std::pow(10.0, shape(generator)));
    const double y = i % 2 ? 0.5 : 1e-3;
    const double x =
        find(fit, y, std::pow(10.0, limit(generator)), std::pow(10.0, limit(generator)));
    ASSERT_TRUE(std::isfinite(x));
  }
}

}  // namespace
}  // namespace tavlo
