// The likelihood equation: the slope at which the score vanishes.
#pragma once

#include <optional>

#include "actions/likelihood.h"

namespace tavlo {

/// The likelihood at its maximum, searched from the slope `start` (0 or less
/// counts as 1): a secant in 1/beta until |score| < 1e-12 or doubles allow no
/// further step. The score rises with beta, so each trial tightens a bracket;
/// one that leaves the bracket becomes its middle, or twice the lower end while
/// no upper end is known. Nothing when the likelihood has no maximum, or after
/// 200 trials.
std::optional<LikelihoodValue> solve_slope(const WeibullLikelihood& likelihood, double start);

}  // namespace tavlo
