// Fit line: the curve of one fit across the plot box.
#pragma once

#include "chart/canvas.h"
#include "project/records.h"

namespace tavlo {

/// Draws the fit's line with the marker's pen, from where it enters the plot to
/// where it leaves it. A line outside the plot leaves no record.
void DrawData_One_Line(Canvas& canvas, const ChartMarker& marker, const FitResult& fit);

}  // namespace tavlo
