#include "life/life.h"

#include <gtest/gtest.h>

#include <cmath>

#include "numerics/infinity.h"
#include "support/random_samples.h"
#include "support/reference_book.h"

namespace tavlo {
namespace {

/// One life of each family and kind, and some at random.
std::vector<Life> lives() {
  std::vector<Life> all = {
      test::weibull(2.5, 1000),
      test::weibull(0.4, 1e-6),
      test::weibull(40, 1e9),
      test::weibull(0.8, 300, 8.28),
      test::weibull(3, 300, -70),
      {model_code::exponential, {{1 / 40.0, 1, 1, 0, 1}}},
      {model_code::normal, {{120, 1, 1 / 25.0, 0, 1}}},
      {model_code::normal, {{-3, 1, 1 / 0.5, 0, 1}}},
      {model_code::lognormal, {{250, 1, 1 / 0.7, 0, 1}}},
      {model_code::lognormal3, {{250, 1, 0.5, 10, 1}}},
      {model_code::gumbel_lower, {{1 / 120.0, 1, 25, 0, 1}}},
      {model_code::gumbel_lower, {{1 / -40.0, 1, 25, 0, 1}}},
      {model_code::gumbel_upper, {{1 / 120.0, 1, 25, 0, 1}}},
      {model_code::gumbel_upper, {{1 / -40.0, 1, 25, 0, 1}}},
      {model_code::by_failure_mode, {{1 / 120.0, 1, 2, 0, 1}, {}, {1 / 90.0, 1, 3, 0, 1}}},
  };
  Life many{model_code::by_failure_mode, {}};
  for (int mode = 1; mode <= 50; ++mode)
    many.rows.push_back({1 / (1000.0 * mode), 1, 1 + 0.05 * mode, 0, 1});
  all.push_back(many);
  test::RandomNumbers random(7);
  for (int round = 0; round < 20; ++round)
    for (const std::int16_t model :
         {model_code::weibull4, model_code::weibull5c, model_code::weibull7})
      all.push_back(test::random_life(random, model));
  return all;
}

TEST(Life, TheQuantileIsTheInverseOfTheFractionFailed) {
  for (const Life& life : lives())
    for (const double p : {1e-12, 1e-6, 0.001, 0.1, 0.5, 0.9, 0.999, 1 - 1e-9}) {
      const auto x = quantile(life, p);
      ASSERT_TRUE(x) << life.model << " " << p;
      // A time has as many digits as doubles have about it.
      const double room = 4 * (std::nextafter(std::fabs(*x), infinity) - std::fabs(*x));
      const double density = std::exp(ln_density(life, *x));
      EXPECT_NEAR(fraction_failed(life, *x), p, 1e-12 * p + density * room) << life.model;
      EXPECT_NEAR(reliability(life, *x), 1 - p, 1e-12 * (1 - p) + density * room) << life.model;
    }
}

// Far into both tails.
TEST(Life, AgreesWithTheReferenceBook) {
  for (const Life& life : lives()) {
    std::vector<double> times;
    for (const double p : {1e-100, 1e-12, 1e-6, 0.001, 0.1, 0.5, 0.9, 0.999, 1 - 1e-9})
      if (const double x = *quantile(life, p); x > life.rows[0].T0 + 1e-13 || life.rows[0].T0 == 0)
        times.push_back(x);
    const double step = times.back() - *quantile(life, 0.5);
    for (int k = 1; k < 3; ++k) times.push_back(times.back() + step);
    for (const double x : times) {
      const double ln_r = static_cast<double>(test::ln_reliability_of(life, x));
      const double ln_f = static_cast<double>(test::ln_density_of(life, x));
      EXPECT_NEAR(fraction_failed(life, x) / -std::expm1(ln_r), 1, 1e-12) << life.model << " " << x;
      if (ln_r > -700) {
        EXPECT_NEAR(reliability(life, x) / std::exp(ln_r), 1, 1e-12) << life.model << " " << x;
        EXPECT_NEAR(ln_density(life, x), ln_f, 1e-11 * (1 + std::fabs(ln_f))) << life.model;
      }
    }
  }
}

TEST(Life, NothingHasFailedBelowTheMinimumLife) {
  const Life life = test::weibull(0.8, 300, 8.28);
  for (const double x : {-5.0, 0.0, 5.0, 8.0, 8.28}) {
    EXPECT_EQ(fraction_failed(life, x), 0) << x;
    EXPECT_EQ(reliability(life, x), 1) << x;
    EXPECT_EQ(ln_density(life, x), -infinity) << x;
  }
  EXPECT_NEAR(*quantile(life, 0.001), 8.28 + 300 * std::pow(-std::log1p(-0.001), 1 / 0.8), 1e-12);
}

TEST(Life, APopulationThatNoFailureReachesNeverFails) {
  const Life life{model_code::weibull5c,
                  {{1 / 50.0, 0.2, 1.5, 0, 1}, {unreached_scale, 0.8, 1, 0, 3}}};
  EXPECT_NEAR(fraction_failed(life, 1e300), 0.2, 1e-15);
  EXPECT_NEAR(reliability(life, 1e300), 0.8, 1e-15);
  EXPECT_NEAR(*quantile(life, 0.1), 50 * std::pow(std::log(2.0), 1 / 1.5), 1e-9);
  EXPECT_FALSE(quantile(life, 0.25));
  EXPECT_EQ(draw(life, [] { return 0.9; }), infinity);
}

TEST(Life, WhatHasNoAnswerGivesNone) {
  for (const double p : {0.0, 1.0, -0.1, 2.0, std::nan("")})
    EXPECT_FALSE(quantile(test::weibull(2, 9), p));
  EXPECT_FALSE(quantile({5, {{1, 1, 1, 0, 1}}}, 0.5)) << "no such model";
  EXPECT_FALSE(quantile({model_code::custom, {{1, 1, 1, 0, 1}}}, 0.5));
  EXPECT_FALSE(quantile(test::weibull(0.01, 1e300), 0.99)) << "beyond all numbers";
  EXPECT_FALSE(quantile(test::weibull(0.001, 1), 1e-9)) << "below all numbers";
  EXPECT_EQ(fraction_failed({model_code::custom, {}}, 5), 0);
  EXPECT_EQ(fraction_failed({model_code::weibull_batch, std::vector<FitParam>(40)}, 5), 0);
}

// Kolmogorov's distance of n draws is below 1.95 / sqrt(n) in 999 of 1000 samples.
TEST(Life, DrawsFollowTheLife) {
  test::RandomNumbers random(3);
  constexpr int n = 5000;
  for (const Life& life : lives()) {
    std::vector<double> times;
    for (int i = 0; i < n; ++i) times.push_back(draw(life, [&] { return random.uniform(); }));
    std::sort(times.begin(), times.end());
    double distance = 0;
    for (int i = 0; i < n; ++i)
      distance = std::max(distance,
                          std::fabs(fraction_failed(life, times[std::size_t(i)]) - (i + 0.5) / n));
    EXPECT_LT(distance, 1.95 / std::sqrt(n)) << life.model;
  }
}

}  // namespace
}  // namespace tavlo
