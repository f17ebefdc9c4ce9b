// Boxes: the chart box and the plot box.
#pragma once

#include "chart/record/recorder.h"
#include "project/chart_records.h"

namespace tavlo {

/// A rectangle from the item's corners, filled if it asks for it, with the line
/// kept inside.
void draw_box(Recorder& recorder, const ChartItem& item);

/// The rectangle of an item from its Left and Top, Width and Height.
drawing::Rectangle area_of(const ChartItem& item);

/// Moves an item that would stand outside the chart box back into it.
void keep_on_chart(ChartItem& item, const Chart& chart);

}  // namespace tavlo
