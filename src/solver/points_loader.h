// Points loader: the points of a data set as the solver takes them, one row a
// failure.
#pragma once

#include "project/records.h"
#include "project/solver_state.h"

namespace tavlo {

/// Most failures and suspensions that one fit takes.
inline constexpr double most_units = 2e7;

/// Loads times into `Xs` and median ranks into `Ys`, each point as often as it
/// has failed; with CensoredLikelihood suspensions follow, rank 1. The points'
/// coordinates on paper are set on the way. `loaded` holds what came; true when
/// that differs from the last time. Error 6 for too many units, 5 for a time or
/// rank that has no place on paper.
bool load_points(DataSet& set, SolverState& state);

}  // namespace tavlo
