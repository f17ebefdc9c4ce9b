#include "chart/compose/zoom.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "chart/compose/unheard_reports.h"
#include "chart/scales/chart_view.h"
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

}  // namespace tavlo
