// Chart repair: makes a chart that came from a file fit to be drawn, whatever
// its numbers say.
#pragma once

#include "project/chart_records.h"

namespace tavlo {

/// Adds what every chart has (two axes, the fixed boxes, one plot set) from the
/// factory chart, holds the chart box and the plot box to 1 to 32767 units, fonts
/// to 1 to 500 points and the limits of a probability axis below 1. Everything
/// else stays as it is; a chart that is fit stays equal.
void make_drawable(Chart& chart);

}  // namespace tavlo
