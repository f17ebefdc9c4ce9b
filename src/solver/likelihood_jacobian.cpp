#include "numerics/pack_math.h"
#include "solver/jacobian_rows.h"
#include "solver/jacobians.h"
#include "solver/likelihood_rows.h"
#include "solver/mixture_terms.h"

namespace tavlo {
namespace {

constexpr const char* where = "in Jacobian (MLE) routine";

/// Derivatives of -sqrt(-g) by the slots of X, g the log density of a failure.
/// There are no chain factors: a likelihood moves the parameters themselves.
template <int K>
struct FailureDerivatives {
  SolverParams q;

  template <class T>
  Derivatives<K, T> operator()(T x) const {
    const Distances<T> d = distances<K>(q, x);
    const Hazards<T> h = hazards<K>(q, d);
    const T V = common_rate<K>(q, h);
    if constexpr (K == 4) {
      const T W = 0.5 / (V * sqrt(h.A + h.B - ln(V) + x));
      return {
          by_slope(d.a, h.A, q.BetaA, V, T(1.0)) * W, by_life(h.A, q.BetaA, q.EtaA, V, T(1.0)) * W,
          by_slope(d.b, h.B, q.BetaB, V, T(1.0)) * W, by_life(h.B, q.BetaB, q.EtaB, V, T(1.0)) * W};
    } else {
      return with_population_c(x, d, h, V);
    }
  }

 private:
  // With D the density over the common survival, and `left` the share of units that
  // a term of it belongs to.
  template <class T>
  static T by_slope(T distance, T hazard, double beta, T D, T left) {
    return hazard * ((distance * beta + 1.0) * left - distance * D);
  }

  template <class T>
  static T by_life(T hazard, double beta, double eta, T D, T left) {
    return hazard * (D - left * beta) * slope_by_life<T>(beta, eta);
  }

  template <class T>
  Derivatives<K, T> with_population_c(T x, const Distances<T>& d, const Hazards<T>& h, T V) const {
    const T Rc = exp_within(-700, -h.C, 0);
    const T carrying = Rc * q.Extra;
    const T Z = h.C * q.BetaC + V;
    const T D = carrying * Z + V * (1 - q.Extra);
    const T left = carrying + (1 - q.Extra);
    const T W = 0.5 / (sqrt(common_risk<K>(h) - ln(D) + x) * D);
    const T a1 = by_slope(d.a, h.A, q.BetaA, D, left) * W;
    const T a2 = by_life(h.A, q.BetaA, q.EtaA, D, left) * W;
    const T c1 = by_slope(d.c, h.C, q.BetaC, Z, T(1.0)) * carrying * W;
    const T c2 = by_life(h.C, q.BetaC, q.EtaC, Z, T(1.0)) * carrying * W;
    const T by_share = (Rc * Z - V) * W;
    if constexpr (K == 5) {
      return {a1, a2, c1, c2, by_share};
    } else {
      const T b1 = by_slope(d.b, h.B, q.BetaB, D, left) * W;
      const T b2 = by_life(h.B, q.BetaB, q.EtaB, D, left) * W;
      return {a1, a2, b1, b2, c1, c2, by_share};
    }
  }
};

/// Derivatives of a two-parameter row at log time x.
template <class T>
Derivatives<2, T> two_parameter_failure(const SolverParams& q, double ln_beta, T x) {
  const T a = x - q.LnEtaA;
  const T A = hazard(a * q.BetaA);
  const T W = 0.5 / sqrt(A - a * q.BetaA - ln_beta + x);
  return {(a * (1.0 - A) + 1.0 / T(q.BetaA)) * W,
          (A - 1.0) * slope_by_life<T>(q.BetaA, q.EtaA) * W};
}

template <class T>
Derivatives<2, T> two_parameter_suspension(const SolverParams& q, T x) {
  const T a = x - q.LnEtaA;
  const T A = hazard(a * q.BetaA);
  const T W = 0.5 / sqrt(A);
  return {-A * a * W, A * slope_by_life<T>(q.BetaA, q.EtaA) * W};
}

template <>
struct FailureDerivatives<2> {
  SolverParams q;
  double ln_beta = log_slope(q.BetaA);

  template <class T>
  Derivatives<2, T> operator()(T x) const {
    return two_parameter_failure(q, ln_beta, x);
  }
};

/// K = 3 at u = t - t0, with `x` its logarithm, or what stands in for it.
template <>
struct FailureDerivatives<3> {
  SolverParams q;
  double ln_beta = log_slope(q.BetaA);

  template <class T>
  Derivatives<3, T> operator()(T time) const {
    const T u = exp(time) - q.Extra;
    return at(u, ln(u));
  }

