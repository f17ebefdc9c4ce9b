// MainLoop: the order of attempts of one fit by the solver: how to start, what to
// do when the minimiser does not converge, and what to store.
#pragma once

#include "solver/solver.h"

namespace tavlo {

/// Asks MainLoop or GetEstimate for one evaluation at the present parameters.
inline constexpr int status_evaluate = 10;
/// A fit that was cancelled.
inline constexpr int status_cancelled = -1;

/// Fits the model of K parameters to rows 1 to M of the prepared points and
/// stores the answer in the SolutionTable. X (slots 1 to 7) and the parameters
/// hold it on return. `status`: status_evaluate on entry only evaluates (not for
/// K = 3); on return the info of the last LMDER, 1 where the search for a minimum
/// life solved the regression, status_cancelled after a Cancel.
void MainLoop(Solver& solver, int& M, int K, ParameterVector& X, int& status);

/// The minimiser alone, from X (parameters): runs again while it stops for want
/// of evaluations, at most `runs` times. X and the parameters follow the best
/// point, X[0] and SumSq its quality. Returns the last info.
int minimise_from(Solver& solver, int M, int K, ParameterVector& X, int runs);

/// Puts the answer X (parameters) of the present quality into the table.
void store_solution(Solver& solver, int K, const ParameterVector& X, int info);

}  // namespace tavlo
