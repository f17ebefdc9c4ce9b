// Fit line: the curve of one fit across the plot box.
#pragma once

#include "chart/record/canvas.h"
#include "project/records.h"

namespace tavlo {

/// Where a line that would begin at `low` begins: just above the minimum life of
/// a single population.
double first_x_of_line(const FitResult& fit, double low);

/// Whether the marker has a pen for its fit's line.
bool has_line(const ChartMarker& marker);

/// Draws the fit's line with the marker's pen, from where it enters the plot to
/// where it leaves it. A line outside the plot leaves no record.
void DrawData_One_Line(Canvas& canvas, const ChartMarker& marker, const FitResult& fit);

/// Draws each population of a mixture by itself, as a Weibull line of all its
/// units, with a thin pen of the marker's colour. Nothing for a single population.
void draw_sub_populations(Canvas& canvas, const ChartMarker& marker, const FitResult& fit);

}  // namespace tavlo
