#include "solver/nested_starts.h"

#include <cmath>

namespace tavlo {
namespace {

/// Two equal risks that act together as one of this beta and eta: each has half of
/// its hazard.
double eta_of_half(double beta, double eta) { return eta * std::pow(2.0, 1 / beta); }

}  // namespace

std::vector<ParameterVector> nested_starts(const SolverState& state, int K) {
  if (K == 4) {
    const double beta = state.table(2, state.data.Method, 1);
    const double eta = state.table(2, state.data.Method, 2);
    if (!(beta > 0) || !(eta > 0)) return {};
    const double half = eta_of_half(beta, eta);
    return {{0, beta, half, beta, half}};
  }
  if (K == 7 && !state.candidates[5].empty()) {
    const ParameterVector& X = state.candidates[5].front();
    const double half = eta_of_half(X[1], X[2]);
    return {{0, X[1], half, X[1], half, X[3], X[4], X[5]}};
  }
  return {};
}

}  // namespace tavlo
