// Line at t0: the straight line through the points (ln(t - t0), Weibull ordinate)
// for one minimum life, the step that the search for the best one repeats.
#pragma once

#include "solver/minimum_life.h"

namespace tavlo {

/// Counts the block's rows, takes Y of the failures from F, and their sums into the
/// trial. Error 5 for an F without an ordinate.
void take_ordinates(RegressBlock& block, T0Trial& trial);

/// Line of the kind, derivative and r squared at the trial's t0, from ordinates
/// taken before; see RegressT0. Fails without a change of the trial.
void regress(RegressBlock& block, T0Trial& trial, int kind);

}  // namespace tavlo
