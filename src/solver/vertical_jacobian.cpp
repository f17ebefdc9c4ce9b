#include "numerics/pack_math.h"
#include "solver/jacobian_rows.h"
#include "solver/jacobians.h"
#include "solver/mixture_terms.h"

namespace tavlo {
namespace {

/// Derivatives of the ordinate of Y on X by the slots of X.
template <int K>
struct OrdinateDerivatives {
  SolverParams q;
  ColumnFactors<K> factors = chain_factors<K>(q);

  template <class T>
  Derivatives<K, T> operator()(T x) const {
    const Distances<T> d = distances<K>(q, x);
    const Hazards<T> h = hazards<K>(q, d);
    if constexpr (K == 4) {
      const T A = h.A / (h.A + h.B);
      const T B = h.B / (h.A + h.B);
      return {A * d.a * factors[0], -A * slope_by_life<T>(q.BetaA, q.EtaA) * factors[1],
              B * d.b * factors[2], -B * slope_by_life<T>(q.BetaB, q.EtaB) * factors[3]};
    } else {
      return with_population_c(d, h);
    }
  }

  // The ordinate is ln H with H = s - ln T = -ln R held in bounds. Beyond the upper
  // bound the weights of the two kinds of units fade as their reliabilities do,
  // although the ordinate stays: kept, it leads the search back.
  template <class T>
  Derivatives<K, T> with_population_c(const Distances<T>& d, const Hazards<T>& h) const {
    const T still = expm1(-h.C);  // exp(-C) - 1
    const T share = still * q.Extra;
    const T free_risk = common_risk<K>(h) - log1p(share);
    const T by_H = 1.0 / bounded(smallest_risk, free_risk, largest_risk);
    T by_HR = by_H / (share + 1.0);  // (reliability without population C) / (R H)
    if (any(free_risk > T(largest_risk)))
      by_HR = by_HR * exp(least(T(0.0), largest_risk - free_risk));
    const T A = h.A * by_H;
    const T C = h.C * (still + 1.0) * q.Extra * by_HR;
    const T by_share = -(still * by_HR);
    if constexpr (K == 5) {
      return {A * d.a * factors[0], -A * slope_by_life<T>(q.BetaA, q.EtaA) * factors[1],
              C * d.c * factors[2], -C * slope_by_life<T>(q.BetaC, q.EtaC) * factors[3],
              by_share * factors[4]};
    } else {
      const T B = h.B * by_H;
      return {A * d.a * factors[0], -A * slope_by_life<T>(q.BetaA, q.EtaA) * factors[1],
              B * d.b * factors[2], -B * slope_by_life<T>(q.BetaB, q.EtaB) * factors[3],
              C * d.c * factors[4], -C * slope_by_life<T>(q.BetaC, q.EtaC) * factors[5],
              by_share * factors[6]};
    }
  }
};

template <>
struct OrdinateDerivatives<2> {
  SolverParams q;
  ColumnFactors<2> factors = chain_factors<2>(q);

  template <class T>
  Derivatives<2, T> operator()(T x) const {
    return {(x - q.LnEtaA) * factors[0], -slope_by_life<T>(q.BetaA, q.EtaA) * factors[1]};
  }
};

template <>
struct OrdinateDerivatives<3> {
  SolverParams q;
  ColumnFactors<3> factors = chain_factors<3>(q);

  template <class T>
  Derivatives<3, T> operator()(T x) const {
    const T u = exp(x) - q.Extra;
    return {(ln(u) - q.LnEtaA) * factors[0], -slope_by_life<T>(q.BetaA, q.EtaA) * factors[1],
            T(-q.BetaA) / u * factors[2]};
  }
};

template <int K>
void differentiate(Solver& solver, int n, JacobianMatrix& fjac) {
  differentiate_rows<K>(solver, "in Jacobian (Y on X) routine", n, solver.data.Xs,
                        OrdinateDerivatives<K>{solver.params}, fjac);
}

}  // namespace

void JacYonX(Solver& solver, int n, int K, JacobianMatrix& fjac) {
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
