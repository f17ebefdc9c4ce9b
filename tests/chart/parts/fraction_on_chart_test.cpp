#include "chart/parts/fraction_on_chart.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "chart/chart_world.h"
#include "life/life.h"
#include "life/weibull_ordinate.h"
#include "support/error_number.h"
#include "support/random_samples.h"

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

// Above every minimum life the chart says what the life says, held off 0 and 1.
TEST(FractionOnChart, IsTheLifeItself) {
  test::RandomNumbers random(7);
  for (int round = 0; round < 2000; ++round) {
    Life life = test::random_life(random, round % 2 ? model_code::weibull7 : model_code::weibull4);
    const double x = random.log_uniform(1, 1e5);
    EXPECT_NEAR(Fd_YofX(fit_of(life.model, life.rows), x),
                std::clamp(fraction_failed(life, x), lowest, highest), 1e-14);
    for (const std::int16_t model : {model_code::normal, model_code::lognormal,
                                     model_code::gumbel_lower, model_code::gumbel_upper}) {
      life = {model, {{random.uniform(0.01, 1), 1, random.uniform(0.5, 4), 0, 1}}};
      const double y = random.uniform(0.1, 30);
      EXPECT_NEAR(Fd_YofX(fit_of(model, life.rows), y),
                  std::clamp(fraction_failed(life, y), lowest, highest), 1e-14)
          << model;
    }
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
