// Fitted limits: round limits for an axis that leave little of the paper empty and
// no point on its edge.
#pragma once

#include "chart/scales/plot_coordinates.h"
#include "numerics/error_reporter.h"

namespace tavlo {

/// Limits around `data`, which are two values, for a scale code of an axis. They are
/// those of `round_limits` where the data fill a third of them and keep off the edges.
/// Else they stand at steps of 1, 2 or 5, and a probability axis ends with the lowest
/// of 90 %, 95 %, 99 %, 99.5 % ... that is above the data. `zone` is the margin as a
/// fraction of the range. Errors as of `round_limits`.
Limits fitted_limits(ErrorReporter& reporter, int code, Limits data, double zone);

}  // namespace tavlo
