#include "chart/compose/zoom.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "chart/scales/chart_view.h"
#include "chart/scales/plot_coordinates.h"
#include "numerics/unheard_reports.h"

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

std::optional<Limits> in_order(const AxisMap& map, double a, double b) {
  const Limits limits{std::min(a, b), std::max(a, b)};
  if (!has_place(map.code(), limits.low) || !has_place(map.code(), limits.high))
    return std::nullopt;
  const double low = map.transform(limits.low);
  const double high = map.transform(limits.high);
  const double size = std::max({std::fabs(low), std::fabs(high), 1e-300});
  if (!(high - low > least_range * size)) return std::nullopt;
  return limits;
}

std::optional<Limits> limits_of(const AxisMap& map, const Part& part) {
  return in_order(map, map.read(part.begin), map.read(part.end));
}

/// How far a view can be taken: beyond it labels and places lose their digits.
bool is_readable(int code, Limits limits) {
  constexpr double nearest_to_certain = 1e-10;
  constexpr double farthest = 1e30;
  if (is_probability_scale(code))
    return limits.low >= nearest_to_certain && limits.high <= 1.0 - nearest_to_certain;
  if (needs_positive(code)) return limits.low >= 1.0 / farthest && limits.high <= farthest;
  return limits.low >= -farthest && limits.high <= farthest;
}

/// The limits where the axis shows another part, `shift` up its scale of what is `factor`
/// times as long about the place. Out of reach only where it leads further out.
std::optional<Limits> moved(const AxisMap& map, double about, double factor, double shift) {
  if (factor == 1.0 && shift == 0.0) return map.limits();
  const double low = about + (map.low() - about) * factor + shift;
  const double high = about + (map.high() - about) * factor + shift;
  const auto limits = in_order(map, map.inverse(low), map.inverse(high));
  if (!limits || (!is_readable(map.code(), *limits) && factor >= 1.0)) return std::nullopt;
  return limits;
}

/// Where on its scale a place lies that is held within the plot box.
double on_scale(const AxisMap& map, double place) { return map.transform(map.read(place)); }

/// Sets the limits that `find` has for each axis; false where there are none for one.
template <class Find>
bool show(Chart& chart, ZoomStep step, const Find& find) {
  try {
    const ChartItem& plot = chart.Boxes(chart_item::plot_box);
    UnheardReports unheard;
    const auto x = find(AxisMap::x(unheard.errors, plot, chart.Axes(0)), false);
    const auto y = find(AxisMap::y(unheard.errors, plot, chart.Axes(1)), true);
    if (!x || !y) return false;
    const bool goes_on = step == ZoomStep::last && zoom_depth(chart) > 0;
    (goes_on ? zoom_on_to : zoom_to)(chart, *x, *y);
    return true;
  } catch (const RunTimeError&) {  // axes that nothing is drawn on
    return false;
  }
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

bool zoom_in(Chart& chart, Place corner, Place opposite, double shortest) {
  try {
    const auto limits = zoomed(chart, corner, opposite, shortest);
    if (limits) zoom_to(chart, limits->first, limits->second);
    return limits.has_value();
  } catch (const RunTimeError&) {  // axes that nothing is drawn on
    return false;
  }
}

bool zoom_about(Chart& chart, Place at, double x, double y, ZoomStep step) {
  return show(chart, step, [&](const AxisMap& map, bool is_y) {
    return moved(map, on_scale(map, is_y ? at.y : at.x), is_y ? y : x, 0);
  });
}

bool pan(Chart& chart, Place from, Place to, ZoomStep step) {
  return show(chart, step, [&](const AxisMap& map, bool is_y) {
    const double shift = on_scale(map, is_y ? from.y : from.x) - on_scale(map, is_y ? to.y : to.x);
    return moved(map, 0, 1, shift);
  });
}

}  // namespace tavlo
