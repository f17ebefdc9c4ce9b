// Round ticks: an axis divided at 1, 2 and 5 and at round percentages, with 63.2 % on
// Weibull paper, no closer together than their labels need. Every tick has a label,
// and a limit has one only where it is such a value.
#pragma once

#include <vector>

#include "chart/scales/axis_labels.h"
#include "chart/scales/plot_coordinates.h"
#include "chart/scales/scale_points.h"

namespace tavlo {

/// Ticks from limit to limit, both included. `room` is the least distance of two
/// major ticks as a share of the axis. Where the coarsest division is too close as
/// well, it is taken; labels then leave each other out. Limits that are one number to
/// within rounding have none.
ScalePoints round_ticks(const AxisMap& map, double room);

/// "10 %", "0.5", "1000": no longer than the ticks need. A number format of the axis
/// comes first.
std::vector<AxisLabel> round_labels(const ChartAxis& axis, int code, const ScalePoints& points);

}  // namespace tavlo
