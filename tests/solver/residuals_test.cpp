#include "solver/residuals.h"

#include <gtest/gtest.h>

#include <limits>

#include "residual_world.h"

namespace tavlo {
namespace {

struct ResidualFnTest : testing::Test, test::ResidualWorld {
  std::mt19937_64 random{31};

  static double spread(const Slots<double>& values) {
    long double sum = 0, squares = 0;
    const int n = values.bound();
    for (int i = 1; i <= n; ++i) sum += values(i);
    for (int i = 1; i <= n; ++i) squares += (values(i) - sum / n) * (values(i) - sum / n);
    return static_cast<double>(squares);
  }
};

TEST_F(ResidualFnTest, quality_is_r_squared_of_the_distances) {
  for (const int K : test::all_models) {
    for (const int method : {solver_method::x_on_y, solver_method::y_on_x}) {
      for (const int trans_mode : {1, 2}) {
        set_model(K, method, trans_mode);
        set_random_points(90, random);
        set_random_parameters(random);
        const double whole = spread(method == solver_method::x_on_y ? data().Xs : data().Ys);
        q().InvSpreadA = 1 / whole;
        q().InvSpreadB = 1 / whole / 3;
        const double quality = evaluate(90);
        double sum = 0;
        for (std::size_t i = 1; i <= 90; ++i) sum += fvec[i] * fvec[i];
        // X on Y of K = 3 has set its own spread, of ln(t - t0).
        const double by = K == 3 && method == 1 ? q().InvSpreadB : 1 / whole;
        EXPECT_NEAR(quality, 1 - sum * by, 1e-12 * (1 + sum * by)) << K << method << trans_mode;
        EXPECT_EQ(q().SumSq, quality);
        if (method == solver_method::y_on_x) {
          q().InvSpreadB = 2;
          const double part = evaluate(-90);
          q().SumSq = 0;
          YonXFn(solver, -90, K, X, fvec);
          EXPECT_EQ(part, 1 - 2 * q().SumSq);
        }
      }
    }
  }
}

TEST_F(ResidualFnTest, requests) {
  set_model(2, solver_method::y_on_x);
  set_points({1, 2}, {-1, 0});
  X = {0.25, 2, 5};
  fvec = {0, 7, 7};
  solver.params.SumSq = 9;
  evaluate(2, 0);  // translates, evaluates nothing, keeps the sum
  EXPECT_EQ(q().SumSq, 9);
  EXPECT_EQ(q().EtaA, 5);
  evaluate(2, 5);
  EXPECT_EQ(q().SumSq, 0);
  EXPECT_EQ(fvec[1], 7);
  evaluate(2, residual_request::jacobian);
  EXPECT_EQ(X[0], 0.25);
  EXPECT_EQ(fjac(1, 2), -0.4);
  evaluate(2, residual_request::evaluate_once);
  EXPECT_DOUBLE_EQ(fvec[1], 2 * (1 - std::log(5)) + 1);
  solver.state.abort_flag = 1;
  int iflag = 1;
  ResidualFn(solver, 2, 2, X, fvec, fjac, iflag);
  EXPECT_EQ(iflag, -1);
}

// Whatever X and the data hold: boxes at most, an answer or a reported row.
TEST_F(ResidualFnTest, hostile_values_do_not_crash) {
  const double infinity = std::numeric_limits<double>::infinity();
  const std::vector<double> hostile{0,     -1,       1e-300,    1e300,        -1e300,
                                    1e-12, infinity, -infinity, std::nan(""), 710};
  world.prompts.accept_all();
  std::uniform_int_distribution<std::size_t> pick(0, hostile.size() - 1);
  for (int round = 0; round < 1500; ++round) {
    const int K = test::all_models[static_cast<std::size_t>(round) % 5];
    set_model(K, 1 + round / 5 % 3, 1 + round / 15 % 2);
    set_random_points(5 + round % 7, random);
    suspend_every_third_row();
    set_random_parameters(random);
    X[1 + pick(random) % static_cast<std::size_t>(K)] = hostile[pick(random)];
    if (round % 2) data().Xs(1) = std::log(1e-300);
    if (round % 3 == 1) data().Xs(data().M) = std::log(1e300);
    if (round % 11 == 0) data().Xs(2) = hostile[pick(random)];
    solver.quiet = round % 4 == 0;
    const int M = data().M;
    evaluate(M);
    evaluate(M, residual_request::jacobian);
    evaluate(-M);
    evaluate(0);
    EXPECT_EQ(solver.state.abort_flag, 0);
    EXPECT_TRUE(std::isfinite(q().SumSq)) << K << " " << round;
    world.clock.advance(1);
  }
}

}  // namespace
}  // namespace tavlo
