#include "chart/compose/chart_shape.h"

#include <algorithm>
#include <cmath>

#include "chart/parts/movable_boxes.h"
#include "chart/record/canvas.h"

namespace tavlo {

namespace {

constexpr double longest_shape = 5;
constexpr double longest_side = 32767;  // what a metafile's header can say

/// One direction of the chart: the box and the plot in it.
struct Side {
  std::int32_t& box;
  std::int32_t& plot_begin;
  std::int32_t& plot;
};

/// Moves along one direction with the plot.
class Move {
 public:
  /// The margins keep their widths, unless the plot would lose more than half.
  Move(const Side& side, double length) : from_(side.plot_begin), length_(side.plot) {
    constexpr double least_share = 0.4;
    const double margins = static_cast<double>(side.box) - side.plot;
    const double kept = std::min(1.0, (1.0 - least_share) * length / margins);
    to_ = from_ * kept;
    factor_ = (length - margins * kept) / length_;
    side.plot_begin = to_unit(to_);
    side.plot = to_unit(length_ * factor_);
    side.box = to_unit(length);
  }

  template <class Number>
  void operator()(Number& at) const {
    const double moved = to_ + (static_cast<double>(at) - from_) * factor_;
    if constexpr (std::is_integral_v<Number>)
      at = to_unit(moved);
    else
      at = static_cast<Number>(moved);
  }

 private:
  double from_, length_;
  double to_ = 0;
  double factor_ = 1;
};

void move_item(ChartItem& item, const Move& across, const Move& down) {
  across(item.Left);
  down(item.Top);
  for (float& x : item.PointsX) across(x);
  for (float& y : item.PointsY) down(y);
}

bool has_margins(const ChartItem& box, const ChartItem& plot) {
  return plot.Width > 0 && plot.Height > 0 && plot.Left >= 0 && plot.Top >= 0 &&
         plot.Width < box.Width && plot.Height < box.Height;
}

}  // namespace

void give_shape(Chart& chart, int width, int height) {
  ChartItem& box = chart.Boxes(chart_item::chart_box);
  ChartItem& plot = chart.Boxes(chart_item::plot_box);
  if (width <= 0 || height <= 0 || !has_margins(box, plot)) return;
  const double wanted = static_cast<double>(width) / height;
  const double shape = std::clamp(wanted, 1 / longest_shape, longest_shape);
  const double area = static_cast<double>(box.Width) * box.Height;
  const double wide = std::min(longest_side, std::sqrt(area * shape));
  const double high = std::min(longest_side, wide / shape);
  const bool legend_moved = has_own_place(chart, chart_item::legend);
  const bool parameters_moved = has_own_place(chart, chart_item::parameter_box);
  const Move across({box.Width, plot.Left, plot.Width}, wide);
  const Move down({box.Height, plot.Top, plot.Height}, high);
  if (legend_moved) move_item(chart.Boxes(chart_item::legend), across, down);
  if (parameters_moved) move_item(chart.Boxes(chart_item::parameter_box), across, down);
  if (!parameters_moved) free_box(chart, chart_item::parameter_box);
  for (int i = 1; i <= chart.Texts.bound(); ++i) move_item(chart.Texts(i), across, down);
}

}  // namespace tavlo
