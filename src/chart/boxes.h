// Boxes: the chart box and the plot box.
#pragma once

#include "chart/recorder.h"
#include "project/chart_records.h"

namespace tavlo {

/// A rectangle from the item's corners, filled if it asks for it, with the line
/// kept inside.
void draw_box(Recorder& recorder, const ChartItem& item);

}  // namespace tavlo
