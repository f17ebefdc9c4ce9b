#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "solver/mixture_functions.h"
#include "solver/points_world.h"
#include "solver/starting_values.h"

namespace tavlo {
namespace {

using test::TimeAndRank;

std::vector<TimeAndRank> random_points(std::uint64_t seed, int n) {
  std::mt19937_64 random(seed);
  std::weibull_distribution<double> life(1.6, 1000);
  std::vector<double> times;
  for (int i = 0; i < n; ++i) times.push_back(life(random));
  std::sort(times.begin(), times.end());
  return test::ranked_times(times);
}

/// Sums about the means, in long double.
struct Moments {
  long double xx = 0, yy = 0, xy = 0, mean_x = 0, mean_y = 0;

  explicit Moments(const std::vector<TimeAndRank>& points) {
    const auto n = static_cast<long double>(points.size());
    for (const TimeAndRank& point : points) {
      mean_x += std::log(static_cast<long double>(point.time)) / n;
      mean_y += fd_WblY(point.rank) / n;
    }
    for (const TimeAndRank& point : points) {
      const long double x = std::log(static_cast<long double>(point.time)) - mean_x;
      const long double y = fd_WblY(point.rank) - mean_y;
      xx += x * x;
      yy += y * y;
      xy += x * y;
    }
  }

