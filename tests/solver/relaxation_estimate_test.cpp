#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "solver/points_world.h"
#include "solver/starting_values.h"

namespace tavlo {
namespace {

/// The world after the points have been prepared for K.
struct Prepared : test::PointsWorld {
  Prepared(const std::vector<test::TimeAndRank>& points, int K) {
    load(points, K, solver_method::y_on_x);
    WeibullStatistics(solver, X);
  }
  const std::vector<ParameterVector>& candidates(int K) const {
    return state.candidates[static_cast<std::size_t>(K)];
  }
  ParameterVector X{};
};

ParameterVector slots_of(int K, const test::PreciseMixture& m) {
  if (K == 4) return {0, m.beta_a, m.eta_a, m.beta_b, m.eta_b};
  if (K == 5) return {0, m.beta_a, m.eta_a, m.beta_c, m.eta_c, m.p};
  return {0, m.beta_a, m.eta_a, m.beta_b, m.eta_b, m.beta_c, m.eta_c, m.p};
}

struct Known {
  int K;
  test::PreciseMixture mixture;
  double factor;     ///< between each parameter and its start
  double r_squared;  ///< the start's at least
};

TEST(RelaxationEstimate, LandsNearTheParametersOfPreciseSamples) {
  const std::vector<Known> all = {
      {4, {4, 1000, 0.7, 3000}, 1.1, 0.998},
      {4, {6, 500, 1, 800}, 1.1, 0.998},
      {5, {3, 1000, 0, 0, 1, 50, 0.2}, 1.001, 0.99999},
      {5, {4, 2000, 0, 0, 1.5, 100, 0.4}, 1.001, 0.99999},
      {7, {5, 1000, 1, 3000, 0.8, 20, 0.1}, 2.7, 0.998},
      {7, {6, 2000, 1, 4000, 1.5, 30, 0.2}, 1.5, 0.994},
  };
  for (const Known& known : all)
    for (const int n : {40, 200}) {
      Prepared world(known.mixture.sample(n), known.K);
      const ParameterVector truth = slots_of(known.K, known.mixture);
      for (int i = 1; i <= known.K; ++i) {
        const double ratio = world.state.table(known.K, 3, i) / truth[static_cast<std::size_t>(i)];
        EXPECT_LT(std::fabs(std::log(ratio)), std::log(known.factor))
            << "K " << known.K << ", n " << n << ", slot " << i;
      }
      EXPECT_GT(world.candidates(known.K).front()[0], known.r_squared);
    }
}

// On many rows a sample of them is compared; the start still has to be a fit.
TEST(RelaxationEstimate, ServesLargeData) {
  Prepared world(test::PreciseMixture{3, 1000, 0, 0, 1, 50, 0.2}.sample(5000), 5);
  EXPECT_NEAR(world.state.table(5, 1, 5), 0.2, 1e-4);
  EXPECT_NEAR(world.state.table(5, 1, 4), 50, 0.1);
}

std::vector<test::TimeAndRank> random_points(std::mt19937_64& random, int n) {
  std::weibull_distribution<double> late(3, 1000), early(0.8, 60);
  std::vector<double> times;
  for (int i = 0; i < n; ++i) times.push_back(random() % 4 == 0 ? early(random) : late(random));
  std::sort(times.begin(), times.end());
  return test::ranked_times(times);
}

TEST(RelaxationEstimate, TheBestCandidateStartsEveryMethod) {
  std::mt19937_64 random(12);
  for (int round = 0; round < 50; ++round) {
    Prepared world(random_points(random, 7 + round), 7);
    for (const int K : {3, 4, 5, 7}) {
      const auto& candidates = world.candidates(K);
      ASSERT_FALSE(candidates.empty());
      const auto worse = [](const auto& a, const auto& b) { return a[0] > b[0]; };
      EXPECT_TRUE(std::is_sorted(candidates.begin(), candidates.end(), worse));
      EXPECT_LE(candidates.size(), 12u);
      for (const int method : {0, 1, 2, 3}) {
        EXPECT_EQ(world.state.table(K, method, 0), 2);
        EXPECT_EQ(world.state.table(K, method, 8), 0);
        for (std::size_t slot = 1; slot <= 7; ++slot)
          EXPECT_EQ(world.state.table(K, method, static_cast<int>(slot)), candidates[0][slot]);
      }
      for (const auto& X : candidates)
        for (std::size_t slot = 1; K != 3 && slot <= static_cast<std::size_t>(K); ++slot)
          EXPECT_GT(X[slot], 0);
    }
  }
}

TEST(RelaxationEstimate, LeavesDataAndParametersAlone) {
  std::mt19937_64 random(13);
  Prepared world(random_points(random, 30), 4);
  const Slots<double> x = world.state.data.Xs, y = world.state.data.Ys;
  const double eta = world.state.params.EtaA, spread = world.state.params.InvSpreadA;
  RelaxationEstimate(world.solver, 30);
  EXPECT_EQ(world.state.data.Xs, x);
  EXPECT_EQ(world.state.data.Ys, y);
  EXPECT_EQ(world.state.data.N, 30);
  EXPECT_EQ(world.state.params.EtaA, eta);
  EXPECT_EQ(world.state.params.InvSpreadA, spread);
}

TEST(RelaxationEstimate, HasNoEffectBelowSevenPointsButForgetsTheLastOnes) {
  std::mt19937_64 random(14);
  Prepared world(random_points(random, 30), 4);
  world.state.table = SolutionTable{};
  RelaxationEstimate(world.solver, 6);
  for (const auto& candidates : world.state.candidates) EXPECT_TRUE(candidates.empty());
  EXPECT_EQ(world.state.table(4, 1, 0), 0);
}

// Failed logarithms leave their value without a word: any box fails this test.
TEST(RelaxationEstimate, HostileDataPassInSilence) {
  std::mt19937_64 random(15);
  for (int round = 0; round < 300; ++round) {
    auto points = random_points(random, 7 + static_cast<int>(random() % 30));
    const double scale = std::vector<double>{1, 1e-300, 1e290}[random() % 3];
    for (auto& point : points) {
      if (round % 3 == 0) point.time = std::ceil(point.time / 200) * 200;  // ties
      point.time *= scale;
    }
    if (round % 5 == 0 && scale == 1) points.back().time = 1e12;
    if (round % 7 == 0)
      for (auto& point : points) point.time = 5;
    test::PointsWorld world;
    const int n = static_cast<int>(points.size());
    world.load(points, 7, solver_method::y_on_x);
    for (int i = 1; i <= n; ++i) {
      world.state.data.Xs(i) = std::log(world.state.data.Xs(i));
      world.state.data.Ys(i) = std::log(-std::log1p(-world.state.data.Ys(i)));
    }
    RelaxationEstimate(world.solver, n);
    for (const auto& candidates : world.state.candidates)
      for (const auto& X : candidates)
        for (std::size_t slot = 1; slot <= 7; ++slot) EXPECT_TRUE(std::isfinite(X[slot]));
  }
}

}  // namespace
}  // namespace tavlo
