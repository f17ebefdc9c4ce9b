// Axis grid: full lines, ticks and labels of one axis.
#pragma once

#include <vector>

#include "chart/record/canvas.h"

namespace tavlo {

/// Draws the grid of the X axis, or of the Y axis. A scale that has no ticks of
/// its own shows a box and is drawn with linear ones.
void DrawGrid(Canvas& canvas, bool is_y);

/// The values of the axis that DrawGrid draws a full line at. Errors as of AxisMap.
std::vector<double> grid_lines(Canvas& canvas, bool is_y);

}  // namespace tavlo