  double life(long double slope) const {
    return static_cast<double>(std::exp(mean_x - mean_y / slope));
  }
};

TEST(WeibullStatistics, BothLinesAgreeWithTheirClosedForms) {
  for (const int n : {3, 6, 7, 50, 3000})
    for (const int method : {solver_method::x_on_y, solver_method::mle, solver_method::y_on_x}) {
      const auto points = random_points(static_cast<std::uint64_t>(n), n);
      const Moments m(points);
      test::PointsWorld world;
      world.load(points, 2, method);
      ParameterVector X{};
      WeibullStatistics(world.solver, X);
      const auto vertical = static_cast<double>(m.xy / m.xx);
      const auto horizontal = static_cast<double>(m.yy / m.xy);
      const auto r_squared = static_cast<double>(m.xy * m.xy / (m.xx * m.yy));
      const SolutionTable& table = world.state.table;
      for (const int row : {1, 2, 3}) {
        const double slope = row == solver_method::y_on_x ? vertical : horizontal;
        EXPECT_NEAR(table(2, row, 0), r_squared, 1e-11);
        EXPECT_NEAR(table(2, row, 1), slope, 1e-11 * slope);
        EXPECT_NEAR(table(2, row, 2), m.life(slope), 1e-11 * m.life(slope));
        EXPECT_EQ(table(2, row, 8), row == solver_method::mle ? 2 : 1);
      }
      EXPECT_DOUBLE_EQ(X[0], table(2, 1, 0));
      for (std::size_t slot = 1; slot <= 8; ++slot)
        EXPECT_EQ(X[slot], table(2, method, static_cast<int>(slot)));
      const long double spread = method == solver_method::x_on_y ? m.xx : m.yy;
      EXPECT_NEAR(static_cast<double>(world.state.params.InvSpreadA * spread), 1, 1e-11);
    }
}

TEST(WeibullStatistics, SuspensionsGoBehindTheFailures) {
  // time 0 is nothing at all; rank 0 is a failure without an ordinate
  const std::vector<TimeAndRank> points = {{-5, 0.3}, {10, 0.2}, {0, 0.4},  {15, 1},
                                           {20, 0},   {30, 0.7}, {40, 10.1}};
  for (const int method : {solver_method::x_on_y, solver_method::mle}) {
    test::PointsWorld world;
    world.load(points, 2, method);
    ParameterVector X{};
    WeibullStatistics(world.solver, X);
    const SolverData& data = world.state.data;
    EXPECT_EQ(data.N, 3);
    EXPECT_EQ(data.NS, 3);
    EXPECT_EQ(data.M, method == solver_method::mle ? 6 : 3);
    const std::vector<double> times = {10, 20, 30, 5, 15, 40};
    const RegressBlock& block = world.state.block;
    for (int i = 1; i <= 6; ++i) {
      const double time = times[static_cast<std::size_t>(i - 1)];
      EXPECT_DOUBLE_EQ(data.Xs(i), std::log(time));
      EXPECT_EQ(block.LnT(i), data.Xs(i));
      EXPECT_EQ(block.T(i), time);
      EXPECT_EQ(block.Y(i), data.Ys(i));
    }
    for (int i = 1; i <= data.M; ++i) EXPECT_EQ(data.Xhat(i), data.Xs(i));
    for (int i = 4; i <= 6; ++i) EXPECT_EQ(data.Ys(i), SolverData::suspension_mark);
    EXPECT_EQ(data.Ys(1), fd_WblY(0.2));
    EXPECT_EQ(data.Ys(2), 0);
    EXPECT_EQ(data.Xhat(0), data.Xhat(data.M));
    EXPECT_EQ(data.Ys(0), data.Ys(data.M));
    EXPECT_EQ(block.N, 3);
    EXPECT_EQ(block.S, 3);
    EXPECT_EQ(block.Rows, 6);
  }
}

TEST(WeibullStatistics, EarlierWorkOnTheDataIsKept) {
  test::PointsWorld world;
  world.load(random_points(4, 20), 5, solver_method::mle);
  world.state.table(2, 1, 1) = 1;
  const ParameterVector earlier = {0, 2, 900, 1.5, 300, 0.25, 0, 0, 3};
  for (int slot = 1; slot <= 8; ++slot)
    world.state.table(5, 2, slot) = earlier[static_cast<std::size_t>(slot)];
  ParameterVector X{};
  WeibullStatistics(world.solver, X);
  for (std::size_t slot = 1; slot <= 8; ++slot) EXPECT_EQ(X[slot], earlier[slot]);
  EXPECT_EQ(world.state.params.EtaC, 300);
  EXPECT_DOUBLE_EQ(world.state.params.LnEtaC, std::log(300.0));
  EXPECT_TRUE(world.state.candidates[5].empty());
}

TEST(WeibullStatistics, BelowSevenFailuresTheParametersAreTheTwoLines) {
  test::PointsWorld world;
  world.load(random_points(4, 6), 4, solver_method::x_on_y);
  ParameterVector X{};
  WeibullStatistics(world.solver, X);
  EXPECT_EQ(X[1], 0);
  EXPECT_GT(world.state.params.BetaA, 0);
  EXPECT_GT(world.state.params.BetaB, world.state.params.BetaA);
}

TEST(WeibullStatistics, WithoutAFailureTheDivisionIsReported) {
  for (const auto& points : std::vector<std::vector<TimeAndRank>>{{}, {{-3, 0.5}, {8, 1}}}) {
    test::PointsWorld world;
    world.load(points, 2, solver_method::y_on_x);
    world.prompts.expect_box("*** Tavlo Error ***",
                             "Division by zero\nin Weibull Statistics routine", BoxAnswer::retry);
    ParameterVector X{};
    WeibullStatistics(world.solver, X);
    EXPECT_EQ(world.state.params.EtaA, 0);
  }
}

TEST(WeibullStatistics, HostileDataLeaveFiniteNumbers) {
  std::vector<std::vector<TimeAndRank>> sets;
  for (const int n : {1, 2, 6, 7, 40}) {
    std::vector<double> equal(static_cast<std::size_t>(n), 7.0), outlier, tiny, huge;
    for (int i = 1; i <= n; ++i) {
      outlier.push_back(i == n ? 1e12 : i);
      tiny.push_back(i * 1e-300);
      huge.push_back(i * 1e300);
    }
    for (const auto& times : {equal, outlier, tiny, huge})
      sets.push_back(test::ranked_times(times));
  }
  sets.push_back({{std::nan(""), 0.5}, {HUGE_VAL, 0.6}, {3, -1}, {4, std::nan("")}});
  for (const auto& points : sets)
    for (const int K : {2, 3, 4, 5, 7}) {
      test::PointsWorld world;
      world.prompts.accept_all();
      world.load(points, K, solver_method::mle);
      ParameterVector X{};
      WeibullStatistics(world.solver, X);
      for (const double value : X) EXPECT_TRUE(std::isfinite(value));
      EXPECT_TRUE(std::isfinite(world.state.params.BetaB));
    }
}

}  // namespace
}  // namespace tavlo
