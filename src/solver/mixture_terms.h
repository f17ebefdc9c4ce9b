// Mixture terms: the pieces of which ordinates, densities and their derivatives
// are made, at a log time x. Written once for Real and Pack.
//
// A, B, C are the cumulative hazards (t / eta)^beta of the populations; s is the
// risk of A (and B) that acts on every unit, and survivors of population C leave
// the factor T = p exp(-C) + 1 - p, so that R = T exp(-s).
#pragma once

#include "numerics/pack_math.h"
#include "solver/solver.h"

namespace tavlo {

/// The largest exponent of a hazard, and exp of it.
inline constexpr double exponent_limit = 200;
inline constexpr double hazard_limit = 7.225973768125749e86;

/// -ln of the reliabilities 0.99999999999 and 1e-11, within which the ordinate of
/// a model with population C is held.
inline constexpr double smallest_risk = 1.000000082745371e-11;
inline constexpr double largest_risk = 25.328436022934504;

/// Stands for a reliability that has vanished.
inline constexpr double tiny_reliability = 1e-18;
inline constexpr double minus_ln_tiny_reliability = 41.44653167389282;
/// The sum of hazards from which exp of its negative is 0.
inline constexpr double vanishing_risk = 745.1332191019412;

template <class T>
T bounded(double low, T value, double high) {
  return least(greatest(value, low), high);
}

inline Real hazard(Real exponent) { return exp(least(exponent, exponent_limit)); }

/// The same, but for the digits of hazards below 1e-304.
inline Pack hazard(Pack exponent) {
  return select(exponent < Pack(-vanishing_risk), 0.0, exp_within(-700, exponent, exponent_limit));
}

/// Hazards of the populations that a model of K parameters has; 0 for the others.
template <class T>
struct Hazards {
  T A = 0.0, B = 0.0, C = 0.0;
};

/// Log distances to the characteristic lives: a, b, c.
template <class T>
struct Distances {
  T a = 0.0, b = 0.0, c = 0.0;
};

constexpr bool has_b(int K) { return K == 4 || K == 7; }
constexpr bool has_c(int K) { return K == 5 || K == 7; }

template <int K, class T>
Distances<T> distances(const SolverParams& q, T x) {
  Distances<T> d;
  d.a = x - q.LnEtaA;
  if constexpr (has_b(K)) d.b = x - q.LnEtaB;
  if constexpr (has_c(K)) d.c = x - q.LnEtaC;
  return d;
}

template <int K, class T>
Hazards<T> hazards(const SolverParams& q, const Distances<T>& d) {
  Hazards<T> h;
  h.A = hazard(d.a * q.BetaA);
  if constexpr (has_b(K)) h.B = hazard(d.b * q.BetaB);
  if constexpr (has_c(K)) h.C = hazard(d.c * q.BetaC);
  return h;
}

/// A (+ B).
template <int K, class T>
T common_risk(const Hazards<T>& h) {
  if constexpr (has_b(K)) return h.A + h.B;
  return h.A;
}

/// dA/dx (+ dB/dx).
template <int K, class T>
T common_rate(const SolverParams& q, const Hazards<T>& h) {
  if constexpr (has_b(K)) return h.A * q.BetaA + h.B * q.BetaB;
  return h.A * q.BetaA;
}

/// ln T = ln(p exp(-C) + 1 - p), exact also where C is tiny.
template <class T>
T log_share_left(const SolverParams& q, T C) {
  return log1p(expm1(-C) * q.Extra);
}

/// beta / eta, the factor between the derivatives by eta and by -x.
template <class T>
T slope_by_life(double beta, double eta) {
  return T(beta) / T(eta);
}

/// -ln R of the models with population C, not held in bounds.
template <int K, class T>
T total_risk(const SolverParams& q, const Hazards<T>& h) {
  return common_risk<K>(h) - log_share_left(q, h.C);
}

}  // namespace tavlo
