#include "analyses/comparison.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "fit/door/fit.h"
#include "support/random_samples.h"
#include "support/reference_book.h"

namespace tavlo {
namespace {

using enum RatioTest;
using Codes = std::vector<std::int16_t>;

ComparedFit compared(std::int16_t model, std::optional<double> quality,
                     std::int16_t method = method_code::mle, bool censored = false) {
  FitRequest request;
  request.model = model;
  request.method = method;
  request.censored = censored;
  return {request, quality};
}

Sample sample_of(double failures, double suspensions) {
  Sample sample;
  sample.total_failures = failures;
  sample.total_suspensions = suspensions;
  return sample;
}

struct Case {
  ComparedFit fit;
  RatioTest test;
  int df = 0;
  double ln_likelihood = 0;  ///< that is tested
};

// Models that no routine fits come from files; they are tested on what stands in for them.
TEST(Comparison, TestsEachModelAsStated) {
  const std::vector<Case> cases = {
      {compared(98, -50.0), base},
      {compared(162, -49.0), tested, 1, -49},
      {compared(226, -1.0), tested, 1, -49},
      {compared(986, -1.0), tested, 1, -49},
      {compared(290, -48.0), tested, 2, -48},
      {compared(354, -51.0), tested, 3, -51},
      {compared(418, -1.0), tested, 3, -51},
      {compared(482, -45.0), tested, 5, -45},
      {compared(674, -53.0), contained},
      {compared(738, -53.0), contained},
      {compared(802, -50.1), none},
      {compared(857, -50.0), none},
      {compared(1057, -50.0), none},
      {compared(1216, {}), none},
      {compared(98, 0.97, method_code::x_on_y), none},
      {compared(482, std::nan("")), none},
      {compared(7, -3.0), none},
  };
  std::vector<ComparedFit> fits;
  for (const Case& row : cases) fits.push_back(row.fit);
  const Comparison comparison = compare(sample_of(20, 0), fits);
  ASSERT_EQ(comparison.rows.size(), cases.size());
  const auto chance = [](int df, double x) -> double {
    if (x <= 0) return 0;
    const double root = std::sqrt(x / 2), density = std::exp(-x / 2) / std::sqrt(std::numbers::pi);
    if (df == 2) return 1 - std::exp(-x / 2);
    const double odd = df == 1 ? 0 : df == 3 ? 1 : 1 + x / 3;
    return std::erf(root) - 2 * odd * root * density;
  };
  for (std::size_t i = 0; i < cases.size(); ++i) {
    const auto& [fit, test, df, ln_likelihood] = cases[i];
    const ComparedRow& row = comparison.rows[i];
    EXPECT_EQ(row.test, test) << i;
    EXPECT_EQ(row.df, df) << i;
    EXPECT_NEAR(row.chance, df > 0 ? chance(df, 2 * (ln_likelihood + 50)) : 0, 1e-14) << i;
  }
  ASSERT_TRUE(comparison.winner);
  EXPECT_EQ(comparison.winner->row, 7U) << "84, 86 and 92 %";
  EXPECT_EQ(comparison.winner->significance, comparison.rows[7].chance);
}

struct Race {
  std::vector<ComparedFit> fits;
  double suspensions;
  std::optional<std::size_t> winner;
  std::vector<RatioTest> tests;
};

TEST(Comparison, OnlyATestedRowWinsAndOnlyAboveOneHalf) {
  const double half = std::numbers::ln2;  // of a chance with two degrees of freedom
  const auto c = [](std::int16_t model, double quality) {
    return compared(model, quality, 1, true);
  };
  for (const auto& [fits, suspensions, winner, tests] : std::vector<Race>{
           {{compared(98, 0.0), compared(290, half)}, 0, 0, {base, tested}},
           {{compared(290, half + 1e-9), compared(98, 0.0)}, 0, 0, {tested, base}},
           {{compared(98, 0.0), compared(162, 60.0), compared(354, 310.0), compared(482, 311.0)},
            0,
            2,
            {base, tested, tested, tested}},
           {{compared(98, 0.0), compared(354, 3000.0), compared(482, 3015.0),
             compared(290, 2990.0)},
            0,
            2,
            {base, tested, tested, tested}},
           {{compared(98, -9.0)}, 0, 0, {base}},
           {{compared(98, -9.0), compared(162, -9.1)}, 0, 0, {base, tested}},
           {{compared(98, -9.0), compared(290, -1.0)}, 3, 0, {base, incommensurate}},
           {{compared(98, -9.0), compared(290, -1.0), c(290, -4.0)},
            3,
            2,
            {base, incommensurate, tested}},
           {{compared(98, -9.0), compared(418, -1.0)}, 3, 0, {base, incommensurate}},
           {{compared(98, -9.0), compared(418, -1.0)}, 0, 0, {base, none}},
           {{compared(290, 8.0), compared(98, {})}, 0, {}, {none, none}},
           {{compared(290, 8.0)}, 0, {}, {none}},
           {{compared(98, 0.9, 0), compared(162, 0.99, 0)}, 0, {}, {none, none}},
           {{}, 0, {}, {}}}) {
    const Comparison comparison = compare(sample_of(9, suspensions), fits);
    EXPECT_EQ(comparison.winner.has_value(), winner.has_value());
    if (!winner || !comparison.winner) continue;
    EXPECT_EQ(comparison.winner->row, *winner);
    EXPECT_EQ(comparison.winner->is_base, fits[*winner].request.model == 98);
    for (std::size_t i = 0; i < tests.size(); ++i) EXPECT_EQ(comparison.rows[i].test, tests[i]);
  }
}

TEST(Comparison, RegressionsAreJudgedByTheTableOfTheirPaper) {
  const Sample sample = sample_of(12.5, 7);
  const auto value = [&](std::int16_t model, double r, std::int16_t method = 0) {
    return compare(sample, std::vector{compared(model, r, method)}).rows[0].straightness;
  };
  const auto expect = [&](std::int16_t model, PaperKind kind, bool three) {
    for (const std::int16_t method : {method_code::x_on_y, method_code::y_on_x}) {
      const auto found = value(model, 0.95, method);
      const CriticalRSquared wanted = fd_Ccc2(kind, 12.5, three, 0.95);
      ASSERT_TRUE(found) << model;
      EXPECT_EQ(found->critical, wanted.critical) << model;
      EXPECT_EQ(found->pve, wanted.pve) << model;
    }
  };
  // Normal and Gumbel are judged by the Weibull's table too: people know these values.
  for (const std::int16_t model : Codes{98, 226, 674, 738, 802, 857, 1057, 1137, 1216})
    expect(model, PaperKind::weibull, false);
  expect(162, PaperKind::weibull, true);
  expect(922, PaperKind::lognormal, false);
  expect(986, PaperKind::lognormal, true);
  for (const std::int16_t model : Codes{290, 354, 418, 482})
    EXPECT_FALSE(value(model, 0.95)) << model;
  for (const double r : {0.0, -0.4, 1.0, 1.1}) EXPECT_FALSE(value(98, r)) << r;
  EXPECT_FALSE(value(98, -30, method_code::mle));
}

// Criteria of real fits, from the likelihoods of the reference book.
TEST(Comparison, CriteriaAreThoseOfTheirLikelihoods) {
  test::RandomNumbers random(3);
  const auto rows = test::draws(random, test::weibull5c(4, 1000, 1.5, 60, 0.3), 80, 0.3);
  const Sample sample = make_sample(rows, RankKind::benard);
  Companion companion;
  std::vector<ComparedFit> fits;
  std::vector<long double> ln_likelihoods;
  for (const std::int16_t model : Codes{98, 162, 290, 354, 482, 674}) {
    fits.push_back(compared(model, {}, method_code::mle, model == 162 || model > 200));
    const FitAnswer answer = fit(sample, fits.back().request, companion);
    ASSERT_TRUE(answer.fit()) << model;
    fits.back().quality = answer.fit()->quality;
    ln_likelihoods.push_back(test::ln_likelihood_of(answer.fit()->life, sample, true));
  }
  fits.push_back(compared(354, 0.0));
  const Comparison comparison = compare(sample, fits);
  const double units = sample.total_failures + sample.total_suspensions;
  for (std::size_t i = 0; i < ln_likelihoods.size(); ++i) {
    const int k = find_model(fits[i].request.model)->free_parameters;
    const auto deviance = static_cast<double>(-2 * ln_likelihoods[i]);
    EXPECT_NEAR(comparison.rows[i].aic.value_or(0), deviance + 2 * k, 1e-7) << i;
    EXPECT_NEAR(comparison.rows[i].bic.value_or(0), deviance + k * std::log(units), 1e-7) << i;
  }
  EXPECT_FALSE(comparison.rows.back().aic) << "its likelihood is one of other data";
  EXPECT_EQ(comparison.rows.back().test, incommensurate);
  ASSERT_TRUE(comparison.winner);
  EXPECT_EQ(fits[comparison.winner->row].request.model, model_code::weibull5c)
      << "the model of the truth";
}

}  // namespace
}  // namespace tavlo
