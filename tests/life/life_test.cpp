#include "life/life.h"

#include <gtest/gtest.h>

#include <boost/math/distributions/extreme_value.hpp>
#include <boost/math/distributions/lognormal.hpp>
#include <boost/math/distributions/normal.hpp>
#include <boost/math/distributions/weibull.hpp>
#include <cmath>
#include <random>

#include "life/shown_parameters.h"

namespace tavlo {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

Life weibull(double eta, double beta) { return {model_code::weibull2, {{1 / eta, 1, beta, 0, 1}}}; }

/// A bathtub whose population of early failures is the share p.
Life bathtub(double p, double eta_c, double beta_c) {
  return {
      model_code::weibull7,
      {{1 / eta_c, p, beta_c, 0, 1}, {1 / 900.0, 1 - p, 1.0, 0, 3}, {1 / 2000.0, 0, 4.5, 0, 3}}};
}

/// One life of each family and kind.
std::vector<Life> lives() {
  return {
      weibull(1000, 2.5),
      weibull(1e-6, 0.4),
      weibull(1e9, 40),
      {model_code::weibull3, {{1 / 300.0, 1, 0.8, 8.28, 1}}},
      {model_code::weibull3, {{1 / 300.0, 1, 3, -70, 1}}},
      {model_code::weibull4, {{1 / 500.0, 1, 0.7, 0, 1}, {1 / 800.0, 0, 6, 0, 1}}},
      {model_code::weibull5c, {{1 / 50.0, 0.2, 1.5, 0, 1}, {1 / 900.0, 0.8, 4, 0, 3}}},
      bathtub(0.1, 60, 1.4),
      {model_code::exponential, {{1 / 40.0, 1, 1, 0, 1}}},
      {model_code::normal, {{120, 1, 1 / 25.0, 0, 1}}},
      {model_code::normal, {{-3, 1, 1 / 0.5, 0, 1}}},
      {model_code::lognormal, {{250, 1, 1 / 0.7, 0, 1}}},
      {model_code::gumbel_lower, {{1 / 120.0, 1, 25, 0, 1}}},
      {model_code::gumbel_lower, {{1 / -40.0, 1, 25, 0, 1}}},
      {model_code::gumbel_upper, {{1 / 120.0, 1, 25, 0, 1}}},
      {model_code::gumbel_upper, {{1 / -40.0, 1, 25, 0, 1}}},
      {model_code::by_failure_mode, {{1 / 120.0, 1, 2, 0, 1}, {}, {1 / 90.0, 1, 3, 0, 1}}},
  };
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

// Central differences, extrapolated; of F where it is small, of R where F is near 1.
TEST(Life, TheDensityIsTheSlopeOfTheFractionFailed) {
  for (const Life& life : lives())
    for (const double p : {0.001, 0.05, 0.3, 0.6, 0.95, 0.9999}) {
      const double x = *quantile(life, p);
      const double scale = (*quantile(life, std::min(p * 1.01, p + 0.01 * (1 - p))) - x);
      const auto rise = [&](double h) {
        return p < 0.5 ? (fraction_failed(life, x + h) - fraction_failed(life, x - h)) / (2 * h)
                       : (reliability(life, x - h) - reliability(life, x + h)) / (2 * h);
      };
      const double slope = (4 * rise(scale / 2) - rise(scale)) / 3;
      EXPECT_NEAR(std::exp(ln_density(life, x)) / slope, 1, 1e-7) << life.model << " " << p;
    }
}

// A second opinion, far into both tails.
TEST(Life, FamiliesAgreeWithALibrary) {
  using namespace boost::math;
  const double mu = 120, sigma = 25, xi = -7;
  const extreme_value_distribution<> gumbel(0, sigma);
  for (double z = -8; z < 20; z += 0.25) {
    const double x = std::exp(z / 3) * mu;
    const auto expect = [&](const Life& life, double at, double F, double R, double f) {
      EXPECT_NEAR(fraction_failed(life, at) / F, 1, 1e-12) << life.model << " " << at;
      EXPECT_NEAR(reliability(life, at) / R, 1, 1e-12) << life.model << " " << at;
      if (f > 1e-290) {
        EXPECT_NEAR(ln_density(life, at), std::log(f), 1e-11 * (1 + std::fabs(std::log(f))));
      }
    };
    const weibull_distribution<> w(0.7, mu);
    expect(weibull(mu, 0.7), x, cdf(w, x), cdf(complement(w, x)), pdf(w, x));
    const lognormal_distribution<> ln(std::log(mu), 2);
    expect({model_code::lognormal3, {{mu, 1, 0.5, 10, 1}}}, x + 10, cdf(ln, x),
           cdf(complement(ln, x)), pdf(ln, x));
    const normal_distribution<> n(mu, sigma);
    const double at = mu + sigma * z;
    expect({model_code::normal, {{mu, 1, 1 / sigma, 0, 1}}}, at, cdf(n, at), cdf(complement(n, at)),
           pdf(n, at));
    if (z > 5) continue;  // beyond, a Gumbel is 0 or 1 in all its digits
    const double g = xi + sigma * z;
    expect({model_code::gumbel_lower, {{1 / xi, 1, sigma, 0, 1}}}, g,
           cdf(complement(gumbel, xi - g)), cdf(gumbel, xi - g), pdf(gumbel, xi - g));
    if (z > -5)
      expect({model_code::gumbel_upper, {{1 / xi, 1, sigma, 0, 1}}}, g, cdf(gumbel, g - xi),
             cdf(complement(gumbel, g - xi)), pdf(gumbel, g - xi));
  }
}

TEST(Life, MixturesAndModesAreTheirFormulas) {
  std::mt19937_64 random(7);
  std::uniform_real_distribution<double> slope(0.5, 4), scale(10, 1000), share(0.05, 0.95);
  for (int round = 0; round < 500; ++round) {
    const double a = slope(random), b = slope(random), c = slope(random), p = share(random);
    const double eta_a = scale(random), eta_b = scale(random), eta_c = scale(random);
    const double x = scale(random);
    const double A = std::pow(x / eta_a, a), B = std::pow(x / eta_b, b), C = std::pow(x / eta_c, c);
    const Life seven{
        model_code::weibull7,
        {{1 / eta_c, p, c, 0, 1}, {1 / eta_a, 1 - p, a, 0, 3}, {1 / eta_b, 0, b, 0, 3}}};
    EXPECT_NEAR(reliability(seven, x), (p * std::exp(-C) + 1 - p) * std::exp(-A - B), 1e-14);
    const Life modes{model_code::by_failure_mode,
                     {{1 / eta_a, 1, a, 0, 1}, {1 / eta_b, 1, b, 0, 1}, {1 / eta_c, 1, c, 0, 1}}};
    EXPECT_NEAR(reliability(modes, x), std::exp(-A - B - C), 1e-14);
  }
}

TEST(Life, NothingHasFailedBelowTheMinimumLife) {
  const Life life{model_code::weibull3, {{1 / 300.0, 1, 0.8, 8.28, 1}}};
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
}

TEST(Life, WhatHasNoAnswerGivesNone) {
  for (const double p : {0.0, 1.0, -0.1, 2.0, std::nan("")})
    EXPECT_FALSE(quantile(weibull(9, 2), p));
  EXPECT_FALSE(quantile({5, {{1, 1, 1, 0, 1}}}, 0.5)) << "no such model";
  EXPECT_FALSE(quantile({model_code::custom, {{1, 1, 1, 0, 1}}}, 0.5));
  EXPECT_FALSE(quantile(weibull(1e300, 0.01), 0.99)) << "beyond all numbers";
  EXPECT_FALSE(quantile(weibull(1, 0.001), 1e-9)) << "below all numbers";
  EXPECT_EQ(fraction_failed({model_code::custom, {}}, 5), 0);
  EXPECT_EQ(fraction_failed({model_code::weibull_batch, std::vector<FitParam>(40)}, 5), 0);
}

// Kolmogorov's distance of 20000 draws is below 1.95 / sqrt(n) in 999 of 1000 samples.
TEST(Life, DrawsFollowTheLife) {
  std::mt19937_64 random(3);
  std::uniform_real_distribution<double> unit(1e-300, 1);
  constexpr int n = 20000;
  for (const Life& life :
       {bathtub(0.3, 60, 1.4), lives()[5], lives()[9], lives()[15], lives()[16]}) {
    std::vector<double> times;
    for (int i = 0; i < n; ++i) times.push_back(draw(life, [&] { return unit(random); }));
    std::sort(times.begin(), times.end());
    double distance = 0;
    for (int i = 0; i < n; ++i)
      distance = std::max(distance,
                          std::fabs(fraction_failed(life, times[std::size_t(i)]) - (i + 0.5) / n));
    EXPECT_LT(distance, 1.95 / std::sqrt(n)) << life.model;
  }
}

TEST(ShownParameters, AreWhatAPersonReads) {
  struct Case {
    std::int16_t model;
    FitParam row;
    ShownParameters shown;
  };
  const Case cases[] = {
      {model_code::weibull7, {1 / 64.0, 0.5, 3, 0, 1}, {64, 3}},
      {model_code::by_failure_mode, {1 / 64.0, 1, 3, 0, 1}, {64, 3}},
      {model_code::by_failure_mode, {}, {std::nullopt, std::nullopt}},
      {model_code::weibull5c, {unreached_scale, 0.5, 1, 0, 3}, {std::nullopt, std::nullopt}},
      {model_code::gumbel_upper, {-1 / 64.0, 1, 3, 0, 1}, {-64, 3}},
      {model_code::normal, {-64, 1, 1 / 4.0, 0, 1}, {-64, 4}},
      {model_code::normal, {0, 1, 1 / 4.0, 0, 1}, {0, 4}},
      {model_code::lognormal, {64, 1, 1 / 4.0, 0, 1}, {64, std::exp(4.0)}},
      {model_code::lognormal, {64, 1, 1e-5, 0, 1}, {64, std::nullopt}},
  };
  for (const Case& c : cases) EXPECT_EQ(shown_parameters(c.model, c.row), c.shown) << c.model;
}

}  // namespace
}  // namespace tavlo
