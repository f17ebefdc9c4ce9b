// PointsWorld: a solver in a world of its own, with points loaded as (time, median
// rank), and samples that lie exactly on a mixture's curve.
#pragma once

#include <cmath>
#include <utility>
#include <vector>

#include "solver/solver.h"
#include "support/test_world.h"

namespace tavlo::test {

struct TimeAndRank {
  double time = 0;
  double rank = 0;
};

struct PointsWorld {
  ScriptedPrompts prompts;
  QuietEventLoop event_loop;
  TestClock clock;
  ErrorReporter errors{prompts, clock};
  SolverState state;
  Solver solver{state, errors, prompts, event_loop, clock};

  void load(const std::vector<TimeAndRank>& points, int K, int method) {
    const int rows = static_cast<int>(points.size());
    state.data = SolverData{};
    state.data.Xs = state.data.Ys = state.data.Xhat = Slots<double>(rows, 1.0);
    for (int i = 1; i <= rows; ++i) {
      state.data.Xs(i) = points[static_cast<std::size_t>(i - 1)].time;
      state.data.Ys(i) = points[static_cast<std::size_t>(i - 1)].rank;
    }
    state.data.M = state.data.N = rows;
    state.data.K = K;
    state.data.Method = method;
  }
};

/// Benard's median rank.
inline double median_rank(int i, int n) { return (i - 0.3) / (n + 0.4); }

/// The times in order with their median ranks.
inline std::vector<TimeAndRank> ranked_times(const std::vector<double>& times) {
  std::vector<TimeAndRank> points;
  const int n = static_cast<int>(times.size());
  for (int i = 1; i <= n; ++i)
    points.push_back({times[static_cast<std::size_t>(i - 1)], median_rank(i, n)});
  return points;
}

/// Cumulative hazards of populations (beta, eta), the third carried by the share p.
struct PreciseMixture {
  double beta_a, eta_a;
  double beta_b = 0, eta_b = 0;
  double beta_c = 0, eta_c = 0, p = 0;

  double reliability(double t) const {
    const auto survival = [t](double beta, double eta) {
      return eta > 0 ? std::exp(-std::pow(t / eta, beta)) : 1.0;
    };
    return survival(beta_a, eta_a) * survival(beta_b, eta_b) *
           (p * survival(beta_c, eta_c) + 1 - p);
  }

  /// Points exactly on the curve.
  std::vector<TimeAndRank> sample(int n) const {
    std::vector<double> times;
    for (int i = 1; i <= n; ++i) {
      double low = -50, high = 50;
      for (int halving = 0; halving < 60; ++halving) {
        const double middle = (low + high) / 2;
        (reliability(std::exp(middle)) > 1 - median_rank(i, n) ? low : high) = middle;
      }
      times.push_back(std::exp(low));
    }
    return ranked_times(times);
  }
};

}  // namespace tavlo::test
