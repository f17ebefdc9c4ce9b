// Nested starts: a mixture with one population more than a simpler model, which it
// equals where two of its populations are the halves of one. From there it can only
// become better, so it is never worse than the simpler model.
#pragma once

#include <vector>

#include "project/solver_state.h"

namespace tavlo {

/// The two-parameter line split in two for K = 4; the best start of K = 5 with its
/// wear-out split in two for K = 7; none for K = 5, which has no halves.
std::vector<ParameterVector> nested_starts(const SolverState& state, int K);

}  // namespace tavlo
