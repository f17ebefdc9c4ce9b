// Likelihood rows: what the likelihood and its Jacobian share. Rows are failures
// or suspensions, and a minimum life gives way to a failure below it.
#pragma once

#include <cmath>
#include <limits>

#include "numerics/real.h"
#include "solver/rows.h"
#include "solver/solver.h"

namespace tavlo {

/// Calls on_failures or on_suspensions for each run of rows of one kind, in order,
/// until one returns false.
template <class OnFailures, class OnSuspensions>
void for_each_kind(const SolverData& data, const RowSelection& rows, OnFailures&& on_failures,
                   OnSuspensions&& on_suspensions) {
  if (rows.last > data.Ys.bound()) throw RunTimeError(run_time::subscript);
  const double* Ys = data.Ys.data();
  const auto failed = [Ys](int row) { return Ys[row] <= SolverData::largest_ordinate; };
  for (int first = rows.first; first <= rows.last;) {
    const bool failures = failed(first);
    int last = first;
    while (last + rows.step <= rows.last && failed(last + rows.step) == failures) last += rows.step;
    const RowSelection run{first, last, rows.step};
    if (!(failures ? on_failures(run) : on_suspensions(run))) return;
    first = last + rows.step;
  }
}

/// ln beta, taken once for all rows; undefined where it has none, so that rows fail.
inline double log_slope(double beta) {
  return beta > 0 ? std::log(beta) : std::numeric_limits<double>::quiet_NaN();
}

/// Whether a row of the block may lie at or below the minimum life.
inline bool reaches_minimum_life(const SolverParams& q, const RowBlock& block) {
  if (!(q.Extra > 0)) return false;
  const double limit = std::log(q.Extra) + 1e-9;  // generous: such rows are looked at closely
  return std::any_of(block.x.begin(), block.x.begin() + block.count,
                     [limit](double x) { return x <= limit; });
}

/// A minimum life above the time exp(x) moves to just below it, and the slot of X
/// with it. Returns whether it had to.
inline bool pull_minimum_life_below(SolverParams& q, ParameterVector& X, double x) {
  const Real time = exp(Real(x));
  if (!(time - q.Extra < 0)) return false;
  X[3] = q.Extra = (0.9999 * time).value();
  return true;
}

}  // namespace tavlo
