// Crowding: how much of a drawing lies in a part of the chart, to find a free
// place for a box.
#pragma once

#include "chart/drawing_record.h"

namespace tavlo {

/// The number of shapes, and pieces of lines, that touch the area.
int shapes_touching(const DrawingRecord& drawing, const drawing::Rectangle& area);

}  // namespace tavlo
