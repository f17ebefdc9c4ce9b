// Limit rules: round limits for an axis that shows everything between two
// values, with a margin, by the kind of scale.
#pragma once

#include "chart/scales/plot_coordinates.h"
#include "numerics/error_reporter.h"

namespace tavlo {

/// Makes a range of one value (or a reversed one) usable: 0 becomes -0.5 to 0.5,
/// others get 5 % on either side, reversed ends change places.
Limits usable_range(Limits data);

/// Round limits around `data` for a scale code of an axis. `zone` is the margin
/// as a fraction of the range. Limits are rounded to two significant figures
/// unless that would cut data off. Error 6 when the range is lost in rounding.
Limits round_limits(ErrorReporter& reporter, int code, Limits data, double zone);

}  // namespace tavlo