  template <class T>
  Derivatives<3, T> at(T u, T x) const {
    const Derivatives<2, T> two = two_parameter_failure(q, ln_beta, x);
    const T A = hazard((x - q.LnEtaA) * q.BetaA);
    const T W = 0.5 / sqrt(A - (x - q.LnEtaA) * q.BetaA - ln_beta + x);
    return {two[0], two[1], (q.BetaA / u * (A - 1.0) + 1.0 / u) * W};
  }
};

/// The same for the log reliability of a suspension.
template <int K>
struct SuspensionDerivatives {
  SolverParams q;

  template <class T>
  Derivatives<K, T> operator()(T x) const {
    const Distances<T> d = distances<K>(q, x);
    const Hazards<T> h = hazards<K>(q, d);
    if constexpr (K == 4) {
      const T W = 0.5 / sqrt(h.A + h.B);
      return {-h.A * d.a * W, h.A * slope_by_life<T>(q.BetaA, q.EtaA) * W, -h.B * d.b * W,
              h.B * slope_by_life<T>(q.BetaB, q.EtaB) * W};
    } else {
      return with_population_c(d, h);
    }
  }

 private:
  template <class T>
  Derivatives<K, T> with_population_c(const Distances<T>& d, const Hazards<T>& h) const {
    const T still = expm1(-h.C);
    const T share = still * q.Extra;
    const T W = 0.5 / sqrt(common_risk<K>(h) - log1p(share));
    const T W2 = W / (share + 1.0);
    const T carrying = (still + 1.0) * q.Extra * h.C * W2;
    const T a1 = -h.A * d.a * W;
    const T a2 = h.A * slope_by_life<T>(q.BetaA, q.EtaA) * W;
    const T c1 = -carrying * d.c;
    const T c2 = carrying * slope_by_life<T>(q.BetaC, q.EtaC);
    if constexpr (K == 5) {
      return {a1, a2, c1, c2, still * W2};
    } else {
      const T b1 = -h.B * d.b * W;
      const T b2 = h.B * slope_by_life<T>(q.BetaB, q.EtaB) * W;
      return {a1, a2, b1, b2, c1, c2, still * W2};
    }
  }
};

template <>
struct SuspensionDerivatives<2> {
  SolverParams q;

  template <class T>
  Derivatives<2, T> operator()(T x) const {
    return two_parameter_suspension(q, x);
  }
};

template <>
struct SuspensionDerivatives<3> {
  SolverParams q;

  template <class T>
  Derivatives<3, T> operator()(T time) const {
    const T u = exp(time) - q.Extra;
    return at(u, ln(u));
  }

  template <class T>
  Derivatives<3, T> at(T u, T x) const {
    const Derivatives<2, T> two = two_parameter_suspension(q, x);
    return {two[0], two[1], two[1] * q.EtaA / u};
  }
};

/// One row in checked arithmetic. A row of K = 3 at or below the minimum life pulls
/// it down and goes on with t - t0 in place of its logarithm: a row without meaning,
/// kept since the next evaluation starts from the minimum life moved here.
template <int K, class Formula>
Derivatives<K, Real> checked_row(SolverParams& q, ParameterVector& X, JacobianMatrix& fjac, int i,
                                 Real x) {
  if constexpr (K == 3) {
    const Real u = exp(x) - q.Extra;
    if (u <= 0) {
      X[3] = q.Extra = (0.9999 * exp(x)).value();
      write_row<3>(fjac, i, {});
      return Formula{q}.at(u, u);
    }
  }
  return Formula{q}(x);
}

template <int K, class Formula>
bool differentiate_run(Solver& solver, const RowSelection& rows, ParameterVector& X,
                       JacobianMatrix& fjac) {
  SolverParams& q = solver.params;
  const bool tame = is_tame(q);
  return walk_blocks(solver, rows, solver.data.Xs, [&](const RowBlock& block) {
    const bool in_packs = tame && is_tame(block) && !(K == 3 && reaches_minimum_life(q, block));
    differentiate_block<K>(block, in_packs, Formula{q}, fjac, [&](int i, Real x) {
      return checked_row<K, Formula>(q, X, fjac, i, x);
    });
  });
}

template <int K>
void differentiate(Solver& solver, int n, ParameterVector& X, JacobianMatrix& fjac) {
  step(solver, where, [&] {
    for_each_kind(
        solver.data, RowSelection{1, n, 1},
        [&](const RowSelection& failures) {
          return differentiate_run<K, FailureDerivatives<K>>(solver, failures, X, fjac);
        },
        [&](const RowSelection& suspensions) {
          return differentiate_run<K, SuspensionDerivatives<K>>(solver, suspensions, X, fjac);
        });
  });
}

}  // namespace

void JacMle(Solver& solver, int n, int K, ParameterVector& X, JacobianMatrix& fjac) {
  switch (K) {
    case 2: return differentiate<2>(solver, n, X, fjac);
    case 3: return differentiate<3>(solver, n, X, fjac);
    case 4: return differentiate<4>(solver, n, X, fjac);
    case 5: return differentiate<5>(solver, n, X, fjac);
    case 7: return differentiate<7>(solver, n, X, fjac);
    default: return;
  }
}

}  // namespace tavlo
