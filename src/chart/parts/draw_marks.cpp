#include "chart/parts/draw_marks.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "chart/parts/marks.h"
#include "chart/parts/symbols.h"

namespace tavlo {

using namespace drawing;

namespace {

/// A slim head: its length, and half its width, in pens and units.
constexpr double head_pens = 4.0;
constexpr double head_units = 110;
constexpr double head_slimness = 0.34;

/// The head of an arrow that comes from `from`, its tip at `tip`; empty where the
/// line has no direction.
std::vector<Place> arrow_head(Place from, Place tip, std::int32_t pen) {
  const double dx = static_cast<double>(tip.x) - from.x;
  const double dy = static_cast<double>(tip.y) - from.y;
  const double length = std::hypot(dx, dy);
  if (length == 0.0) return {};
  const double size = head_units + head_pens * std::min(std::abs(static_cast<double>(pen)), 500.0);
  const double x = tip.x - size * dx / length;
  const double y = tip.y - size * dy / length;
  const double across_x = -head_slimness * size * dy / length;
  const double across_y = head_slimness * size * dx / length;
  return {tip,
          {to_unit(x + across_x), to_unit(y + across_y)},
          {to_unit(x - across_x), to_unit(y - across_y)}};
}

void draw_head(Recorder& recorder, const ChartItem& mark, Place from, Place tip) {
  const std::vector<Place> head = arrow_head(from, tip, mark.LineWidth);
  if (head.empty()) return;
  const auto pen = Selected::pen(recorder, pen_style::solid, 1, mark.LineColor);
  const auto brush = Selected::brush(recorder, true, mark.LineColor);
  recorder.add(Polygon{head});
}

void draw_line(Recorder& recorder, const ChartItem& mark) {
  const std::vector<Place> line = points_of_mark(mark);
  {
    const auto pen = Selected::pen(recorder, mark.LineStyle, mark.LineWidth, mark.LineColor);
    recorder.add(Polyline{line});
  }
  if (mark.Mode & mark_mode::head_at_end)
    draw_head(recorder, mark, line[line.size() - 2], line.back());
  if (mark.Mode & mark_mode::head_at_start) draw_head(recorder, mark, line[1], line.front());
}

void draw_text(Recorder& recorder, const ChartItem& mark) {
  const auto font = Selected::font(recorder, mark);
  recorder.text_colour(mark.TextColor);
  recorder.align(TextAlign::left);
  recorder.text({mark.Left, mark.Top}, mark.Text2);
}

void draw_symbol(Recorder& recorder, const ChartItem& mark) {
  const bool solid = is_solid_symbol(mark.Int3);
  const auto pen = Selected::pen(recorder, mark.LineStyle, mark.LineWidth, mark.LineColor);
  const auto brush =
      Selected::brush(recorder, mark.Fill != 0 || solid, solid ? mark.LineColor : mark.FillColor);
  SymbolStamp(mark.Int3, std::abs(int{mark.Int5})).draw(recorder, {mark.Left, mark.Top});
}

std::vector<const ChartItem*> shown_marks(const Chart& chart) {
  std::vector<const ChartItem*> marks;
  for (int i = 1; i <= std::min(chart.nTexts, chart.Texts.bound()); ++i)
    if (is_shown(chart.Texts(i))) marks.push_back(&chart.Texts(i));
  return marks;
}

}  // namespace

void draw_answer_lines(Canvas& canvas) {
  for (const ChartItem* mark : shown_marks(canvas.chart))
    if (is_answer_mark(*mark)) draw_line(canvas.recorder, *mark);
}

void draw_marks(Canvas& canvas) {
  for (const ChartItem* mark : shown_marks(canvas.chart)) {
    const MarkKind kind = kind_of_mark(*mark);
    const bool has_line = kind == MarkKind::line || kind == MarkKind::arrow;
    if (has_line && !is_answer_mark(*mark)) draw_line(canvas.recorder, *mark);
    if (!mark->Text2.empty()) draw_text(canvas.recorder, *mark);
    if (kind == MarkKind::symbol) draw_symbol(canvas.recorder, *mark);
  }
}

}  // namespace tavlo
