// Marker line: a line drawn with the pen of a plot set.
#pragma once

#include <vector>

#include "chart/record/canvas.h"

namespace tavlo {

/// A broken line is one unit wide, as pens of metafiles are, unless the chart's style
/// has wide dashes.
void draw_marker_line(Canvas& canvas, const ChartMarker& marker,
                      const std::vector<drawing::Place>& places);

}  // namespace tavlo
