#include "chart/compose/zoom.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "chart/compose/unheard_reports.h"
#include "chart/scales/plot_coordinates.h"

namespace tavlo {

using drawing::Place;

namespace {

/// Limits nearer to one another than this, by their size on the axis, leave no
/// room for ticks between them.
constexpr double least_range = 1e-10;

/// A part of an axis between two places along it.
struct Part {
  double begin;
  double end;
  double length() const { return end - begin; }
};

Part part_of(std::int32_t a, std::int32_t b, const Extent& extent) {
  const auto held = [&](std::int32_t at) {
    return std::clamp<double>(at, extent.begin, extent.end);
  };
  return {held(std::min(a, b)), held(std::max(a, b))};
}

std::optional<Limits> limits_of(const AxisMap& map, const Part& part) {
  const double a = map.read(part.begin);
  const double b = map.read(part.end);
  const Limits limits{std::min(a, b), std::max(a, b)};
  if (!has_place(map.code(), limits.low) || !has_place(map.code(), limits.high))
    return std::nullopt;
  const double low = map.transform(limits.low);
  const double high = map.transform(limits.high);
  const double size = std::max({std::fabs(low), std::fabs(high), 1e-300});
  if (!(high - low > least_range * size)) return std::nullopt;
  return limits;
}

void hold(ChartAxis& axis, const Limits& limits) {
  axis.AutoMin = false;
  axis.AutoMax = false;
  axis.Min = limits.low;
  axis.Max = limits.high;
}

/// The limits of both axes for a part of the plot box; none when it is too small.
std::optional<std::pair<Limits, Limits>> zoomed(const Chart& chart, Place corner, Place opposite,
                                                double shortest) {
  const ChartItem& plot = chart.Boxes(chart_item::plot_box);
  const Extent across = x_extent(plot);
  const Extent down = y_extent(plot);
  const Part x_part = part_of(corner.x, opposite.x, across);
  const Part y_part = part_of(corner.y, opposite.y, down);
  if (x_part.length() < shortest || y_part.length() < shortest) return std::nullopt;
  UnheardReports unheard;
  const AxisMap x = AxisMap::x(unheard.errors, plot, chart.Axes(0));
  const AxisMap y = AxisMap::y(unheard.errors, plot, chart.Axes(1));
  const auto x_limits = limits_of(x, x_part);
  const auto y_limits = limits_of(y, y_part);
  if (!x_limits || !y_limits) return std::nullopt;
  return std::pair{*x_limits, *y_limits};
}

}  // namespace

ZoomStack::View ZoomStack::view_of(const Chart& chart) {
  const auto axis_view = [&](int index) {
    const ChartAxis& axis = chart.Axes(index);
    return AxisView{axis.AutoMax, axis.AutoMin, axis.Max, axis.Min, axis.ScaleType};
  };
  return {axis_view(0), axis_view(1)};
}

void ZoomStack::restore(Chart& chart, const View& view) {
  for (int i = 0; i < 2; ++i) {
    const AxisView& from = view[static_cast<std::size_t>(i)];
    ChartAxis& axis = chart.Axes(i);
    axis.AutoMax = from.auto_max;
    axis.AutoMin = from.auto_min;
    axis.Max = from.max;
    axis.Min = from.min;
  }
}

bool ZoomStack::push(Chart& chart, Place corner, Place opposite, double shortest) {
  try {
    const auto limits = zoomed(chart, corner, opposite, shortest);
    if (!limits) return false;
    views_.push_back(view_of(chart));
    hold(chart.Axes(0), limits->first);
    hold(chart.Axes(1), limits->second);
    left_ = view_of(chart);
    return true;
  } catch (const RunTimeError&) {  // axes that nothing is drawn on
    return false;
  }
}

bool ZoomStack::pop(Chart& chart) {
  if (views_.empty()) return false;
  restore(chart, views_.back());
  views_.pop_back();
  left_ = view_of(chart);
  return true;
}

bool ZoomStack::all_out(Chart& chart) {
  if (views_.empty()) return false;
  restore(chart, views_.front());
  views_.clear();
  return true;
}

void ZoomStack::forget_if_changed(const Chart& chart) {
  if (view_of(chart) != left_) views_.clear();
}

void ZoomStack::to_automatic(Chart& chart) {
  views_.clear();
  for (ChartAxis& axis : chart.Axes) axis.AutoMin = axis.AutoMax = true;
}

}  // namespace tavlo
