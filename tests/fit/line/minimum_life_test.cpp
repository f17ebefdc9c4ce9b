#include "solver/minimum_life.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <boost/math/tools/minima.hpp>
#include <cmath>
#include <random>

#include "solver/mixture_functions.h"
#include "solver/points_world.h"

namespace tavlo {
namespace {

RegressBlock block_of(const std::vector<test::TimeAndRank>& points) {
  RegressBlock block;
  const int rows = static_cast<int>(points.size());
  block.N = block.Rows = rows;
  block.Weight = Slots<std::int32_t>(rows, 1);
  block.T = block.LnT = block.F = block.Y = Slots<double>(rows);
  for (int i = 1; i <= rows; ++i) {
    block.T(i) = points[static_cast<std::size_t>(i - 1)].time;
    block.F(i) = points[static_cast<std::size_t>(i - 1)].rank;
  }
  return block;
}

/// Sums about the means of x = ln(t - t0) and y, in long double.
struct Moments {
  long double xx = 0, yy = 0, xy = 0, mean_x = 0, mean_y = 0;

  Moments(const RegressBlock& block, long double t0) {
    std::vector<long double> x, y;
    for (int i = 1; i <= block.Rows; ++i) {
      x.push_back(std::log(block.T(i) - t0));
      y.push_back(std::log(-std::log1p(-static_cast<long double>(block.F(i)))));
      mean_x += x.back() / block.Rows;
      mean_y += y.back() / block.Rows;
    }
    for (std::size_t i = 0; i < x.size(); ++i) {
      xx += (x[i] - mean_x) * (x[i] - mean_x);
      yy += (y[i] - mean_y) * (y[i] - mean_y);
      xy += (x[i] - mean_x) * (y[i] - mean_y);
    }
  }

