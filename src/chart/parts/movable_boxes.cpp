#include "chart/parts/movable_boxes.h"

#include "chart/record/canvas.h"
#include "chart/record/distance.h"

namespace tavlo {

using drawing::Place;

namespace {

/// The place in the record that stands for "anywhere free".
Place unmoved_place(const Chart& chart, int item) {
  if (item != chart_item::parameter_box) return {0, 0};
  const ChartItem& plot = chart.Boxes(chart_item::plot_box);
  return {plot.Left, plot.Top};
}

void put(ChartItem& box, Place place) {
  box.Left = place.x;
  box.Top = place.y;
}

}  // namespace

int movable_box_at(const DrawingRecord& drawing, Place place) {
  for (std::size_t i = drawing.areas.size(); i > 0; --i)
    if (distance_to_box(drawing.areas[i - 1].area, place) == 0.0) return drawing.areas[i - 1].item;
  return 0;
}

bool has_own_place(const Chart& chart, int item) {
  const ChartItem& box = chart.Boxes(item);
  return Place{box.Left, box.Top} != unmoved_place(chart, item);
}

void move_box(Chart& chart, const DrawingRecord& drawing, int item, std::int32_t right,
              std::int32_t down) {
  for (const ItemArea& area : drawing.areas) {
    if (area.item != item) continue;
    ChartItem& box = chart.Boxes(item);
    put(box, {to_unit(static_cast<double>(area.area.left) + right),
              to_unit(static_cast<double>(area.area.top) + down)});
    if (!has_own_place(chart, item)) ++box.Left;
  }
}

void free_box(Chart& chart, int item) { put(chart.Boxes(item), unmoved_place(chart, item)); }

}  // namespace tavlo
