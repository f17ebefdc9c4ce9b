// Model times: the log time at which the model reaches an ordinate, for many rows
// at once. A closed form for one Weibull; for the others Halley's method within a
// narrowing bracket, two rows in a pack.
#pragma once

#include "solver/rows.h"
#include "solver/solver.h"

namespace tavlo {

/// Farthest distance in log time that a model time is sought from its data point.
inline constexpr double farthest_model_time = 250;

/// times[k] = log time at which the model (K = 2, 4, 5, 7) reaches targets[k], from
/// the block's log times on. Not finite where none was found within the distance
/// above; those that are, are right to 1e-11 or to the last digits of x.
void find_model_times(const SolverParams& params, int K, const RowBlock& block,
                      const RowBlock::Values& targets, RowBlock::Values& times);

}  // namespace tavlo
