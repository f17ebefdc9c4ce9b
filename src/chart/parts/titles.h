// Titles and notes: the mark in the corner, file name, date, and the four titles.
#pragma once

#include "chart/record/canvas.h"
#include "ports/clock.h"

namespace tavlo {

/// Draws the mark, the notes at the foot and the titles that have a text.
void draw_titles(Canvas& canvas, const DateTime& now);

}  // namespace tavlo