  long double r_squared() const { return xy * xy / (xx * yy); }
};

struct Optimum {
  double t0 = 0;
  double r_squared = 0;
  bool is_inside = true;
};

/// The best r squared over t0: a fine grid of ln(T(1) - t0), then Brent's method.
Optimum global_optimum(const RegressBlock& block) {
  const double first = block.T(1);
  const auto loss = [&](double s) {
    return 1 - Moments(block, first - std::exp(static_cast<long double>(s))).r_squared();
  };
  constexpr int cells = 150;
  const double low = std::log(first) - 18, width = 36.0 / cells;
  int best = 0;
  for (int i = 1; i <= cells; ++i)
    if (loss(low + i * width) < loss(low + best * width)) best = i;
  const double at = low + best * width;
  const auto [s, value] = boost::math::tools::brent_find_minima(loss, at - width, at + width, 40);
  return {first - std::exp(s), static_cast<double>(1 - value), best > 0 && best < cells};
}

std::vector<test::TimeAndRank> weibull_sample(std::mt19937_64& random, int n, double beta,
                                              double t0) {
  std::weibull_distribution<double> life(beta, 1000);
  std::vector<double> times;
  for (int i = 0; i < n; ++i) times.push_back(t0 + life(random));
  std::sort(times.begin(), times.end());
  return test::ranked_times(times);
}

// A slope below 1 has its best t0 close to the first time, a large t0 leaves few
// digits for the differences of the times, and 0 may send t0 far below it.
TEST(MinimumLife, FindsTheGlobalOptimumOfTheCorrelation) {
  std::mt19937_64 random(41);
  int inside = 0;
  for (const int n : {21, 50, 200})
    for (const double beta : {0.8, 1.2, 2.0, 3.5})
      for (const double t0 : {0.0, 300.0, 5e4})
        for (int round = 0; round < 5; ++round) {
          test::PointsWorld world;
          RegressBlock block = block_of(weibull_sample(random, n, beta, t0));
          const Optimum best = global_optimum(block);
          if (!best.is_inside) continue;
          ++inside;
          T0Trial trial{};
          Findto(world.solver, block, trial, 1 + round % 2);
          EXPECT_NEAR(trial[t0_trial::r_squared], best.r_squared, 1e-12)
              << "n " << n << ", beta " << beta << ", t0 " << t0;
          EXPECT_EQ(world.solver.params.Extra, trial[t0_trial::t0]);
        }
  EXPECT_GT(inside, 160);
}

TEST(MinimumLife, BothLinesHaveTheirClosedFormsAtTheSameT0) {
  std::mt19937_64 random(8);
  const auto points = weibull_sample(random, 50, 2, 300);
  T0Trial horizontal{}, vertical{};
  test::PointsWorld world;
  RegressBlock block = block_of(points);
  Findto(world.solver, block, horizontal, t0_kind::x_on_y);
  Findto(world.solver, block, vertical, t0_kind::y_on_x);
  EXPECT_NEAR(horizontal[t0_trial::t0], vertical[t0_trial::t0], 1e-4);
  const Moments h(block, horizontal[t0_trial::t0]);
  const long double beta_h = h.yy / h.xy;
  EXPECT_NEAR(horizontal[t0_trial::slope], static_cast<double>(beta_h), 1e-11);
  EXPECT_NEAR(std::log(horizontal[t0_trial::life]),
              static_cast<double>(h.mean_x - h.mean_y / beta_h), 1e-12);
  const Moments v(block, vertical[t0_trial::t0]);
  const long double beta_v = v.xy / v.xx;
  EXPECT_NEAR(vertical[t0_trial::slope], static_cast<double>(beta_v), 1e-11);
  EXPECT_NEAR(std::log(vertical[t0_trial::life]), static_cast<double>(v.mean_x - v.mean_y / beta_v),
              1e-12);
}

/// Sum of squares about the line of the kind with its slope and life held.
double sum_of_squares(const RegressBlock& block, const T0Trial& line, double t0, int kind) {
  double sum = 0;
  for (int i = 1; i <= block.Rows; ++i) {
    const double x = std::log(block.T(i) - t0), ln_eta = std::log(line[t0_trial::life]);
    const double off = kind == t0_kind::y_on_x ? block.Y(i) - line[t0_trial::slope] * (x - ln_eta)
                                               : x - ln_eta - block.Y(i) / line[t0_trial::slope];
    sum += off * off;
  }
  return sum;
}

TEST(MinimumLife, TheDerivativeIsThatOfTheSumOfSquares) {
  std::mt19937_64 random(5);
  test::PointsWorld world;
  RegressBlock block = block_of(weibull_sample(random, 40, 1.7, 100));
  for (const int kind : {t0_kind::x_on_y, t0_kind::y_on_x})
    for (const double t0 : {-2000.0, -50.0, 0.0, 60.0, 0.99 * block.T(1)}) {
      T0Trial trial{};
      trial[t0_trial::t0] = t0;
      RegressT0(world.solver, block, trial, kind);
      const double h = 1e-4 * (block.T(1) - t0);
      const double difference = (sum_of_squares(block, trial, t0 + h, kind) -
                                 sum_of_squares(block, trial, t0 - h, kind)) /
                                (2 * h);
      EXPECT_NEAR(trial[t0_trial::derivative], difference, 1e-5 * std::fabs(difference));
      T0Trial sums_only = trial;
      RegressT0(world.solver, block, sums_only, t0_kind::keep_y_sums);
      EXPECT_EQ(sums_only, trial);
    }
}

TEST(MinimumLife, RowsWithoutARankAreSuspensions) {
  std::mt19937_64 random(6);
  auto points = weibull_sample(random, 10, 2, 0);
  test::PointsWorld world;
  RegressBlock plain = block_of(points);
  points.push_back({2000, 10.1});
  points.push_back({2100, 1});
  RegressBlock censored = block_of(points);
  T0Trial with{}, without{};
  RegressT0(world.solver, plain, without, t0_kind::y_on_x);
  RegressT0(world.solver, censored, with, t0_kind::y_on_x);
  for (std::size_t slot = 0; slot < with.size(); ++slot)
    EXPECT_NEAR(with[slot], without[slot], 1e-12 * std::fabs(without[slot]));
  EXPECT_EQ(censored.N, 10);
  EXPECT_EQ(censored.S, 2);
  EXPECT_EQ(censored.F(11), 11);
  EXPECT_EQ(censored.F(12), 2);
}

TEST(MinimumLife, TellsThatTheBestOneIsTheFirstTime) {
  test::PointsWorld world;
  // Two clusters of ranks, the upper one wide in time: the later t0, the better.
  RegressBlock rising = block_of({{100, 0.05}, {100, 0.1}, {100, 0.12}, {1e3, 0.9}, {1e6, 0.901}});
  T0Trial trial{};
  Findto(world.solver, rising, trial, t0_kind::y_on_x);
  EXPECT_EQ(trial[t0_trial::r_squared], t0_failure::at_first_time);
  EXPECT_EQ(trial[t0_trial::t0], 100);
}

TEST(MinimumLife, ASearchThatRunsFarBelowLeavesAUsableLine) {
  std::mt19937_64 random(3);
  int without_bracket = 0;
  for (int round = 0; round < 2000; ++round) {
    test::PointsWorld world;
    RegressBlock block = block_of(weibull_sample(random, 8, 0.8, 0));
    T0Trial trial{};
    Findto(world.solver, block, trial, t0_kind::y_on_x);
    EXPECT_GT(trial[t0_trial::life], 0);
    EXPECT_LT(trial[t0_trial::t0], block.T(1));
    EXPECT_LE(world.event_loop.turns, 302);
    if (trial[t0_trial::r_squared] > 0) continue;
    ++without_bracket;
    EXPECT_EQ(trial[t0_trial::r_squared], t0_failure::no_bracket);
    EXPECT_LT(trial[t0_trial::t0], -1e5);
  }
  EXPECT_GT(without_bracket, 0);
}

TEST(MinimumLife, HostileDataEndInBoxesAtMost) {
  std::vector<std::vector<test::TimeAndRank>> sets = {{}, {{5, 0.5}}};
  sets.push_back(test::ranked_times(std::vector<double>(20, 7.0)));
  sets.push_back(test::ranked_times({1e-300, 2e-300, 4e-300, 5e-300, 9e-300}));
  sets.push_back(test::ranked_times({1e300, 2e300, 4e300, 5e300, 9e300}));
  sets.push_back(test::ranked_times({1, 2, 3, 4, 1e12}));
  sets.push_back(test::ranked_times({9, 7, 5, 3, 1}));
  sets.push_back({{1, 0}, {2, 0.2}, {3, 0.5}, {4, 0.8}});
  for (const auto& points : sets)
    for (const int kind : {t0_kind::x_on_y, t0_kind::y_on_x}) {
      test::PointsWorld world;
      world.prompts.accept_all();
      RegressBlock block = block_of(points);
      T0Trial trial{};
      Findto(world.solver, block, trial, kind);
      for (const double value : trial) EXPECT_TRUE(std::isfinite(value));
      world.solver.quiet = true;
      const std::size_t boxes = world.prompts.shown().size();
      Findto(world.solver, block, trial, kind);
      EXPECT_EQ(world.prompts.shown().size(), boxes);
      EXPECT_LE(boxes, 3u);
    }
}

TEST(MinimumLife, AnAbortEndsTheSearch) {
  std::mt19937_64 random(6);
  test::PointsWorld world;
  RegressBlock block = block_of(weibull_sample(random, 30, 2, 500));
  world.state.abort_flag = 2;
  T0Trial trial{};
  Findto(world.solver, block, trial, t0_kind::y_on_x);
  EXPECT_LE(world.event_loop.turns, 1);
}

TEST(BoxEstValue, StaysInsideTheBracketAndOffItsEnds) {
  std::mt19937_64 random(2);
  std::uniform_real_distribution<double> any(-1000, 1000);
  for (int round = 0; round < 20000; ++round) {
    const double a = any(random), b = any(random), va = any(random), vb = any(random);
    const double target = any(random), low = std::min(va, vb), high = std::max(va, vb);
    const int count = round % 25;
    const double t0 = BoxEstValue(a, va, b, vb, target, count);
    EXPECT_EQ(t0, BoxEstValue(b, vb, a, va, target, count));  // the order doesn't matter
    if (target < low || target > high) {
      EXPECT_NEAR(va + (vb - va) / (b - a) * (t0 - a), target, 1e-6 * std::fabs(va - target));
      continue;
    }
    const bool early_or_late = count < 6 || count > 15;
    const double edge = 0.95 * (early_or_late ? 0.15 : 0.05);
    const double f = (t0 - a) / (b - a);
    EXPECT_TRUE(f >= edge - 1e-9 && f <= 1 - edge + 1e-9) << f;
    const double linear = (target - va) / (vb - va);
    const double inner = early_or_late ? 0.2 : 0.1;
    if (linear < inner || linear > 1 - inner) continue;
    EXPECT_NEAR(f, linear, 1e-9);
  }
}

TEST(BoxEstValue, TakesTheMiddleWithoutALine) {
  EXPECT_EQ(BoxEstValue(10, 3, 20, 3, 0, 0), 15);
  EXPECT_EQ(BoxEstValue(10, -1, 10, 1, 0, 0), 10);
  EXPECT_EQ(BoxEstValue(-1e308, 0, 1e308, 1e-308, 1, 0), 0);
  EXPECT_DOUBLE_EQ(BoxEstValue(0, 0, 1, 1, 0.82, 3), 1 - 0.95 * 0.18);
  EXPECT_DOUBLE_EQ(BoxEstValue(0, 0, 1, 1, 0.07, 9), 0.95 * 0.07);
}

}  // namespace
}  // namespace tavlo
