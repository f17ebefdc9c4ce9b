#include <gtest/gtest.h>

#include "residual_world.h"
#include "solver/residuals.h"

namespace tavlo {
namespace {

struct VerticalResidualsTest : testing::Test, test::ResidualWorld {};

TEST_F(VerticalResidualsTest, ordinates_are_those_of_the_models) {
  std::mt19937_64 random(3);
  for (const int K : test::all_models) {
    set_model(K, solver_method::y_on_x);
    for (int round = 0; round < 60; ++round) {
      set_random_points(1 + round, random);
      set_random_parameters(random);
      evaluate(data().M);
      const test::BookModel model{q(), K};
      double sum = 0;
      for (int i = 1; i <= data().M; ++i) {
        const double low = std::log(-std::log(0.99999999999)), high = std::log(-std::log(1e-11));
        const double free = static_cast<double>(model.ordinate(data().Xs(i)));
        const double expected = (K < 5 ? free : std::clamp(free, low, high)) - data().Ys(i);
        ASSERT_NEAR(fvec[static_cast<std::size_t>(i)], expected, 1e-11)
            << "K " << K << " row " << i;
        sum += expected * expected;
      }
      solver.params.SumSq = 0;
      YonXFn(solver, data().M, K, X, fvec);
      EXPECT_NEAR(q().SumSq, sum, 1e-11 * (1 + sum));
    }
  }
}

TEST_F(VerticalResidualsTest, n_selects_the_rows) {
  struct Case {
    int n, last, step;
  };
  for (const Case c : {Case{-50, 49, 2}, {-5, 5, 1}, {-39, 39, 1}, {-55, 53, 2}, {200, 200, 1}}) {
    std::mt19937_64 random(5);
    set_model(2, solver_method::y_on_x);
    set_random_points(200, random);
    set_random_parameters(random);
    evaluate(0, 0);
    fvec.assign(fvec.size(), 77.0);
    YonXFn(solver, c.n, 2, X, fvec);
    for (int i = 0; i <= 200; ++i) {
      const bool visited = i >= 1 && i <= c.last && (i - 1) % c.step == 0;
      EXPECT_EQ(fvec[static_cast<std::size_t>(i)] != 77.0, visited) << c.n << " row " << i;
    }
  }
}

TEST_F(VerticalResidualsTest, row_0_is_the_ordinate_at_the_trial) {
  set_model(2, solver_method::y_on_x);
  set_points({1, 2}, {-1, 0});
  q().BetaA = 2;
  q().LnEtaA = 5;
  data().Xs(0) = 6.5;
  YonXFn(solver, 0, 2, X, fvec);
  EXPECT_DOUBLE_EQ(fvec[0], 3);
  EXPECT_EQ(fvec[1], 0);
}

TEST_F(VerticalResidualsTest, rows_below_the_minimum_life_restart_the_sum) {
  set_model(3, solver_method::y_on_x);
  set_points({std::log(10), std::log(20), std::log(40), std::log(80)}, {-2, -1, 0, 1});
  X = {0, 2, 50, 25};
  evaluate(4);
  EXPECT_EQ(fvec[1], -325);
  EXPECT_EQ(fvec[2], -325);
  EXPECT_DOUBLE_EQ(fvec[3], 2 * std::log(15.0 / 50));
  solver.params.SumSq = 0;
  YonXFn(solver, 4, 3, X, fvec);
  EXPECT_DOUBLE_EQ(q().SumSq, fvec[3] * fvec[3] + fvec[4] * fvec[4]);
}

TEST_F(VerticalResidualsTest, a_row_that_fails_is_reported_and_left) {
  set_model(3, solver_method::y_on_x);
  set_points({0, 1, 2}, {-1, 0, 1});
  X = {0, 2, 50, 1};  // ln(exp(0) - 1)
  fvec = {0, 7, 7, 7};
  world.prompts.expect_box("*** Tavlo Error ***", "in Y on X Function routine", BoxAnswer::retry);
  evaluate(3);
  EXPECT_EQ(fvec[1], 7);
  EXPECT_DOUBLE_EQ(fvec[2], 2 * std::log((std::exp(1) - 1) / 50));
}

TEST_F(VerticalResidualsTest, other_models_have_no_effect) {
  set_points({0, 1}, {-1, 0});
  fvec = {7, 7, 7};
  for (const int K : {0, 1, 6, 8}) {
    YonXFn(solver, 2, K, X, fvec);
    XonYFn(solver, 2, K, X, fvec);
    MleFn(solver, 2, K, X, fvec);
  }
  EXPECT_EQ(fvec, (std::vector<double>{7, 7, 7}));
}

TEST_F(VerticalResidualsTest, a_row_beyond_the_vector_is_refused) {
  set_points({0, 1}, {-1, 0});
  world.prompts.expect_box("*** Tavlo Error ***", "Subscript out of range\nin Y on X",
                           BoxAnswer::retry);
  YonXFn(solver, 3, 2, X, fvec);
}

}  // namespace
}  // namespace tavlo
