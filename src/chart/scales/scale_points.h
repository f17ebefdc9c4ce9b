// Scale points: where the ticks of an axis lie, in data units. Four generators
// stand behind one entry: linear, logarithmic, and two tables of probability
// levels, which hand over to the first two within a narrow band or a tail.
#pragma once

#include "numerics/error_reporter.h"
#include "numerics/slots.h"

namespace tavlo {

namespace scale_kind {
inline constexpr int linear = 1;
inline constexpr int log = 2;
inline constexpr int normal = 3;   ///< probability levels of a Normal axis
inline constexpr int weibull = 4;  ///< probability levels of Weibull and Gumbel axes
}  // namespace scale_kind

/// Ticks stand in the slots from 1. Tables come in table order, most important
/// level first. After a linear run slot 0 of `major` holds the base (a multiple
/// of the major step at or below the lower limit), slot 0 of `minor` the
/// smallest step.
struct ScalePoints {
  Slots<double> major;   ///< a label and a full grid line
  Slots<double> medium;  ///< a tick of the middle weight
  Slots<double> minor;   ///< a tick of the lightest weight
};

/// Ticks strictly between two limits, given in either order. Equal limits and an
/// unknown kind give none. Limits that are not finite, or whose distance is lost
/// in rounding, are reported ("Scale Point Generator: ") and give none.
ScalePoints GetScalePoints(ErrorReporter& reporter, int kind, double limit, double other_limit);

namespace detail {
// The generators behind GetScalePoints; each reports its own failures.
ScalePoints linear_scale(ErrorReporter& reporter, double min, double max);
ScalePoints log_scale(ErrorReporter& reporter, double min, double max);
ScalePoints probability_scale(ErrorReporter& reporter, int kind, double min, double max);

/// 10 to a whole power.
double decade(double exponent);

/// What a failing generator says.
inline auto scale_words() { return error_words("Scale Point Generator: ", "GetScalePoints:"); }
}  // namespace detail

}  // namespace tavlo
