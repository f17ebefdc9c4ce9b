#include "life/mean_life.h"

#include <gtest/gtest.h>

#include <boost/math/distributions/extreme_value.hpp>
#include <boost/math/distributions/lognormal.hpp>
#include <boost/math/distributions/weibull.hpp>
#include <cmath>

#include "numerics/infinity.h"
#include "support/random_samples.h"
#include "support/reference_book.h"

namespace tavlo {
namespace {

namespace bm = boost::math;

TEST(MeanLife, OfOnePopulationIsThatOfItsDistribution) {
  const bm::extreme_value largest(120, 25);
  struct Case {
    Life life;
    double mean;
  };
  for (const Case& c : std::initializer_list<Case>{
           {test::weibull(2.5, 1000), mean(bm::weibull(2.5, 1000))},
           {test::weibull(0.3, 1e-3), mean(bm::weibull(0.3, 1e-3))},
           {test::weibull(0.8, 300, 8.28), 8.28 + mean(bm::weibull(0.8, 300))},
           {{model_code::normal, {{-3, 1, 1 / 0.5, 0, 1}}}, -3},
           {{model_code::lognormal, {{250, 1, 1 / 0.7, 0, 1}}},
            mean(bm::lognormal(std::log(250), 0.7))},
           {{model_code::gumbel_upper, {{1 / 120.0, 1, 25, 0, 1}}}, mean(largest)},
           {{model_code::gumbel_lower, {{1 / 120.0, 1, 25, 0, 1}}}, 240 - mean(largest)},
           {{model_code::by_failure_mode, {{1 / 90.0, 1, 3, 0, 1}}}, mean(bm::weibull(3, 90))}})
    EXPECT_NEAR(mean_life(c.life).value(), c.mean, 1e-13 * std::fabs(c.mean)) << c.life.model;
}

/// The integral of the reliability by the logarithm of time: equal steps of a curve that is
/// flat at both ends.
test::Number integrated(const Life& life) {
  constexpr test::Number step = 0.001L;
  test::Number sum = 0;
  for (test::Number u = -80; u < 120; u += step)
    sum += std::exp(u + test::ln_reliability_of(life, std::exp(u))) * step;
  return sum;
}

TEST(MeanLife, OfManyRisksIsTheIntegralOfTheReliability) {
  test::RandomNumbers random(5);
  for (int round = 0; round < 4; ++round)
    for (const std::int16_t model :
         {model_code::weibull4, model_code::weibull5c, model_code::weibull7}) {
      const Life life = test::random_life(random, model);
      const auto expected = static_cast<double>(integrated(life));
      EXPECT_NEAR(mean_life(life).value(), expected, 1e-9 * expected) << model << " " << round;
    }
  // The least of Weibulls of one slope is one again: k of them live eta k^(-1/beta).
  for (const double beta : {0.2, 1.0, 7.0, 60.0}) {
    const Life three{model_code::by_failure_mode, std::vector<FitParam>(3, {1e-3, 1, beta, 0, 1})};
    const double one = mean(bm::weibull(beta, 1000 * std::pow(3, -1 / beta)));
    EXPECT_NEAR(mean_life(three).value(), one, 1e-9 * one) << beta;
  }
}

TEST(MeanLife, SurvivorsHaveNoEndAndUnknownModesNoAnswer) {
  Life life = test::weibull5c(3, 1000, 1.5, 50, 0.15);
  life.rows[1].Scale = unreached_scale;
  EXPECT_NEAR(share_that_fails(life), 0.15, 1e-9);
  EXPECT_EQ(mean_life(life), infinity);
  EXPECT_EQ(mean_life({model_code::by_failure_mode, {{0.01, 1, 2, 0, 1}, {}}}), std::nullopt);
  EXPECT_EQ(mean_life({model_code::weibull2, {}}), std::nullopt);
}

}  // namespace
}  // namespace tavlo
