// Starting values: lines and segments of the plot that the minimiser starts from.
#pragma once

#include "solver/minimum_life.h"
#include "solver/solver.h"

namespace tavlo {

/// Prepares the loaded points (rows 1 to `data.M`: Xs holds times, Ys median ranks,
/// a time of 0 or less or a rank of 1 or more is a suspension) in place: log times,
/// ordinates, suspensions behind the failures, spreads, the RegressBlock. Population
/// A becomes the two-parameter line of Y on X, B that of X on Y, and, where the table
/// holds no work on this data yet, every model gets a start. `data.M` becomes N, or
/// N + NS for MLE. X receives the start of the model at work and r squared in slot 0.
/// To be called once after loading.
void WeibullStatistics(Solver& solver, ParameterVector& X);

/// Splits the plot of rows 1 to M into three straight pieces, in six ways, and derives
/// starts for each mixture from them, as they show and relaxed onto the plot. All go
/// to `candidates`, distinct ones only, with their Y on X r squared in slot 0, best
/// first; the best to the table's rows of its model. On more than a thousand rows a
/// sample of that size is compared. Below seven points only forgets the candidates.
/// A value that can't be derived is left out without a word.
void RelaxationEstimate(Solver& solver, int M);

/// Improves X by a pattern search, first on about twenty rows by Y on X, then on all
/// rows by the method of the data. Ends at an r squared of 0.5; a likelihood after 20
/// rounds or when no step is left; in any case after the pass in which 5 seconds are
/// over. X never gets worse than the parameters on entry. `status` 10 only evaluates
/// them. Parameters and X agree on return.
void GetEstimate(Solver& solver, int& M, int K, ParameterVector& X, int& status);

}  // namespace tavlo
