#include "numerics/pack_math.h"
#include "solver/jacobian_rows.h"
#include "solver/jacobians.h"
#include "solver/mixture_terms.h"

namespace tavlo {
namespace {

/// exp of an exponent, and the same held at the limit of hazards.
template <class T>
struct TwoHazards {
  T free;
  T held;

  explicit TwoHazards(T exponent) : free(exp(exponent)), held(least(free, hazard_limit)) {}
};

template <class T>
T or_tiny(T reliability) {
  return select(reliability > T(0.0), reliability, T(tiny_reliability));
}

/// Derivatives of the log time at which the model reaches an ordinate. K = 5 and 7
/// take those of an exclusive mixture, R = p exp(-C) + (1 - p) exp(-A - B), which is
/// not the model of the residual: an approximation, kept on purpose. It gives the
/// direction; the residual stays exact.
template <int K>
struct LogTimeDerivatives {
  SolverParams q;
  ColumnFactors<K> factors = chain_factors<K>(q);

  template <class T>
  Derivatives<K, T> operator()(T x) const {
    const Distances<T> d = distances<K>(q, x);
    const TwoHazards<T> A(d.a * q.BetaA);
    if constexpr (K == 4) {
      const TwoHazards<T> B(d.b * q.BetaB);
      const T H = 1.0 / (A.held * q.BetaA + B.held * q.BetaB);
      const T E = A.free * H;
      const T E2 = B.free * H;
      return {-E * d.a * factors[0], E * slope_by_life<T>(q.BetaA, q.EtaA) * factors[1],
              -E2 * d.b * factors[2], E2 * slope_by_life<T>(q.BetaB, q.EtaB) * factors[3]};
    } else {
      return exclusive_mixture(d, A);
    }
  }

 private:
  template <class T>
  Derivatives<K, T> exclusive_mixture(const Distances<T>& d, const TwoHazards<T>& A) const {
    const double p = q.Extra;
    const TwoHazards<T> C(d.c * q.BetaC);
    const T R3 = or_tiny(exp(-C.held));
    const T dR3 = -R3 * C.free * q.BetaC;
    if constexpr (K == 5) {
      const T R12 = or_tiny(exp(-A.held));
      const T H = -1.0 / (dR3 * p - R12 * A.held * q.BetaA * (1 - p));
      const T E = R12 * A.free * H * (1 - p);
      const T E3 = R3 * C.free * H * p;
      return {-E * d.a * factors[0], E * slope_by_life<T>(q.BetaA, q.EtaA) * factors[1],
              -E3 * d.c * factors[2], E3 * slope_by_life<T>(q.BetaC, q.EtaC) * factors[3],
              (R3 - R12) * H * factors[4]};
    } else {
      const TwoHazards<T> B(d.b * q.BetaB);
      const T R12 = or_tiny(exp(-A.held - B.held));
      const T V = A.held * q.BetaA + B.held * q.BetaB;
      const T H = -1.0 / (dR3 * p - R12 * V * (1 - p));
      const T E = R12 * A.free * H * (1 - p);
      const T E2 = R12 * B.free * H * (1 - p);
      const T E3 = R3 * C.free * H * p;
      return {-E * d.a * factors[0],      E * slope_by_life<T>(q.BetaA, q.EtaA) * factors[1],
              -E2 * d.b * factors[2],     E2 * slope_by_life<T>(q.BetaB, q.EtaB) * factors[3],
              -E3 * d.c * factors[4],     E3 * slope_by_life<T>(q.BetaC, q.EtaC) * factors[5],
              (R3 - R12) * H * factors[6]};
    }
  }
};

template <>
struct LogTimeDerivatives<2> {
  SolverParams q;
  ColumnFactors<2> factors = chain_factors<2>(q);

  template <class T>
  Derivatives<2, T> operator()(T x) const {
    return {-(x - q.LnEtaA) / T(q.BetaA) * factors[0], 1.0 / T(q.EtaA) * factors[1]};
  }
};

/// Of ln(t - t0), at the estimated time. The column of t0 leaves out that the point's
/// own ln(t - t0) moves as well: kept on purpose.
template <>
struct LogTimeDerivatives<3> {
  SolverParams q;
  ColumnFactors<3> factors = chain_factors<3>(q);

  template <class T>
  Derivatives<3, T> operator()(T x) const {
    const T u = exp(x) - q.Extra;
    return {-(ln(u) - q.LnEtaA) / T(q.BetaA) * factors[0], 1.0 / T(q.EtaA) * factors[1],
            1.0 / u * factors[2]};
  }
};

template <int K>
void differentiate(Solver& solver, int n, JacobianMatrix& fjac) {
  differentiate_rows<K>(solver, "in Jacobian (X on Y) routine", n, solver.data.Xhat,
                        LogTimeDerivatives<K>{solver.params}, fjac);
}

}  // namespace

void JacXonY(Solver& solver, int n, int K, JacobianMatrix& fjac) {
  switch (K) {
    case 2: return differentiate<2>(solver, n, fjac);
    case 3: return differentiate<3>(solver, n, fjac);
    case 4: return differentiate<4>(solver, n, fjac);
    case 5: return differentiate<5>(solver, n, fjac);
    case 7: return differentiate<7>(solver, n, fjac);
    default: return;
  }
}

}  // namespace tavlo
