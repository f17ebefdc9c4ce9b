#include "solver/levenberg_marquardt.h"

#include <gtest/gtest.h>

#include <cmath>

#include "solver/points_world.h"
#include "solver/starting_values.h"

namespace tavlo {
namespace {

struct Fit : test::PointsWorld {
  Fit(const std::vector<test::TimeAndRank>& points, int the_K, int method) : K(the_K) {
    load(points, K, method);
    WeibullStatistics(solver, X);
  }

  int run(double factor = 0.2) {
    const int M = state.data.M;
    std::vector<double> fvec(static_cast<std::size_t>(M) + 1);
    JacobianMatrix fjac(M, K);
    VariableScales diag{};
    int info = 99;
    LMDER(solver, M, K, X, fvec, fjac, diag, scaling_mode::internal, factor, info);
    return info;
  }

  int K;
  ParameterVector X{};
};

const test::PreciseMixture competing{4, 1000, 0.7, 3000};
const test::PreciseMixture batch{3, 1000, 0, 0, 1, 50, 0.2};

TEST(LevenbergMarquardt, ALineIsFoundFromAfar) {
  for (const int method : {solver_method::x_on_y, solver_method::y_on_x}) {
    Fit fit(test::PreciseMixture{1.7, 900, 2.5, 1300}.sample(60), 2, method);
    const ParameterVector line = fit.X;
    fit.X = {0, 0.5 * line[1], 2 * line[2]};
    const int info = fit.run();
    EXPECT_TRUE(info >= 1 && info <= 3) << info;
    EXPECT_NEAR(fit.X[1], line[1], 1e-6 * line[1]);
    EXPECT_NEAR(fit.X[2], line[2], 1e-6 * line[2]);
    EXPECT_NEAR(fit.X[0], line[0], 1e-9);
  }
}

TEST(LevenbergMarquardt, PreciseMixturesAreRecovered) {
  for (const int method : {solver_method::x_on_y, solver_method::y_on_x}) {
    Fit four(competing.sample(80), 4, method);
    EXPECT_GT(four.run(), 0);
    EXPECT_NEAR(four.X[1], 4, 1e-4);
    EXPECT_NEAR(four.X[4], 3000, 0.1);
    EXPECT_GT(four.X[0], 1 - 1e-9);
    Fit five(batch.sample(80), 5, method);
    EXPECT_GT(five.run(), 0);
    EXPECT_NEAR(five.X[4], 50, 1e-3);
    EXPECT_NEAR(five.X[5], 0.2, 1e-6);
  }
}

TEST(LevenbergMarquardt, AnAbortFlagEndsItWithMinusOne) {
  Fit fit(competing.sample(30), 4, solver_method::y_on_x);
  fit.state.abort_flag = 2;
  EXPECT_EQ(fit.run(), -1);
}

TEST(LevenbergMarquardt, FewerRowsThanParametersAreRefused) {
  Fit fit(competing.sample(30), 4, solver_method::y_on_x);
  fit.state.data.M = 3;
  const ParameterVector before = fit.X;
  EXPECT_EQ(fit.run(), 0);
  EXPECT_EQ(fit.X, before);
}

}  // namespace
}  // namespace tavlo
