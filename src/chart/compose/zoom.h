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

/// Whether a change of the view is a step of its own, or goes on with the last one.
enum class ZoomStep { own, last };

/// Shows a part of each axis that is `x` and `y` times as long as now, so that what lies at
/// the place, held within the plot box, stays there. False, and nothing changes, where
/// a limit would have no place on its axis, lie beyond all that is read there, or could not
/// be told from the other.
bool zoom_about(Chart& chart, drawing::Place at, double x, double y, ZoomStep step);

/// Moves what lies at the one place to the other. False, and nothing changes, as above.
bool pan(Chart& chart, drawing::Place from, drawing::Place to, ZoomStep step);

}  // namespace tavlo
