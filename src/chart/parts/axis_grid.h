// Axis grid: full lines, ticks and labels of one axis.
#pragma once

#include "chart/record/canvas.h"

namespace tavlo {

/// Draws the grid of the X axis, or of the Y axis. A scale that has no ticks of
/// its own shows a box and is drawn with linear ones.
void DrawGrid(Canvas& canvas, bool is_y);

}  // namespace tavlo
