#include "chart/parts/axis_grid.h"

#include <algorithm>

#include "chart/record/chart_style.h"
#include "chart/scales/axis_labels.h"
#include "chart/scales/plot_coordinates.h"
#include "chart/scales/round_ticks.h"
#include "chart/scales/scale_points.h"
#include "life/models.h"

namespace tavlo {

using namespace drawing;

namespace {

constexpr double medium_tick = 120;
constexpr double minor_tick = 70;
constexpr double outward_tick = -40;
constexpr double short_outward_tick = -25;

/// 0 for a scale that has no ticks of its own.
int kind_of(int code) {
  switch (code) {
    case x_scale::linear:
    case y_scale::linear: return scale_kind::linear;
    case x_scale::log:
    case y_scale::log: return scale_kind::log;
    case y_scale::normal: return scale_kind::normal;
    case y_scale::weibull:
    case y_scale::gumbel: return scale_kind::weibull;
    default: return 0;
  }
}

/// The axis as its grid is drawn: one of an unknown scale becomes linear.
ChartAxis drawable_axis(Canvas& canvas, bool is_y) {
  ChartAxis axis = canvas.chart.Axes(is_y ? 1 : 0);
  if (kind_of(is_y ? y_scale_of(axis) : x_scale_of(axis)) != 0) return axis;
  canvas.prompts.show({"", "wmf_functions!DrawGrid type not recognized"});
  axis.ScaleType = is_y ? y_scale::linear : x_scale::linear;
  return axis;
}

/// The lines of one axis: each stands on its edge of the plot and runs inward.
class GridLines {
 public:
  GridLines(Canvas& canvas, const AxisMap& map, bool is_y)
      : recorder_(canvas.recorder),
        map_(map),
        is_y_(is_y),
        across_(x_extent(canvas.chart.Boxes(chart_item::plot_box))),
        down_(y_extent(canvas.chart.Boxes(chart_item::plot_box))) {}

  void draw(const Slots<double>& values, double length) {
    const Extent along = is_y_ ? down_ : across_;
    const bool on_edges = length < 0;  // outside the plot a tick may stand at its corner
    for (int i = 1; i <= values.bound(); ++i) {
      if (!has_place(map_.code(), values(i))) continue;
      const std::int32_t at = map_(values(i));
      if (on_edges ? at >= along.begin && at <= along.end : at > along.begin && at < along.end)
        line(at, length);
    }
  }

  double full_length() const { return is_y_ ? across_.length() : down_.length(); }

 private:
  void line(std::int32_t at, double length) {
    if (is_y_)
      recorder_.add(
          Polyline{{{to_unit(across_.begin), at}, {to_unit(across_.begin + length), at}}});
    else
      recorder_.add(Polyline{{{at, to_unit(down_.end)}, {at, to_unit(down_.end - length)}}});
  }

  Recorder& recorder_;
  const AxisMap& map_;
  bool is_y_;
  Extent across_;
  Extent down_;
};

void draw_ticks(GridLines& lines, Division division, const ScalePoints& points) {
  if (division == Division::round) {
    lines.draw(points.minor, short_outward_tick);
    lines.draw(points.major, outward_tick);
    return;
  }
  lines.draw(points.minor, minor_tick);
  lines.draw(points.medium, medium_tick);
}

void draw_lines(Canvas& canvas, const ChartAxis& axis, const AxisMap& map,
                const ScalePoints& points, bool is_y) {
  GridLines lines(canvas, map, is_y);
  {
    const auto pen =
        Selected::pen(canvas.recorder, axis.MinorStyle, axis.MinorWidth, axis.MinorColor);
    draw_ticks(lines, chart_style(canvas.chart).division, points);
  }
  const auto pen =
      Selected::pen(canvas.recorder, axis.MajorStyle, axis.MajorWidth, axis.MajorColor);
  lines.draw(points.major, lines.full_length());
}

/// What an axis is marked with.
struct Marking {
  ScalePoints points;
  std::vector<AxisLabel> labels;
};

/// The share of the axis that the label needs for itself.
double room_of(Canvas& canvas, const std::string& label, const ChartItem& font, bool is_y) {
  const ChartItem& plot = canvas.chart.Boxes(chart_item::plot_box);
  const TextSize size = text_size(canvas.text_measure, label + "0", font);  // with a gap
  constexpr double figures = 0.85;  // of the height of a line, with a little air
  return is_y ? figures * size.height / y_extent(plot).length()
              : size.width / x_extent(plot).length();
}

/// Whether no label runs into the next.
bool have_room(Canvas& canvas, const Marking& marking, const ChartItem& font, const AxisMap& map,
               bool is_y) {
  std::vector<AxisLabel> labels = marking.labels;
  std::ranges::sort(labels, {}, &AxisLabel::value);
  const double length = map.high() - map.low();
  for (std::size_t i = 1; i < labels.size(); ++i) {
    const double distance = map.transform(labels[i].value) - map.transform(labels[i - 1].value);
    const double needed = (room_of(canvas, labels[i].text, font, is_y) +
                           room_of(canvas, labels[i - 1].text, font, is_y)) /
                          2;
    if (distance / length < needed) return false;
  }
  return true;
}

/// Divided as finely as leaves each tick its label.
Marking round_marking(Canvas& canvas, const ChartAxis& axis, const AxisMap& map, bool is_y) {
  constexpr double step = 1.2;
  constexpr double most = 0.5;  // of the axis, for a label
  Marking marking;
  for (double room = room_of(canvas, "0", axis.Label, is_y); room < most; room *= step) {
    marking.points = round_ticks(map, room);
    marking.labels = round_labels(axis, map.code(), marking.points);
    if (have_room(canvas, marking, axis.Label, map, is_y)) break;
  }
  return marking;
}

Marking marking_of(Canvas& canvas, const ChartAxis& axis, const AxisMap& map, bool is_y) {
  const int code = map.code();
  if (chart_style(canvas.chart).division == Division::round)
    return round_marking(canvas, axis, map, is_y);
  const Limits limits = map.limits();
  const ScalePoints points = GetScalePoints(canvas.errors, kind_of(code), limits.low, limits.high);
  return {points, axis_labels(axis, code, points, limits)};
}

AxisMap map_of(Canvas& canvas, const ChartAxis& axis, bool is_y) {
  const ChartItem& plot = canvas.chart.Boxes(chart_item::plot_box);
  return is_y ? AxisMap::y(canvas.errors, plot, axis) : AxisMap::x(canvas.errors, plot, axis);
}

}  // namespace

std::vector<double> grid_lines(Canvas& canvas, bool is_y) {
  const ChartAxis axis = drawable_axis(canvas, is_y);
  const AxisMap map = map_of(canvas, axis, is_y);
  const ScalePoints points = marking_of(canvas, axis, map, is_y).points;
  std::vector<double> lines;
  for (int i = 1; i <= points.major.bound(); ++i)
    if (has_place(map.code(), points.major(i))) lines.push_back(points.major(i));
  return lines;
}

void DrawGrid(Canvas& canvas, bool is_y) {
  const ChartAxis axis = drawable_axis(canvas, is_y);
  guarded(canvas.errors, error_words("Error drawing the grid: ", "DrawGrid routine:"), [&] {
    const AxisMap map = map_of(canvas, axis, is_y);
    const Marking marking = marking_of(canvas, axis, map, is_y);
    draw_lines(canvas, axis, map, marking.points, is_y);
    draw_axis_labels(canvas, map, marking.labels, axis.Label, is_y);
  });
}

}  // namespace tavlo
