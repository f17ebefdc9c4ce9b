#include "chart/parts/fraction_on_chart.h"

#include <gtest/gtest.h>

#include <boost/math/distributions/extreme_value.hpp>
#include <boost/math/distributions/lognormal.hpp>
#include <boost/math/distributions/normal.hpp>
#include <cmath>
#include <random>
#include <vector>

#include "chart/chart_world.h"
#include "life/weibull_ordinate.h"
#include "support/error_number.h"

namespace tavlo {
namespace {

constexpr double lowest = 1e-14;
constexpr double highest = 0.99999999999999;

using test::error_of;
using test::fit_of;

TEST(FractionOnChart, AThreeParameterWeibullReadsAsFailedUpToItsMinimumLife) {
  const FitResult fit = fit_of(model_code::weibull3, {{0.01, 1, 2, 30, 1}});
  EXPECT_EQ(fd_Wbl(fit, 0), lowest);
  EXPECT_EQ(fd_Wbl(fit, 1e-9), highest);
  EXPECT_EQ(fd_Wbl(fit, 30), highest);
  EXPECT_NEAR(fd_Wbl(fit, 130), 1 - std::exp(-1.0), 1e-15);
  EXPECT_NEAR(fd_Wbl(fit, 1e300), highest, 3e-16);  // 1 - exp(-32.23)
  EXPECT_EQ(fd_Wbl(fit, 30.0000000001), lowest);
}

TEST(FractionOnChart, ASevenParameterWeibullIsItsFormula) {
  std::mt19937_64 random(7);
  std::uniform_real_distribution<double> slope(0.5, 4), life(10, 1000), share(0.05, 0.95);
  for (int round = 0; round < 2000; ++round) {
    const double a = slope(random), b = slope(random), c = slope(random), p = share(random);
    const double eta_a = life(random), eta_b = life(random), eta_c = life(random);
    const FitResult fit =
        fit_of(model_code::weibull7,
               {{1 / eta_c, p, c, 0, 1}, {1 / eta_a, 1 - p, a, 0, 3}, {1 / eta_b, 0, b, 0, 3}});
    const double x = life(random);
    const double A = std::pow(x / eta_a, a), B = std::pow(x / eta_b, b), C = std::pow(x / eta_c, c);
    const double F = 1 - p * std::exp(-C - A - B) - (1 - p) * std::exp(-A - B);
    EXPECT_NEAR(Fd_YofX(fit, x), std::min(F, highest), 1e-14);
  }
}

TEST(FractionOnChart, EachSubPopulationHasItsOwnBit) {
  std::vector<FitParam> rows;
  double survival = 0;
  for (int i = 0; i < 30; ++i) {
    rows.push_back({1 / (50.0 + i), 1 / 30.0, 1.5, 0, 1 << i});
    survival += std::exp(-std::pow(60 / (50.0 + i), 1.5)) / 30;
  }
  EXPECT_NEAR(fd_Wbl(fit_of(model_code::weibull_batch, rows), 60), 1 - survival, 1e-14);
}

TEST(FractionOnChart, OtherFamiliesAgreeWithALibrary) {
  using namespace boost::math;
  const double mu = 120, sigma = 25;
  const FitResult bell = fit_of(model_code::normal, {{mu, 1, 1 / sigma, 0, 1}});
  const FitResult log_bell = fit_of(model_code::lognormal3, {{mu, 1, 2, 10, 1}});
  const FitResult smallest = fit_of(model_code::gumbel_lower, {{1 / mu, 1, sigma, 0, 1}});
  const FitResult largest = fit_of(model_code::gumbel_upper, {{1 / mu, 1, sigma, 0, 1}});
  const extreme_value_distribution<> gumbel(0, sigma);
  for (double x = 15; x < 320; x += 2.5) {
    EXPECT_NEAR(Fd_YofX(bell, x), std::min(cdf(boost::math::normal(mu, sigma), x), highest), 1e-15);
    EXPECT_NEAR(Fd_YofX(log_bell, x), cdf(lognormal_distribution<>(std::log(mu), 0.5), x - 10),
                1e-15);
    EXPECT_NEAR(Fd_YofX(smallest, x), cdf(complement(gumbel, mu - x)), 1e-14);
    EXPECT_NEAR(Fd_YofX(largest, x), std::max(cdf(gumbel, x - mu), lowest), 1e-14);
  }
}

TEST(FractionOnChart, TimesAndParametersOutsideAModelGiveItsFailureValue) {
  const FitResult log_bell = fit_of(model_code::lognormal, {{100, 1, 2, 10, 1}});
  EXPECT_EQ(Fd_YofX(log_bell, 9), 1e-30);
  EXPECT_EQ(Fd_YofX(fit_of(model_code::gumbel_upper, {{0, 1, 2, 0, 1}}), 9), 1e-30);
  EXPECT_EQ(Fd_YofX(log_bell, 10), 1e-30) << "0 has no logarithm";
}

TEST(FractionOnChart, BrokenFitsRaiseErrors) {
  FitResult short_of_rows = fit_of(model_code::weibull2, {{0.01, 1, 2, 0, 1}});
  short_of_rows.nRows = 2;
  EXPECT_EQ(error_of([&] { fd_Wbl(short_of_rows, 50); }), 9);
  const FitResult crowd = fit_of(model_code::weibull2, std::vector<FitParam>(31));
  EXPECT_EQ(error_of([&] { fd_Wbl(crowd, 50); }), 6);
  const FitResult steep = fit_of(model_code::weibull2, {{1e300, 1, 2, 0, 1}});
  EXPECT_EQ(error_of([&] { fd_Wbl(steep, 1e300); }), 6);
}

}  // namespace
}  // namespace tavlo
