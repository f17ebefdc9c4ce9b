// Start pool: many random parameters of a mixture, of which the few that fit best
// after a short race are worth a full run of the minimiser.
#pragma once

#include <vector>

#include "solver/solver.h"

namespace tavlo {

/// The most promising starts for K = 4, 5 or 7, best first and no two alike, from
/// a fixed pool (the same in every run) and the candidates of the relaxation.
/// `quiet` shows no boxes; its parameters are left at the last one tried.
std::vector<ParameterVector> promising_starts(Solver& quiet, int K);

}  // namespace tavlo
