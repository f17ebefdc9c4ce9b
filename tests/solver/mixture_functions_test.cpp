#include "solver/mixture_functions.h"

#include <gtest/gtest.h>

#include <boost/math/distributions/extreme_value.hpp>
#include <boost/math/distributions/lognormal.hpp>
#include <boost/math/distributions/normal.hpp>
#include <cmath>
#include <random>

#include "life/models.h"
#include "numerics/normal.h"
#include "support/test_world.h"

namespace tavlo {
namespace {

constexpr double lowest = 1e-14;
constexpr double highest = 0.99999999999999;

FitResult fit_of(int code, const std::vector<FitParam>& rows) {
  FitResult fit;
  fit.ModelCode = static_cast<std::int16_t>(code);
  fit.nRows = static_cast<std::int32_t>(rows.size());
  for (const FitParam& row : rows) fit.Rows.push_back(row);
  return fit;
}

struct MixtureFunctionsTest : testing::Test {
  test::ScriptedPrompts prompts;
  test::TestClock clock;
  ErrorReporter reporter{prompts, clock};
};

int error_of(double (*function)(double), double argument) {
  try {
    function(argument);
  } catch (const RunTimeError& error) {
    return error.number();
  }
  return 0;
}

TEST_F(MixtureFunctionsTest, weibull_ordinates) {
  EXPECT_DOUBLE_EQ(fd_WblY(1 - std::exp(-1.0)) + 1, 1);
  EXPECT_DOUBLE_EQ(fd_WblY(0.5), std::log(std::log(2.0)));
  EXPECT_DOUBLE_EQ(fd_WblY(1e-8), std::log(1e-8));
  EXPECT_NEAR(fd_WblY(1.01e-8), std::log(1.01e-8), 2e-8);
  EXPECT_DOUBLE_EQ(fd_WblYofR(0.25), fd_WblY(0.75));
  for (const double F : {0.0, -0.1, 1.0, 1.5, std::nan("")}) {
    EXPECT_EQ(error_of(fd_WblY, F), 5) << F;
    EXPECT_EQ(error_of(fd_WblYofR, F), 5) << F;
  }
}

TEST_F(MixtureFunctionsTest, three_parameter_weibull_reads_as_failed_up_to_its_minimum_life) {
  const FitResult fit = fit_of(model_code::weibull3, {{0.01, 1, 2, 30, 1}});
  EXPECT_EQ(fd_Wbl(reporter, fit, -5), lowest);
  EXPECT_EQ(fd_Wbl(reporter, fit, 0), lowest);
  EXPECT_EQ(fd_Wbl(reporter, fit, 1e-9), highest);
  EXPECT_EQ(fd_Wbl(reporter, fit, 30), highest);
  EXPECT_NEAR(fd_Wbl(reporter, fit, 130), 1 - std::exp(-1.0), 1e-15);
  EXPECT_NEAR(fd_Wbl(reporter, fit, 1e300), highest, 3e-16);  // 1 - exp(-32.23)
  EXPECT_EQ(fd_Wbl(reporter, fit, 30.0000000001), lowest);
}

TEST_F(MixtureFunctionsTest, seven_parameter_weibull_is_its_formula) {
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
    EXPECT_NEAR(Fd_YofX(reporter, fit, x), std::min(F, highest), 1e-14);
  }
}

TEST_F(MixtureFunctionsTest, each_sub_population_has_its_own_bit) {
  std::vector<FitParam> rows;
  double survival = 0;
  for (int i = 0; i < 30; ++i) {
    rows.push_back({1 / (50.0 + i), 1 / 30.0, 1.5, 0, 1 << i});
    survival += std::exp(-std::pow(60 / (50.0 + i), 1.5)) / 30;
  }
  EXPECT_NEAR(fd_Wbl(reporter, fit_of(model_code::weibull_batch, rows), 60), 1 - survival, 1e-14);
}

TEST_F(MixtureFunctionsTest, other_families_agree_with_a_library) {
  using namespace boost::math;
  const double mu = 120, sigma = 25;
  const FitResult bell = fit_of(model_code::normal, {{mu, 1, 1 / sigma, 0, 1}});
  const FitResult log_bell = fit_of(model_code::lognormal3, {{mu, 1, 2, 10, 1}});
  const FitResult smallest = fit_of(model_code::gumbel_lower, {{1 / mu, 1, sigma, 0, 1}});
  const FitResult largest = fit_of(model_code::gumbel_upper, {{1 / mu, 1, sigma, 0, 1}});
  const FitResult plain = fit_of(model_code::by_failure_mode, {{1 / mu, 1, 2, 0, 1}});
  const extreme_value_distribution<> gumbel(0, sigma);
  for (double x = 15; x < 320; x += 2.5) {
    EXPECT_NEAR(Fd_YofX(reporter, bell, x),
                std::min(cdf(boost::math::normal(mu, sigma), x), highest), 1e-15);
    EXPECT_NEAR(Fd_YofX(reporter, log_bell, x),
                cdf(lognormal_distribution<>(std::log(mu), 0.5), x - 10), 1e-15);
    EXPECT_NEAR(Fd_YofX(reporter, smallest, x), cdf(complement(gumbel, mu - x)), 1e-14);
    EXPECT_NEAR(Fd_YofX(reporter, largest, x), std::max(cdf(gumbel, x - mu), lowest), 1e-14);
    EXPECT_NEAR(Fd_YofX(reporter, plain, x), 1 - std::exp(-std::pow(x / mu, 2)), 1e-15);
  }
}

TEST_F(MixtureFunctionsTest, two_failure_modes_multiply_their_survivals) {
  const FitResult fit = fit_of(model_code::normal, {{100, 1, 0.1, 0, 1}, {110, 0, 0.05, 0, 1}});
  const double survival = (1 - fd_NormCDF(reporter, 0.5)) * (1 - fd_NormCDF(reporter, -0.25));
  EXPECT_NEAR(Fd_YofX(reporter, fit, 105), 1 - survival, 1e-15);
}

TEST_F(MixtureFunctionsTest, times_and_parameters_outside_a_model_give_its_failure_value) {
  const FitResult log_bell = fit_of(model_code::lognormal, {{100, 1, 2, 10, 1}});
  EXPECT_EQ(Fd_YofX(reporter, log_bell, 9), 1e-30);
  EXPECT_EQ(Fd_YofX(reporter, fit_of(model_code::gumbel_upper, {{0, 1, 2, 0, 1}}), 9), 1e-30);
  EXPECT_EQ(Fd_YofX(reporter, fit_of(model_code::custom, {}), 9), 0);
  prompts.expect_box("Error: 5 ", "Calculating Y of X: \nFd_YofX routine:\nInvalid procedure");
  EXPECT_EQ(Fd_YofX(reporter, log_bell, 10), 0);  // the logarithm of 0
}

TEST_F(MixtureFunctionsTest, broken_fits_are_reported) {
  FitResult short_of_rows = fit_of(model_code::weibull2, {{0.01, 1, 2, 0, 1}});
  short_of_rows.nRows = 2;
  const std::string place = "Calculating Weibull Mixture Fit: \nfd_Wbl routine:\n";
  prompts.expect_box("Error: 9 ", place);
  prompts.expect_box("Error: 6 ", place);
  prompts.expect_box("Error: 6 ", place);
  EXPECT_EQ(fd_Wbl(reporter, short_of_rows, 50), 0);
  EXPECT_EQ(fd_Wbl(reporter, fit_of(model_code::weibull2, std::vector<FitParam>(31)), 50), 0);
  EXPECT_EQ(fd_Wbl(reporter, fit_of(model_code::weibull2, {{1e300, 1, 2, 0, 1}}), 1e300), 0);
}

}  // namespace
}  // namespace tavlo
