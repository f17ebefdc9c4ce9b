// Start pool: where the search for the optima of a mixture begins. Many seeded random
// points, of which those that fit best come first, no two alike; and points that split the
// optimum of a contained model.
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

/// Each parameter within the distance `near` (of its logarithm, or of the log odds).
bool are_alike(const MixturePoint& a, const MixturePoint& b, double near);

/// At most `most` random starts, the most promising first; the same in every run.
std::vector<MixturePoint> random_starts(const MixtureRows& rows, Populations populations,
                                        const SlopeRange& slopes, std::uint64_t seed,
                                        std::size_t most);

/// The most promising points that have the populations wanted and come from `contained` by
/// splitting a risk in two or by setting a share apart: `most` from a grid of sizes and
/// places, and as many from clusters of neighbouring failures.
std::vector<MixturePoint> nested_starts(const MixtureRows& rows, Populations wanted,
                                        const MixturePoint& contained, const SlopeRange& slopes,
                                        std::size_t most);

}  // namespace tavlo
