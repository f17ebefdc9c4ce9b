// Mean life: the mean time to failure of a fitted life. That of a single Weibull, Normal,
// LogNormal or Gumbel is known in closed form (Johnson, Kotz and Balakrishnan, Continuous
// Univariate Distributions); that of competing risks is the integral of their reliability.
#pragma once

#include <optional>

#include "life/life.h"

namespace tavlo {

/// In the unit of the times; infinite where a share of the units never fails. Nothing where it
/// lies beyond all numbers or the life has no distribution. Competing risks to 1e-9 or so.
std::optional<double> mean_life(const Life& life);

}  // namespace tavlo
