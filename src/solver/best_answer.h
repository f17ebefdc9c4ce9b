// Best answer: from loaded points to the best optimum that the solver can find,
// whichever fits came before.
#pragma once

#include "solver/solver.h"

namespace tavlo {

/// Prepares the points loaded into `solver.data` (Xs times, Ys ranks, with K and
/// Method) and fits them. X, the parameters and the SolutionTable hold the answer
/// on return, `state.starts` how sure it is. The info of the last LMDER; negative
/// after a Cancel.
int find_best_answer(Solver& solver, ParameterVector& X);

}  // namespace tavlo
