// Movable boxes: the legend and the parameter box find places of their own until
// the user drags them elsewhere.
#pragma once

#include "chart/record/drawing_record.h"
#include "project/chart_records.h"

namespace tavlo {

/// Index in Chart::Boxes of the uppermost movable box at a place of the drawing; 0,
/// which no movable box has, when there is none.
int movable_box_at(const DrawingRecord& drawing, drawing::Place place);

/// Whether the user has given the box a place.
bool has_own_place(const Chart& chart, int item);

/// Moves the box from where it stands in the drawing. An item that isn't there
/// stays as it is.
void move_box(Chart& chart, const DrawingRecord& drawing, int item, std::int32_t right,
              std::int32_t down);

/// Lets the box find its place again.
void free_box(Chart& chart, int item);

}  // namespace tavlo
