#include <cmath>
#include <type_traits>

#include "numerics/pack_math.h"
#include "solver/likelihood_rows.h"
#include "solver/mixture_terms.h"
#include "solver/residuals.h"
#include "solver/rows.h"

namespace tavlo {
namespace {

constexpr const char* where = "in MLE Function routine";

/// Stands for the log density of a time below the minimum life, and for one that
/// is positive under K = 3.
constexpr double impossible_row = -300;

/// Natural logarithm of the density at the time exp(x), for a failure.
template <int K>
struct LogDensity {
  SolverParams q;

  template <class T>
  T operator()(T x) const {
    const Hazards<T> h = hazards<K>(q, distances<K>(q, x));
    const T risk = common_risk<K>(h);
    const T rate = common_rate<K>(q, h);
    // Where exp(-risk) vanishes the reliability of the units without population C
    // counts as 1e-18, that of the others as 0. Impossible rows look likely then;
    // the answers that lean on it are refused later.
    const auto vanished = risk > T(vanishing_risk);
    const T survival = select(vanished, T(-minus_ln_tiny_reliability), -risk);
    if constexpr (has_c(K)) {
      const T left = select(vanished, T(0.0), exp_within(-700, -h.C, 0)) * q.Extra;  // p exp(-C)
      return survival + ln(left * (h.C * q.BetaC + rate) + rate * (1 - q.Extra)) - x;
    } else {
      return survival + ln(rate) - x;
    }
  }
};

template <class T>
T two_parameter_log_density(const SolverParams& q, double ln_beta, T x) {
  const T exponent = (x - q.LnEtaA) * q.BetaA;
  return exponent - hazard(exponent) + ln_beta - x;
}

template <>
struct LogDensity<2> {
  SolverParams q;
  double ln_beta = log_slope(q.BetaA);

  template <class T>
  T operator()(T x) const {
    return two_parameter_log_density(q, ln_beta, x);
  }
};

template <>
struct LogDensity<3> {
  SolverParams q;
  double ln_beta = log_slope(q.BetaA);

  template <class T>
  T operator()(T x) const {
    return two_parameter_log_density(q, ln_beta, ln(exp(x) - q.Extra));
  }
};

/// Natural logarithm of the reliability at the time exp(x), for a suspension.
template <int K>
struct LogReliability {
  SolverParams q;

  template <class T>
  T operator()(T x) const {
    if constexpr (K == 3) x = ln(exp(x) - q.Extra);
    const Hazards<T> h = hazards<K>(q, distances<K>(q, x));
    if constexpr (has_c(K)) return -total_risk<K>(q, h);
    return -common_risk<K>(h);
  }
};

/// One evaluation of the residual over rows of one kind. A minimum life may move on
/// the way, so each block has a formula of its own.
template <int K, class Formula>
class LikelihoodPass {
 public:
  LikelihoodPass(Solver& solver, ParameterVector& X, double* fvec)
      : solver_(solver), X_(X), fvec_(fvec), tame_(is_tame(solver.params)) {}

  void operator()(const RowBlock& block) {
    RowBlock::Values g{};
    if (tame_ && is_tame(block) && !(K == 3 && reaches_minimum_life(solver_.params, block))) {
      block.evaluate(Formula{solver_.params}, g);
      if (block.is_sound(g)) return keep(block, g);
    }
    for (int k = 0; k < block.count; ++k)
      step(solver_, where, [&] { keep_row(block.row(k), value_at(block.x[RowBlock::at(k)])); });
  }

 private:
  /// A failure below the minimum life pulls that down; a unit that left the test
  /// before it has survived for certain.
  double value_at(double x) {
    SolverParams& q = solver_.params;
    if constexpr (std::is_same_v<Formula, LogReliability<3>>) {
      if (!(exp(Real(x)) > q.Extra)) return 0;
    } else if (K == 3 && pull_minimum_life_below(q, X_, x)) {
      return impossible_row;
    }
    return Formula{q}(Real(x)).value();
  }

  void keep(const RowBlock& block, RowBlock::Values& g) {
    double sum = 0;
    bool all_are_roots = true;
    for (int k = 0; k < block.count; ++k) {
      sum += g[RowBlock::at(k)];
      all_are_roots &= g[RowBlock::at(k)] <= 0;
    }
    if (!all_are_roots) return keep_row_by_row(block, g);
    solver_.params.SumSq += sum;
    for (int k = 0; k < block.count; ++k) fvec_[block.row(k)] = -std::sqrt(-g[RowBlock::at(k)]);
  }

  void keep_row_by_row(const RowBlock& block, const RowBlock::Values& g) {
    for (int k = 0; k < block.count; ++k)
      step(solver_, where, [&] { keep_row(block.row(k), g[RowBlock::at(k)]); });
  }

  // A positive g counts in the sum, but has no root: the row keeps what it held.
  void keep_row(int i, double g) {
    if (K == 3 && g > 0) g = impossible_row;
    SolverParams& q = solver_.params;
    q.SumSq = (Real(q.SumSq) + g).value();
    fvec_[i] = -sqrt(-Real(g)).value();
  }

  Solver& solver_;
  ParameterVector& X_;
  double* fvec_;
  bool tame_;
};

template <int K>
void likelihood_rows(Solver& solver, int n, ParameterVector& X, std::vector<double>& fvec) {
  step(solver, where, [&] {
    const RowSelection rows = rows_of(n);
    if (rows.last >= static_cast<int>(fvec.size())) throw RunTimeError(run_time::subscript);
    for_each_kind(
        solver.data, rows,
        [&](const RowSelection& failures) {
          return walk_blocks(solver, failures, solver.data.Xs,
                             LikelihoodPass<K, LogDensity<K>>(solver, X, fvec.data()));
        },
        [&](const RowSelection& suspensions) {
          return walk_blocks(solver, suspensions, solver.data.Xs,
                             LikelihoodPass<K, LogReliability<K>>(solver, X, fvec.data()));
        });
  });
}

}  // namespace

void MleFn(Solver& solver, int n, int K, ParameterVector& X, std::vector<double>& fvec) {
  switch (K) {
    case 2: return likelihood_rows<2>(solver, n, X, fvec);
    case 3: return likelihood_rows<3>(solver, n, X, fvec);
    case 4: return likelihood_rows<4>(solver, n, X, fvec);
    case 5: return likelihood_rows<5>(solver, n, X, fvec);
    case 7: return likelihood_rows<7>(solver, n, X, fvec);
    default: return;
  }
}

}  // namespace tavlo
