#include "solver/further_starts.h"

#include <gtest/gtest.h>

#include "solver/fit_world.h"
#include "solver/starts_sentence.h"

namespace tavlo {
namespace {

using test::all_methods;
using test::FitWorld;
using test::mixtures;
using test::random_sample;
using test::usual_mixture;

TEST(FurtherStarts, TheSameSampleGivesTheSameAnswerAndReport) {
  for (const std::int16_t model : mixtures)
    for (const std::int16_t method : all_methods) {
      const DataSet data = random_sample(usual_mixture(model), {.n = 60, .seed = 12});
      const FitResult a = FitWorld(data).fit(model, method);
      const FitResult b = FitWorld(data).fit(model, method);
      ASSERT_TRUE(a.starts && b.starts);
      EXPECT_EQ(a.Quality, b.Quality);
      EXPECT_EQ(a.starts->tried, b.starts->tried);
      EXPECT_EQ(a.starts->agreed, b.starts->agreed);
      EXPECT_GE(a.starts->tried, 7);
      EXPECT_LE(a.starts->agreed, a.starts->tried);
      EXPECT_GE(a.starts->agreed, 1);
      EXPECT_LT(a.starts->has_runner_up ? a.starts->runner_up : -1e300, a.Quality);
    }
}

/// Nested models: more parameters on the same points can't fit worse.
TEST(FurtherStarts, AWiderModelIsNotWorseThanTheOneInIt) {
  for (std::uint64_t seed = 1; seed <= 6; ++seed) {
    FitWorld world(random_sample(usual_mixture(model_code::weibull7), {.n = 100, .seed = seed}));
    world.prompts.accept_all();
    for (const std::int16_t method : all_methods) {
      const double allowed = method == method_code::mle ? 0.05 : 1e-4;
      const double five = world.fit(model_code::weibull5c, method).Quality;
      const double two = world.fit(model_code::weibull2, method).Quality;
      EXPECT_GE(world.fit(model_code::weibull7, method).Quality, five - allowed) << seed;
      EXPECT_GE(five, two - allowed) << seed;
    }
  }
}

TEST(FurtherStarts, LargeDataAreSearchedOnASampleAndAnsweredOnAllRows) {
  const test::TrueMixture truth = usual_mixture(model_code::weibull5c);
  const DataSet data = random_sample(truth, {.n = 5000, .seed = 1});
  for (const std::int16_t method : all_methods) {
    FitWorld world(data);
    const FitResult fit = world.fit(model_code::weibull5c, method);
    ASSERT_EQ(fit.Status, FitStatus::calculated);
    EXPECT_NEAR(fit.Rows(1).Fraction, truth.share, 0.02);
    EXPECT_NEAR(fit.Rows(2).Shape, truth.beta_a, 0.15);
    EXPECT_NEAR(1 / fit.Rows(2).Scale, truth.eta_a, 20);
    if (method != method_code::mle) continue;
    double ln_likelihood = 0;
    for (int i = 1; i <= data.Count; ++i)
      ln_likelihood +=
          std::log(test::mixture_of(fit).density(static_cast<double>(data.Points(i).X)));
    EXPECT_NEAR(fit.Quality, ln_likelihood, 1e-6 * std::fabs(ln_likelihood));
    const double other = fit.starts->has_runner_up ? fit.starts->runner_up : fit.Quality;
    EXPECT_NEAR(other / fit.Quality, 1, 0.2);
  }
}

TEST(FurtherStarts, TheSentenceSaysWhatWasFound) {
  FitResult fit;
  fit.Method = method_code::x_on_y;
  EXPECT_EQ(starts_sentence(fit), "");
  fit.starts =
      OldStartsReport{.tried = 12, .agreed = 9, .has_runner_up = true, .runner_up = 0.9931};
  EXPECT_EQ(starts_sentence(fit),
            "9 of 12 starts ended at this optimum; the best other one has r^2 0.9931.");
  fit.starts->has_runner_up = false;
  EXPECT_EQ(starts_sentence(fit),
            "9 of 12 starts ended at this optimum; no other that stands up was found.");
  fit.starts->interior_maximum = false;
  EXPECT_NE(starts_sentence(fit).find("no maximum"), std::string::npos);
}

TEST(FurtherStarts, MinimumLifeByLikelihoodSaysWhereThereIsNoMaximum) {
  // A single early failure before a slope below 1.
  const test::TrueMixture steep{4, 2.5, 1000, 0, 1, 0, 1, 0};
  const test::TrueMixture flat{4, 0.6, 1000, 0, 1, 0, 1, 0};
  FitWorld regular(random_sample(steep, {.n = 100, .seed = 4}));
  EXPECT_TRUE(regular.fit(model_code::weibull3, method_code::mle).starts->interior_maximum);
  FitWorld none(random_sample(flat, {.n = 100, .seed = 4}));
  none.prompts.accept_all();
  none.fit(model_code::weibull3, method_code::mle);
  EXPECT_NE(none.last_status().find("no maximum"), std::string::npos);
}

}  // namespace
}  // namespace tavlo
