#include <gtest/gtest.h>

#include "residual_world.h"
#include "solver/residuals.h"

namespace tavlo {
namespace {

struct LikelihoodResidualsTest : testing::Test, test::ResidualWorld {
  std::mt19937_64 random{23};
};

TEST_F(LikelihoodResidualsTest, rows_are_log_densities_and_log_reliabilities) {
  for (const int K : test::all_models) {
    set_model(K, solver_method::mle);
    int regular_samples = 0;
    for (int round = 0; round < 60; ++round) {
      set_random_points(1 + 2 * round, random);
      suspend_every_third_row();
      set_random_parameters(random);
      const double ln_likelihood = evaluate(data().M);
      const test::BookModel model{q(), K};
      long double sum = 0;
      bool is_regular = true;
      for (int i = 1; i <= data().M; ++i) {
        const double x = data().Xs(i);
        const bool failed = data().Ys(i) < 9.9;
        const long double g = failed ? model.log_density(x) : -model.risk(x);
        if (model.risk(x) > 700 || g > 0) is_regular = false;
        if (!is_regular) break;
        ASSERT_NEAR(fvec[static_cast<std::size_t>(i)], static_cast<double>(-std::sqrt(-g)), 1e-9)
            << "K " << K << " row " << i << " failed " << failed;
        sum += g;
      }
      EXPECT_EQ(ln_likelihood, q().SumSq);
      if (!is_regular) continue;
      ++regular_samples;
      EXPECT_NEAR(ln_likelihood, static_cast<double>(sum), 1e-12 * static_cast<double>(-sum));
    }
    EXPECT_GT(regular_samples, 20) << K;
  }
}

TEST_F(LikelihoodResidualsTest, one_row_by_hand) {
  set_model(2, solver_method::mle);
  set_points({0}, {0});
  X = {0, 1, 1};
  EXPECT_EQ(evaluate(1), -1);
  EXPECT_EQ(fvec[1], -1);
}

// ln L = sum of ln beta - ln t + beta ln(t / eta) over failures - sum of (t / eta)^beta.
TEST_F(LikelihoodResidualsTest, two_parameter_sum_is_the_textbook_likelihood_of_censored_data) {
  set_model(2, solver_method::mle);
  set_random_points(40, random);
  suspend_every_third_row();
  X = {0, 1.7, 400};
  long double expected = 0;
  for (int i = 1; i <= 40; ++i) {
    const long double t = std::exp(static_cast<long double>(data().Xs(i)));
    const long double hazard = std::pow(t / 400.0L, 1.7L);
    if (i % 3 != 0) expected += std::log(1.7L) - std::log(t) + std::log(hazard);
    expected -= hazard;
  }
  EXPECT_NEAR(evaluate(40), static_cast<double>(expected), 1e-10);
}

// exp(-A - B) vanishes and 1e-18 stands for it; population C has left nobody.
TEST_F(LikelihoodResidualsTest, vanished_reliability_counts_as_tiny) {
  set_points({std::log(5000.0)}, {0});
  for (const int K : {4, 5, 7}) {
    set_model(K, solver_method::mle);
    X = K == 4   ? ParameterVector{0, 2, 100, 1, 3000}
        : K == 5 ? ParameterVector{0, 2, 100, 1, 5000, 0.4}
                 : ParameterVector{0, 2, 100, 1, 3000, 1, 5000, 0.4};
    const double rate = 2500 * 2 + (K == 5 ? 0 : 5000.0 / 3000);
    const double expected = std::log((K == 4 ? 1 : 0.6) * 1e-18 * rate / 5000);
    EXPECT_NEAR(evaluate(1), expected, 1e-11) << K;
  }
}

TEST_F(LikelihoodResidualsTest, positive_row_counts_in_the_sum_but_has_no_root) {
  set_model(4, solver_method::mle);
  set_points({std::log(0.5), std::log(0.001), std::log(0.4)}, {0, 0, 0});
  X = {0, 1, 1, 1, 1e9};
  fvec = {0, 7, 7, 7};
  world.prompts.expect_box("*** Tavlo Error ***", "Invalid procedure call or argument\nin MLE Fun",
                           BoxAnswer::retry);
  X = {0, 1, 0.01, 1, 1e9};
  const double g[3] = {std::log(100.0) - 50, std::log(100.0) - 0.1, std::log(100.0) - 40};
  EXPECT_NEAR(evaluate(3), g[0] + g[1] + g[2], 1e-6);
  EXPECT_NEAR(fvec[1], -std::sqrt(-g[0]), 1e-7);
  EXPECT_EQ(fvec[2], 7);
  EXPECT_NEAR(fvec[3], -std::sqrt(-g[2]), 1e-7);
}

TEST_F(LikelihoodResidualsTest, minimum_life_gives_way_to_a_failure_below_it) {
  set_model(3, solver_method::mle);
  set_points({std::log(10), std::log(20), std::log(40)}, {-1, 0, 1});
  X = {0, 2, 50, 15};
  evaluate(3);
  EXPECT_DOUBLE_EQ(X[3], 9.999);
  EXPECT_EQ(q().Extra, X[3]);
  EXPECT_DOUBLE_EQ(fvec[1], -std::sqrt(300.0));
  const test::BookModel moved{q(), 3};
  EXPECT_NEAR(fvec[2] * fvec[2], static_cast<double>(-moved.log_density(std::log(20))), 1e-12);
}

TEST_F(LikelihoodResidualsTest, positive_row_of_three_parameters_counts_as_impossible) {
  set_model(3, solver_method::mle);
  set_points({0}, {0});
  X = {0, 1, 0.01, 0.999};  // density 100 exp(-0.1)
  EXPECT_EQ(evaluate(1), -300);
  EXPECT_DOUBLE_EQ(fvec[1], -std::sqrt(300.0));
}

TEST_F(LikelihoodResidualsTest, early_suspensions_keep_their_digits) {
  set_model(7, solver_method::mle);
  set_points({std::log(1e-9)}, {SolverData::suspension_mark});
  X = {0, 1, 1e3, 1, 1e4, 1, 1e2, 0.5};
  EXPECT_NEAR(evaluate(1) / -(1e-12 + 1e-13 + 0.5e-11), 1, 1e-10);
}

}  // namespace
}  // namespace tavlo
