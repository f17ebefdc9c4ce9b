// Data points: the failures of one data set, each as a symbol.
#pragma once

#include "chart/canvas.h"
#include "project/records.h"

namespace tavlo {

/// Draws the rows with failures that have a place on the chart, in order. Points
/// that fall on the same place are drawn once.
void draw_data_points(Canvas& canvas, const ChartMarker& marker, const DataSet& data);

}  // namespace tavlo
