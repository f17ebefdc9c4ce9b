// Counted rows: the units of one time may stand on a row with their count or be listed one
// by one. A counted row has the rank of its last unit; listed, each has its own.
#pragma once

#include <cstddef>
#include <vector>

#include "fit/sample.h"

namespace tavlo {

/// The rows with another rank than the first of their failures would have if it stood on a
/// row of its own; with modes, by the ranks within the mode.
std::vector<std::size_t> rows_ranked_by_count(const Sample& sample, bool within_modes);

}  // namespace tavlo
