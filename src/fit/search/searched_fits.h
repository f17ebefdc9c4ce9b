// Searched fits: the models whose objective has many local optima. The answer is the best
// proven optimum inside the fence, or a contained model's where there is none better.
#pragma once

#include "fit/answer.h"
#include "fit/companion.h"

namespace tavlo {

/// W4P, W5C or W7P by any method. The door has checked times and counts.
FitAnswer fit_mixture(const Sample& sample, const FitRequest& request, Companion& companion);

/// W3T by maximum likelihood: the highest interior maximum of the profile over t0.
FitAnswer fit_minimum_life_by_likelihood(const Sample& sample, const FitRequest& request,
                                         Companion& companion);

}  // namespace tavlo
