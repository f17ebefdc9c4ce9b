// Zoom: a chart's axis limits set by a rectangle on it. The way back is part of
// the chart's view.
#pragma once

#include "chart/record/drawing_record.h"
#include "project/chart_records.h"

namespace tavlo {

/// Zooms to the part of the plot box between two corners, given in logical units in
/// any order and held within the plot box. False, and nothing changes, when a side
/// of the part is shorter than `shortest` units or its limits can't be told apart.
bool zoom_in(Chart& chart, drawing::Place corner, drawing::Place opposite, double shortest = 1);

}  // namespace tavlo
