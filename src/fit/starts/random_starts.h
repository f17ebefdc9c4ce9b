// Random starts: many seeded points of the parameter space, of which those that fit best
// come first, no two alike.
#pragma once

#include <cstdint>
#include <vector>

#include "fit/mixture/mixture_rows.h"
#include "fit/mixture/populations.h"

namespace tavlo {

struct SlopeRange {
  double usual = 1;  ///< that of one Weibull on the same rows
  double steepest = 50;
};

/// At most `most` random starts, the most promising first; the same in every run.
std::vector<MixturePoint> random_starts(const MixtureRows& rows, Populations populations,
                                        const SlopeRange& slopes, std::uint64_t seed,
                                        std::size_t most);

}  // namespace tavlo
