// Marks: what the user has placed on a chart, lines, texts and symbols.
#pragma once

#include "chart/canvas.h"

namespace tavlo {

/// Draws the chart's `Texts` from 1: a polyline where the mark has points, its
/// text at Left and Top, or, with neither, the symbol of number `Int3`. All in
/// logical units.
void draw_marks(Canvas& canvas);

}  // namespace tavlo
