#include "solver/parameter_translation.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

#include "numerics/real.h"
#include "numerics/rounding.h"

namespace tavlo {
namespace {

constexpr const char* where = "in Translating Parameters routine";
constexpr double smallest_share = 0.001;
constexpr double largest_share = 0.999;

/// A slot of X: the parameter that it moves, and the logarithm kept beside a life.
struct Slot {
  double SolverParams::*parameter;
  double SolverParams::*logarithm;  ///< null for slopes and Extra
};

constexpr Slot beta_a{&SolverParams::BetaA, nullptr};
constexpr Slot eta_a{&SolverParams::EtaA, &SolverParams::LnEtaA};
constexpr Slot beta_b{&SolverParams::BetaB, nullptr};
constexpr Slot eta_b{&SolverParams::EtaB, &SolverParams::LnEtaB};
constexpr Slot beta_c{&SolverParams::BetaC, nullptr};
constexpr Slot eta_c{&SolverParams::EtaC, &SolverParams::LnEtaC};
constexpr Slot extra{&SolverParams::Extra, nullptr};

constexpr std::array slots3{beta_a, eta_a, extra};
constexpr std::array slots4{beta_a, eta_a, beta_b, eta_b};
constexpr std::array slots5{beta_a, eta_a, beta_c, eta_c, extra};
constexpr std::array slots7{beta_a, eta_a, beta_b, eta_b, beta_c, eta_c, extra};

/// The slots of X from 1 of the model with K parameters.
std::span<const Slot> slots_of(int K) {
  switch (K) {
    case 3: return slots3;
    case 4: return slots4;
    case 5: return slots5;
    case 7: return slots7;
    default: return std::span(slots3).first(2);
  }
}

bool has_population_b(int K) { return K == 4 || K == 7; }
bool has_population_c(int K) { return K == 5 || K == 7; }

/// A minimum life is moved as it is; it may be negative and has no logarithm.
bool is_minimum_life(int K, const Slot& slot) {
  return K == 3 && slot.parameter == &SolverParams::Extra;
}

/// Calls move(slot, its place in X) for each slot, each a step of its own.
template <class Move>
void for_each_slot(Solver& solver, int K, ParameterVector& X, Move&& move) {
  const std::span<const Slot> slots = slots_of(K);
  for (std::size_t i = 0; i < slots.size(); ++i)
    step(solver, where, [&] { move(slots[i], X[i + 1]); });
}

void raise_negatives(SolverParams& q) {
  for (double* value : {&q.BetaA, &q.EtaA, &q.BetaB, &q.EtaB, &q.BetaC, &q.EtaC})
    if (*value < 0) *value = 0;
}

void hold_share(Solver& solver) {
  double& p = solver.params.Extra;
  step(solver, where, [&] {
    while (p > 1) p = ln(Real(p)).value();
  });
  p = p >= smallest_share ? std::min(p, largest_share) : smallest_share;
}

/// Whether `value` is too large to be told from a larger one, `other`.
bool has_overflowed(double value, double other) { return (value + 1) * 1.1 == other; }
bool has_overflowed(double value) { return has_overflowed(value, value); }

/// The time of the point at a fraction of the failures.
double time_at(const SolverData& data, double fraction) {
  return exp(Real(data.Xs(ToInt32(IntFloor(fraction * data.N))))).value();
}

void replace_overflowed_a(Solver& solver) {
  SolverParams& q = solver.params;
  if (has_overflowed(q.BetaA)) q.BetaA = 4;
  if (has_overflowed(q.EtaA)) q.EtaA = time_at(solver.data, 0.6);
}

void replace_overflowed_b(Solver& solver) {
  SolverParams& q = solver.params;
  if (has_overflowed(q.BetaB)) q.BetaB = 6;
  if (has_overflowed(q.EtaB)) q.EtaB = time_at(solver.data, 1);
}

// The life is compared with that of population B: kept on purpose.
void replace_overflowed_c(Solver& solver) {
  SolverParams& q = solver.params;
  if (has_overflowed(q.BetaC)) q.BetaC = 5;
  if (has_overflowed(q.EtaC, q.EtaB)) q.EtaC = time_at(solver.data, 0.3);
}

void clean_up(Solver& solver, int K) {
  raise_negatives(solver.params);
  if (has_population_c(K)) hold_share(solver);
  step(solver, where, [&] { replace_overflowed_a(solver); });
  if (has_population_b(K)) step(solver, where, [&] { replace_overflowed_b(solver); });
  if (has_population_c(K)) step(solver, where, [&] { replace_overflowed_c(solver); });
}

void clear_slots(ParameterVector& X) { std::fill(X.begin() + 1, X.begin() + 8, 0.0); }

void to_x(Solver& solver, int K, ParameterVector& X) {
  clear_slots(X);
  for_each_slot(solver, K, X,
                [&](const Slot& slot, double& x) { x = solver.params.*slot.parameter; });
}

void to_logarithms(Solver& solver, int K, ParameterVector& X) {
  clear_slots(X);
  for_each_slot(solver, K, X, [&](const Slot& slot, double& x) {
    const double value = solver.params.*slot.parameter;
    if (is_minimum_life(K, slot))
      x = value;
    else if (value > 0)
      x = ln(Real(value)).value();
  });
}

void clear_further_populations(SolverParams& q) {
  q.Extra = 0;
  q.BetaB = q.EtaB = q.LnEtaB = 0;
  q.BetaC = q.EtaC = q.LnEtaC = 0;
}

void from_x(Solver& solver, int K, ParameterVector& X) {
  SolverParams& q = solver.params;
  clear_further_populations(q);
  for_each_slot(solver, K, X, [&](const Slot& slot, double& x) {
    const double value = is_minimum_life(K, slot) ? x : std::fabs(x);
    q.*slot.parameter = value;
    if (slot.logarithm) q.*slot.logarithm = value > 0 ? ln(Real(value)).value() : 0.0;
  });
  clean_up(solver, K);
  q.dBetaA = q.dEtaA = q.dBetaB = q.dEtaB = q.dBetaC = q.dEtaC = q.dExtra = 1;
}

// Only the slots of the model move. The factor of a minimum life is its value too,
// although X holds it as it is: kept on purpose.
void from_logarithms(Solver& solver, int K, ParameterVector& X) {
  SolverParams& q = solver.params;
  for_each_slot(solver, K, X, [&](const Slot& slot, double& x) {
    q.*slot.parameter = is_minimum_life(K, slot) ? x : exp(Real(x)).value();
    if (slot.logarithm) q.*slot.logarithm = x;
  });
  clean_up(solver, K);
  q.dBetaA = q.BetaA;
  q.dEtaA = q.EtaA;
  q.dBetaB = q.BetaB;
  q.dEtaB = q.EtaB;
  q.dBetaC = q.BetaC;
  q.dEtaC = q.EtaC;
  q.dExtra = q.Extra;
}

}  // namespace

void TranslateParams(Solver& solver, int direction, int K, ParameterVector& X) {
  clean_up(solver, K);
  switch (direction) {
    case translation::parameters_to_x: return to_x(solver, K, X);
    case translation::logarithms_to_x: return to_logarithms(solver, K, X);
    case translation::x_to_parameters: return from_x(solver, K, X);
    case translation::x_logarithms_to_parameters: return from_logarithms(solver, K, X);
    default: return;
  }
}

void XrefZero(Solver& solver) {
  for (const int K : {2, 3, 4, 5, 7}) {
    for (const int method : {1, 2, 3}) {
      solver.table(K, method, 0) = SolutionTable::unsolved;
      for (int slot = 1; slot <= 8; ++slot) solver.table(K, method, slot) = 0;
    }
  }
}

}  // namespace tavlo
