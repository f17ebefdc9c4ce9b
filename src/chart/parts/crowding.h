// Crowding: how much of a drawing lies in a part of the chart, to find a free
// place for a box.
#pragma once

#include <vector>

#include "chart/record/canvas.h"
#include "chart/record/chart_style.h"
#include "chart/record/drawing_record.h"

namespace tavlo {

/// The number of shapes, and pieces of lines, that touch the area.
int shapes_touching(const DrawingRecord& drawing, const drawing::Rectangle& area);

/// Where a box of that size hides least of what else the plot holds: in the
/// preferred corner if that is free, else in another, else at the nearest free
/// place between them. It keeps off the boxes that are `taken` if it can.
drawing::Place freest_place(const ChartItem& plot, const TextSize& box, Corner preferred,
                            const DrawingRecord& content,
                            const std::vector<drawing::Rectangle>& taken);

}  // namespace tavlo
