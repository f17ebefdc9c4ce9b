// Draws the user's marks.
#pragma once

#include "chart/record/canvas.h"

namespace tavlo {

/// Draws the chart's `Texts` from 1, each as kind_of_mark says.
void draw_marks(Canvas& canvas);

}  // namespace tavlo
