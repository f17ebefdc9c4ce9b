#include "numerics/normal.h"

#include <gtest/gtest.h>

#include <boost/math/distributions/normal.hpp>
#include <cmath>
#include <limits>
#include <random>

#include "support/reporter_test.h"

namespace tavlo {
namespace {

// Boost.Math in 80-bit arithmetic is good to 1e-18 here.
const boost::math::normal_distribution<long double> reference;

struct NormalTest : test::ReporterTest {
  /// Relative difference of fd_NormZ from the reference.
  double quantile_error(double p) {
    const long double exact = boost::math::quantile(reference, static_cast<long double>(p));
    return static_cast<double>(std::fabs((fd_NormZ(reporter, p) - exact) / exact));
  }
};

TEST_F(NormalTest, cumulative_probability_agrees_with_the_reference) {
  double worst_absolute = 0;
  double worst_relative = 0;
  for (int i = -37000; i <= 10000; ++i) {
    const double z = i / 1000.0;
    const long double exact = boost::math::cdf(reference, static_cast<long double>(z));
    const auto error = static_cast<double>(std::fabs(fd_NormCDF(reporter, z) - exact));
    worst_absolute = std::max(worst_absolute, error);
    if (z < -3) worst_relative = std::max(worst_relative, error / static_cast<double>(exact));
  }
  EXPECT_LE(worst_absolute, 4e-16);
  EXPECT_LE(worst_relative, 1e-10);
}

TEST_F(NormalTest, quantile_agrees_with_the_reference_in_all_regions) {
  using Region = std::tuple<double, double, bool>;  // of ln p, above the middle of ln(1 - p)
  std::mt19937_64 random(2);
  for (const auto& [from, to, above] :
       {Region{-455.9, std::log(1e-11), false}, Region{std::log(1e-11), std::log(0.075), false},
        Region{std::log(0.075), std::log(0.925), false},
        Region{std::log(1e-11), std::log(0.075), true},
        Region{std::log(2e-16), std::log(1e-11), true}}) {
    std::uniform_real_distribution<double> logarithm(from, to);
    double worst = 0;
    for (int i = 0; i < 5000; ++i) {
      const double tail = std::exp(logarithm(random));
      worst = std::max(worst, quantile_error(above ? 1 - tail : tail));
    }
    EXPECT_LE(worst, 2e-15) << "region from " << from;
  }
}

TEST_F(NormalTest, probabilities_outside_the_range_are_reported) {
  for (const double p : {0.0, 1.0, 1e-198, -0.5, 1.5, std::nan("")}) {
    prompts.expect_box("Inputs out of bounds",
                       "CDF range: 0 < CDF <  1\nfd_NormZ routine:\nInvalid input");
    EXPECT_EQ(fd_NormZ(reporter, p), 0);
  }
  EXPECT_EQ(prompts.shown().front().text.substr(0, 41),
            "Normal Inverse (Zscore) Routine: \nCDF= 0\n");
  EXPECT_LT(fd_NormZ(reporter, 1e-197), -29);
}

}  // namespace
}  // namespace tavlo
