#include "solver/main_loop.h"

#include <gtest/gtest.h>

#include "solver/parameter_translation.h"
#include "solver/points_world.h"
#include "solver/starting_values.h"

namespace tavlo {
namespace {

using test::PointsWorld;
using test::PreciseMixture;
using test::TimeAndRank;

const PreciseMixture two_parameters{2.5, 800};

std::vector<TimeAndRank> with_minimum_life(double t0) {
  auto points = two_parameters.sample(40);
  for (TimeAndRank& point : points) point.time += t0;
  return points;
}

/// Prepares the points and runs MainLoop; the status.
int run(PointsWorld& world, const std::vector<TimeAndRank>& points, int K, int method,
        ParameterVector& X) {
  world.load(points, K, method);
  WeibullStatistics(world.solver, X);
  int M = world.state.data.M;
  int status = 0;
  MainLoop(world.solver, M, K, X, status);
  return status;
}

TEST(MainLoop, FitsTheTwoParameterWeibullByEachMethod) {
  for (const int method : {solver_method::x_on_y, solver_method::mle, solver_method::y_on_x}) {
    PointsWorld world;
    ParameterVector X{};
    EXPECT_GE(run(world, two_parameters.sample(60), 2, method, X), 1);
    const double tolerance = method == solver_method::mle ? 0.05 : 1e-9;
    EXPECT_NEAR(X[1] / 2.5, 1, tolerance);
    EXPECT_NEAR(X[2] / 800, 1, tolerance);
    EXPECT_EQ(world.state.table(2, method, 1), X[1]);
    EXPECT_EQ(world.state.table(2, method, 0), world.state.params.SumSq);
  }
}

TEST(MainLoop, StatusTenOnlyEvaluates) {
  PointsWorld world;
  ParameterVector X{};
  world.load(two_parameters.sample(60), 2, solver_method::y_on_x);
  WeibullStatistics(world.solver, X);
  world.state.params.BetaA = 2, world.state.params.EtaA = 700;
  int M = 60, status = status_evaluate;
  MainLoop(world.solver, M, 2, X, status);
  EXPECT_EQ(X[1], 2);
  EXPECT_EQ(X[2], 700);
  EXPECT_LT(X[0], 1);
  EXPECT_EQ(status, status_evaluate);
}

TEST(MainLoop, TheSearchForTheMinimumLifeSolvesTheRegression) {
  for (const int method : {solver_method::x_on_y, solver_method::y_on_x}) {
    PointsWorld world;
    ParameterVector X{};
    EXPECT_EQ(run(world, with_minimum_life(200), 3, method, X), 1);
    EXPECT_NEAR(X[3], 200, 1e-3);
    EXPECT_NEAR(X[1], 2.5, 1e-4);
    EXPECT_EQ(world.state.table(3, method, 8), 1);

    // Once more on the same points: the minimiser at once, from the solution.
    world.state.block.T = Slots<double>(0);  // the search would fail without times
    int M = 40, status = 0;
    MainLoop(world.solver, M, 3, X, status);
    EXPECT_GE(status, 1);
    EXPECT_NEAR(X[3], 200, 1e-2);
  }
}

TEST(MainLoop, WarnsOfThreeParameterLikelihoodOnceInARun) {
  PointsWorld world;
  ParameterVector X{};
  world.prompts.expect_box("3 Parameter MLE Warning.", "'OK' to continue, 'Cancel' to stop");
  run(world, with_minimum_life(200), 3, solver_method::mle, X);
  world.prompts.verify();
  XrefZero(world.solver);
  run(world, with_minimum_life(200), 3, solver_method::mle, X);

  PointsWorld cancelled;
  cancelled.prompts.expect_box("3 Parameter MLE Warning.", "", BoxAnswer::cancel);
  EXPECT_EQ(run(cancelled, with_minimum_life(200), 3, solver_method::mle, X), status_cancelled);
  EXPECT_EQ(cancelled.state.table(3, solver_method::mle, 8), 0);
}

TEST(MainLoop, AConvergedSolutionIsSharedWithUnsolvedMethodsOnly) {
  PointsWorld world;
  for (int method = 1; method <= 3; ++method)
    for (int slot = 0; slot <= 7; ++slot)
      world.state.table(5, method, slot) = method == 1 ? 2 : 0.9;
  world.state.data.Method = solver_method::y_on_x;
  world.state.params.SumSq = 0.97;
  const ParameterVector X{0, 1, 2, 3, 4, 5, 6, 7, 0};
  store_solution(world.solver, 5, X, 1);
  EXPECT_EQ(world.state.table(5, solver_method::x_on_y, 3), 3);
  EXPECT_EQ(world.state.table(5, solver_method::mle, 3), 0.9);
  EXPECT_EQ(world.state.table(5, solver_method::y_on_x, 0), 0.97);
  EXPECT_EQ(world.state.table(5, solver_method::y_on_x, 8), 1);
  store_solution(world.solver, 5, X, -1);
  EXPECT_EQ(world.state.table(5, solver_method::y_on_x, 8), 0);
}

TEST(MainLoop, LogarithmsComeBackAsParameters) {
  PointsWorld world;
  ParameterVector X{};
  world.load(two_parameters.sample(60), 2, solver_method::y_on_x);
  WeibullStatistics(world.solver, X);
  world.state.data.TransMode = 2;
  int M = 60, status = 0;
  MainLoop(world.solver, M, 2, X, status);
  EXPECT_NEAR(X[2], 800, 1e-6);
  EXPECT_NEAR(world.state.table(2, solver_method::y_on_x, 1), 2.5, 1e-9);
}

}  // namespace
}  // namespace tavlo
