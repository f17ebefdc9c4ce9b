#include "chart/parts/marks.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "chart/parts/crowding.h"
#include "chart/record/canvas.h"
#include "chart/record/distance.h"
#include "numerics/run_time_error.h"

namespace tavlo {

using namespace drawing;

namespace {

constexpr std::int32_t ink = rgb(0, 0, 128);
constexpr std::int32_t line_width = 20;
constexpr std::int16_t symbol_size = 150;
constexpr int most_marks = 32767;

int last_point(const ChartItem& mark) {
  return std::min({int{mark.nPoints}, mark.PointsX.bound(), mark.PointsY.bound()});
}

bool has_points(const ChartItem& mark) { return last_point(mark) >= 1; }

ChartItem inked() {
  ChartItem mark;
  mark.FontSize = 12;
  mark.TextColor = ink;
  mark.LineColor = ink;
  mark.LineWidth = line_width;
  mark.FillColor = ink;
  mark.Int3 = 0;
  return mark;
}

Rectangle symbol_box(const ChartItem& mark) {
  const double half = std::abs(int{mark.Int5}) / 2.0;
  return {to_unit(mark.Left - half), to_unit(mark.Top - half), to_unit(mark.Left + half),
          to_unit(mark.Top + half)};
}

Rectangle both(const Rectangle& a, const Rectangle& b) {
  return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
          std::max(a.bottom, b.bottom)};
}

bool is_hit(TextMeasure& measure, const ChartItem& mark, Place place, double reach) {
  if (has_points(mark) &&
      distance_to_line(points_of_mark(mark), place) <= reach + std::abs(mark.LineWidth / 2.0))
    return true;
  if (!mark.Text2.empty()) return distance_to_box(words_bounds(measure, mark), place) <= reach;
  return !has_points(mark) && distance_to_box(symbol_box(mark), place) <= reach;
}

}  // namespace

bool is_shown(const ChartItem& mark) { return has_points(mark) || !is_answer_mark(mark); }

MarkKind kind_of_mark(const ChartItem& mark) {
  if (has_points(mark)) return mark.Mode > 0 ? MarkKind::arrow : MarkKind::line;
  return mark.Text2.empty() ? MarkKind::symbol : MarkKind::text;
}

std::vector<Place> points_of_mark(const ChartItem& mark) {
  std::vector<Place> places;
  for (int i = 0; has_points(mark) && i <= last_point(mark); ++i)
    places.push_back({to_unit(mark.PointsX(i)), to_unit(mark.PointsY(i))});
  return places;
}

ChartItem text_mark(Place at, const std::string& utf8) {
  ChartItem mark = inked();
  mark.Left = at.x;
  mark.Top = at.y;
  mark.Text2 = utf8;
  return mark;
}

ChartItem line_mark(Place from, Place to) {
  ChartItem mark = inked();
  mark.nPoints = 1;
  mark.PointsX.resize(1);
  mark.PointsY.resize(1);
  mark.PointsX(0) = static_cast<float>(from.x);
  mark.PointsY(0) = static_cast<float>(from.y);
  mark.PointsX(1) = static_cast<float>(to.x);
  mark.PointsY(1) = static_cast<float>(to.y);
  return mark;
}

ChartItem arrow_mark(Place from, Place to) {
  ChartItem mark = line_mark(from, to);
  mark.Mode = mark_mode::head_at_end;
  return mark;
}

ChartItem symbol_mark(Place at, int symbol) {
  ChartItem mark = text_mark(at, {});
  mark.FillColor = rgb(255, 255, 255);
  mark.Int3 = static_cast<std::int16_t>(std::clamp(symbol, 1, 27));
  mark.Int5 = symbol_size;
  return mark;
}

int add_mark(Chart& chart, ChartItem mark) {
  const int index = std::max(chart.nTexts, 0) + 1;
  if (index > most_marks) throw RunTimeError(run_time::overflow);
  chart.Texts.resize(index);
  chart.Texts(index) = std::move(mark);
  chart.nTexts = index;
  return index;
}

void delete_mark(Chart& chart, int index) {
  const int last = std::min(chart.nTexts, chart.Texts.bound());
  if (index < 1 || index > last) return;
  for (int i = index; i < last; ++i) chart.Texts(i) = std::move(chart.Texts(i + 1));
  chart.Texts.resize(last - 1);
  chart.nTexts = last - 1;
}

void move_mark(ChartItem& mark, std::int32_t right, std::int32_t down) {
  if (is_answer_mark(mark)) {
    mark.Width = to_unit(static_cast<double>(mark.Width) + right);
    mark.Height = to_unit(static_cast<double>(mark.Height) + down);
    return;
  }
  mark.Left = to_unit(static_cast<double>(mark.Left) + right);
  mark.Top = to_unit(static_cast<double>(mark.Top) + down);
  for (int i = 0; has_points(mark) && i <= last_point(mark); ++i) {
    mark.PointsX(i) += static_cast<float>(right);
    mark.PointsY(i) += static_cast<float>(down);
  }
}

Rectangle words_bounds(TextMeasure& measure, const ChartItem& mark) {
  const TextSize size = text_size(measure, mark.Text2, mark);
  return {mark.Left, mark.Top, to_unit(mark.Left + size.width), to_unit(mark.Top + size.height)};
}

Rectangle mark_bounds(TextMeasure& measure, const ChartItem& mark) {
  if (!has_points(mark)) return mark.Text2.empty() ? symbol_box(mark) : words_bounds(measure, mark);
  const Rectangle line = box_around(points_of_mark(mark));
  return mark.Text2.empty() ? line : both(line, words_bounds(measure, mark));
}

int mark_at(TextMeasure& measure, const Chart& chart, Place place, double reach) {
  for (int i = std::min(chart.nTexts, chart.Texts.bound()); i >= 1; --i)
    if (is_shown(chart.Texts(i)) && is_hit(measure, chart.Texts(i), place, reach)) return i;
  return 0;
}

}  // namespace tavlo
