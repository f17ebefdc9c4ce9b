// Titles and notes: the mark in the corner, file name, date, and the four titles.
#pragma once

#include <string>

#include "chart/record/canvas.h"
#include "ports/clock.h"

namespace tavlo {

/// Draws the mark, the notes at the foot and the titles that have a text, as the chart's
/// style places them. `names` are those of the data sets, for a chart that they title.
void draw_titles(Canvas& canvas, const DateTime& now, const std::string& names);

/// Says above the plot, at its right, that the data have changed since.
void draw_out_of_date(Canvas& canvas);

}  // namespace tavlo
