// Mean life: the mean time to failure of a fitted life. A life of one population has a closed
// form; where several risks act, the reliability is integrated.
#pragma once

#include <optional>

#include "life/life.h"

namespace tavlo {

/// The share of all units that ever fails, 0 to 1: below 1 where a population survives.
double share_that_fails(const Life& life);

/// The mean time to failure in units of time, to 1e-9 of itself; infinite where a population
/// never fails, and where the mean lies beyond all numbers. Nothing for a life whose numbers
/// are not determined, and for several populations of another family than the Weibulls.
std::optional<double> mean_life(const Life& life);

}  // namespace tavlo
