// The likelihood equation: the slope at which the score vanishes.
#pragma once

#include <optional>

#include "fit/likelihood/likelihood.h"

namespace tavlo {

/// The likelihood at its maximum: a secant in 1/beta from the slope 1 until |score| < 1e-12
/// or doubles allow no further step. The score rises with beta, so each trial tightens a
/// bracket; one that leaves the bracket becomes its middle, or twice the lower end while no
/// upper end is known, and so does each one from the 60th on. Nothing when the likelihood
/// has no maximum, or its slope is beyond all numbers.
std::optional<LikelihoodValue> solve_slope(const WeibullLikelihood& likelihood);

}  // namespace tavlo
