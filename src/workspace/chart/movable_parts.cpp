#include "workspace/chart/movable_parts.h"

#include <algorithm>

#include "chart/parts/marks.h"
#include "chart/parts/movable_boxes.h"
#include "chart/record/distance.h"

namespace tavlo {

using drawing::Place;
using drawing::Rectangle;

namespace {

constexpr double mark_reach = 5;  // pixels beside a thin line that still are on it

int last_mark(const Chart& chart) { return std::min(chart.nTexts, chart.Texts.bound()); }

}  // namespace

// The order in which they are drawn: the parameter box, the marks, the legend.
std::vector<MovablePart> parts_of(ChartStage& stage) {
  std::vector<MovablePart> parts;
  const auto add_box = [&](int item) {
    for (const ItemArea& area : stage.drawing().areas)
      if (area.item == item) parts.push_back({MovablePart::Kind::box, item});
  };
  add_box(chart_item::parameter_box);
  for (int i = 1; i <= last_mark(stage.chart()); ++i)
    if (is_shown(stage.answered().Texts(i))) parts.push_back({MovablePart::Kind::mark, i});
  add_box(chart_item::legend);
  return parts;
}

MovablePart part_at(ChartStage& stage, Place place) {
  const int box = movable_box_at(stage.drawing(), place);
  if (box == chart_item::legend) return {MovablePart::Kind::box, box};
  const int mark =
      mark_at(stage.session().ports.text_measure, stage.answered(), place, stage.units(mark_reach));
  if (mark != 0) return {MovablePart::Kind::mark, mark};
  return box == 0 ? MovablePart{} : MovablePart{MovablePart::Kind::box, box};
}

Rectangle area_of(ChartStage& stage, MovablePart part) {
  if (part.is_mark() && part.index <= last_mark(stage.answered()))
    return mark_bounds(stage.session().ports.text_measure, stage.answered().Texts(part.index));
  if (part.is_box())
    for (const ItemArea& area : stage.drawing().areas)
      if (area.item == part.index) return area.area;
  return {};
}

PartMove::PartMove(ChartStage& stage, MovablePart part)
    : stage_(stage), part_(part), before_(item()), shown_(shown_item()) {
  areas_before_.areas = stage.drawing().areas;
}

ChartItem& PartMove::item() {
  Chart& chart = stage_.chart();
  return part_.is_mark() ? chart.Texts(part_.index) : chart.Boxes(part_.index);
}

const ChartItem& PartMove::shown_item() {
  return part_.is_mark() ? stage_.answered().Texts(part_.index) : item();
}

void PartMove::to(std::int32_t right, std::int32_t down) {
  item() = before_;
  if (part_.is_mark()) {
    item().Width = shown_.Width;
    item().Height = shown_.Height;
    move_mark(item(), right, down);
  } else {
    move_box(stage_.chart(), areas_before_, part_.index, right, down);
  }
  stage_.name_step("Move");
}

void PartMove::back() { item() = before_; }

}  // namespace tavlo
