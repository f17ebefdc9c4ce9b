#include "chart/parts/axis_grid.h"

#include "chart/scales/axis_labels.h"
#include "chart/scales/plot_coordinates.h"
#include "chart/scales/scale_points.h"
#include "life/models.h"

namespace tavlo {

using namespace drawing;

namespace {

constexpr double medium_tick = 120;
constexpr double minor_tick = 70;

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
    for (int i = 1; i <= values.bound(); ++i) {
      if (!has_place(map_.code(), values(i))) continue;
      const std::int32_t at = map_(values(i));
      if (at > along.begin && at < along.end) line(at, length);
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

void draw_lines(Canvas& canvas, const ChartAxis& axis, const AxisMap& map,
                const ScalePoints& points, bool is_y) {
  GridLines lines(canvas, map, is_y);
  {
    const auto pen =
        Selected::pen(canvas.recorder, axis.MinorStyle, axis.MinorWidth, axis.MinorColor);
    lines.draw(points.minor, minor_tick);
    lines.draw(points.medium, medium_tick);
  }
  const auto pen =
      Selected::pen(canvas.recorder, axis.MajorStyle, axis.MajorWidth, axis.MajorColor);
  lines.draw(points.major, lines.full_length());
}

}  // namespace

void DrawGrid(Canvas& canvas, bool is_y) {
  const ChartAxis axis = drawable_axis(canvas, is_y);
  const ChartItem& plot = canvas.chart.Boxes(chart_item::plot_box);
  guarded(canvas.errors, error_words("Error drawing the grid: ", "DrawGrid routine:"), [&] {
    const AxisMap map =
        is_y ? AxisMap::y(canvas.errors, plot, axis) : AxisMap::x(canvas.errors, plot, axis);
    const Limits limits = map.limits();
    const ScalePoints points =
        GetScalePoints(canvas.errors, kind_of(map.code()), limits.low, limits.high);
    draw_lines(canvas, axis, map, points, is_y);
    draw_axis_labels(canvas, map, axis_labels(axis, map.code(), points, limits), axis.Label, is_y);
  });
}

}  // namespace tavlo
