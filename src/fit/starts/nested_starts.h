// Nested starts: points that branch off the optimum of a contained model by a population
// more: a risk split in two, or a share set apart.
#pragma once

#include <vector>

#include "fit/starts/random_starts.h"

namespace tavlo {

/// The most promising points with the populations wanted: `most` from a grid of sizes and
/// places, compared on about `compared_on` rows, and twice as many from clusters of
/// neighbouring failures. None where `contained` has
/// not just one population less.
std::vector<MixturePoint> nested_starts(const MixtureRows& rows, Populations wanted,
                                        const MixturePoint& contained, const SlopeRange& slopes,
                                        std::size_t most, std::size_t compared_on);

}  // namespace tavlo
