// Draws the user's marks.
#pragma once

#include "chart/record/canvas.h"

namespace tavlo {

/// Draws the lines of answer marks, from their fits to the axes.
void draw_answer_lines(Canvas& canvas);

/// Draws the chart's `Texts` from 1, each as kind_of_mark says, but for those lines.
void draw_marks(Canvas& canvas);

}  // namespace tavlo
