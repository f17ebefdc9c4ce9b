// ResidualWorld: a solver with points and parameters set by hand, and the models'
// formulas as they stand in books, in long double.
#pragma once

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "solver/residuals.h"
#include "solver/solver.h"
#include "support/test_world.h"

namespace tavlo::test {

inline const std::vector<int> all_models{2, 3, 4, 5, 7};

struct ResidualWorld {
  TestWorld world;
  Solver solver{world.session.solver, world.session.errors, world.prompts, world.event_loop,
                world.clock};
  ParameterVector X{};
  std::vector<double> fvec;
  JacobianMatrix fjac;

  SolverParams& q() { return solver.params; }
  SolverData& data() { return solver.data; }

  void set_model(int K, int method, int trans_mode = 1) {
    data().K = K;
    data().Method = method;
    data().TransMode = trans_mode;
  }

  /// Log times and ordinates, in rows from 1; a suspension has an ordinate of 10.1.
  void set_points(const std::vector<double>& log_times, const std::vector<double>& ordinates) {
    const int M = static_cast<int>(log_times.size());
    data().Xs = data().Ys = data().Xhat = Slots<double>(M);
    std::copy(log_times.begin(), log_times.end(), data().Xs.begin() + 1);
    std::copy(ordinates.begin(), ordinates.end(), data().Ys.begin() + 1);
    data().N = data().M = M;
    fvec.assign(static_cast<std::size_t>(M) + 1, 0.0);
    fjac = JacobianMatrix(M, 7);
  }

  /// n failures from about 20 to 3000 with Benard's median ranks.
  void set_random_points(int n, std::mt19937_64& random) {
    std::uniform_real_distribution<double> log_time(3.0, 8.0);
    std::vector<double> times, ordinates;
    for (int i = 0; i < n; ++i) times.push_back(log_time(random));
    std::sort(times.begin(), times.end());
    for (int i = 1; i <= n; ++i)
      ordinates.push_back(std::log(-std::log(1 - (i - 0.3) / (n + 0.4))));
    set_points(times, ordinates);
  }

  void suspend_every_third_row() {
    for (int i = 3; i <= data().M; i += 3) data().Ys(i) = SolverData::suspension_mark;
  }

  /// Parameters of the model at random, as X (or logarithms under TransMode 2).
  void set_random_parameters(std::mt19937_64& random) {
    const auto between = [&](double low, double high) {
      return std::uniform_real_distribution<double>(low, high)(random);
    };
    const int K = data().K;
    X = {0, between(0.6, 4), std::exp(between(4, 7.5))};
    // Below a minimum life under 0, X on Y finds no time for a low ordinate.
    if (K == 3) X[3] = between(data().Method == solver_method::x_on_y ? 0 : -30, 15);
    for (const int slot : {3, 5})
      if (slot < K && K > 3) set_population(slot, between(0.6, 4), std::exp(between(4, 7.5)));
    if (K == 5 || K == 7) X[static_cast<std::size_t>(K)] = between(0.1, 0.9);
    if (data().TransMode != 2) return;
    for (int i = 1; i <= K; ++i)
      if (K != 3 || i != 3)
        X[static_cast<std::size_t>(i)] = std::log(X[static_cast<std::size_t>(i)]);
  }

  void set_population(int slot, double beta, double eta) {
    X[static_cast<std::size_t>(slot)] = beta;
    X[static_cast<std::size_t>(slot) + 1] = eta;
  }

  /// The residual function as the minimiser calls it; the quality.
  double evaluate(int n, int iflag = residual_request::residuals) {
    ResidualFn(solver, n, data().K, X, fvec, fjac, iflag);
    return X[0];
  }
};

/// A model at a log time, from its definition.
struct BookModel {
  SolverParams q;
  int K;

  using Number = long double;
  static Number hazard(Number x, double beta, double eta) {
    return std::exp(beta * (x - std::log(Number(eta))));
  }
  Number log_time(Number x) const { return K == 3 ? std::log(std::exp(x) - q.Extra) : x; }
  Number A(Number x) const { return hazard(log_time(x), q.BetaA, q.EtaA); }
  Number B(Number x) const { return K == 4 || K == 7 ? hazard(x, q.BetaB, q.EtaB) : 0; }
  Number C(Number x) const { return K == 5 || K == 7 ? hazard(x, q.BetaC, q.EtaC) : 0; }
  Number share() const { return K == 5 || K == 7 ? q.Extra : 0; }

  /// -ln R, also where R is next to 1.
  Number risk(Number x) const { return A(x) + B(x) - std::log1p(share() * std::expm1(-C(x))); }
  Number ordinate(Number x) const { return std::log(risk(x)); }
  Number log_density(Number x) const {
    const Number p = share(), t = std::exp(log_time(x));
    const Number rate = A(x) * q.BetaA + B(x) * q.BetaB;
    return std::log(p * std::exp(-C(x) - A(x) - B(x)) * (C(x) * q.BetaC + rate) / t +
                    (1 - p) * std::exp(-A(x) - B(x)) * rate / t);
  }

  /// The log time at which the model reaches an ordinate, by halving.
  Number time_of(Number target) const {
    Number low = K == 3 && q.Extra > 0 ? std::log(Number(q.Extra)) : -300, high = 300;
    for (int i = 0; i < 75; ++i) {
      const Number middle = (low + high) / 2;
      (ordinate(middle) < target ? low : high) = middle;
    }
    return (low + high) / 2;
  }
};

}  // namespace tavlo::test
