#include "chart/scales/plot_coordinates.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "life/models.h"
#include "life/weibull_ordinate.h"
#include "numerics/normal.h"
#include "numerics/real.h"
#include "numerics/rounding.h"

namespace tavlo {

namespace {

constexpr double largest_place = 2147483645.0;

double normal_score(ErrorReporter& reporter, double value) {
  if (!(value > 0.0 && value < 1.0)) throw RunTimeError(run_time::invalid_argument);
  return fd_NormZ(reporter, value);
}

/// `value` if it lies strictly inside, else the stand-in.
double inside_or(double value, double low, double high, double stand_in) {
  return value > low && value < high ? value : stand_in;
}

std::int32_t clamped_place(double place) {
  if (std::isnan(place)) throw RunTimeError(run_time::invalid_argument);
  if (place > largest_place) return static_cast<std::int32_t>(largest_place);
  return place <= 0.0 ? 0 : ToInt32(place);
}

Extent in_order(double begin, double end) {
  if (begin > end) std::swap(begin, end);
  return {begin > 0.0 ? begin : 0.0, end < 1.0 ? 0.0 : end};
}

}  // namespace

int x_scale_of(const ChartAxis& axis) { return axis.ScaleType & x_scale_mask; }
int y_scale_of(const ChartAxis& axis) { return axis.ScaleType & y_scale_mask; }

bool is_probability_scale(int code) {
  return code == y_scale::normal || code == y_scale::weibull || code == y_scale::gumbel;
}

bool needs_positive(int code) {
  return code == x_scale::log || code == y_scale::log || is_probability_scale(code);
}

bool has_place(int code, double value) {
  if (!std::isfinite(value)) return false;
  if (is_probability_scale(code)) return value > 0.0 && value < 1.0;
  return value > 0.0 || !needs_positive(code);
}

double scale_transform(ErrorReporter& reporter, int code, double value) {
  switch (code) {
    case x_scale::linear:
    case y_scale::linear: return finite(value);
    case x_scale::log:
    case y_scale::log: return ln(Real(value)).value();
    case y_scale::normal: return normal_score(reporter, value);
    case y_scale::weibull: return fd_WblY(value);
    case y_scale::gumbel: return -ln(-ln(Real(value))).value();
    default: throw RunTimeError(run_time::invalid_argument);
  }
}

double scale_inverse(ErrorReporter& reporter, int code, double place) {
  switch (code) {
    case x_scale::linear:
    case y_scale::linear: return place;
    case x_scale::log:
    case y_scale::log: return exp(Real(place)).value();
    case y_scale::normal: return fd_NormCDF(reporter, place);
    case y_scale::weibull:
    case y_scale::density: return -std::expm1(-std::exp(place));
    case y_scale::gumbel: return std::exp(-std::exp(-place));
    default: throw RunTimeError(run_time::invalid_argument);
  }
}

Limits GuardedLimits(const ChartAxis& axis, int code) {
  Limits limits{std::min(axis.Min, axis.Max), std::max(axis.Min, axis.Max)};
  if (limits.low == limits.high) limits.low *= 0.95;
  if (code == x_scale::linear || code == y_scale::linear) return limits;
  if (code == y_scale::weibull || code == y_scale::gumbel) {
    limits = {inside_or(limits.low, 0.0, 1.0, 0.01), inside_or(limits.high, 0.0, 1.0, 0.99)};
  } else if (needs_positive(code)) {
    limits = {limits.low > 0.0 ? limits.low : 1e-6, limits.high > 0.0 ? limits.high : 1000.0};
  }
  if (limits.high < limits.low) std::swap(limits.low, limits.high);
  return limits;
}

Extent x_extent(const ChartItem& plot_box) {
  return in_order(plot_box.Left, static_cast<double>(plot_box.Left) + plot_box.Width);
}

Extent y_extent(const ChartItem& plot_box) {
  return in_order(plot_box.Top, static_cast<double>(plot_box.Top) + plot_box.Height);
}

AxisMap::AxisMap(ErrorReporter& reporter, int code, const ChartAxis& axis)
    : reporter_(reporter), code_(code), limits_(GuardedLimits(axis, code)) {
  low_ = transform(limits_.low);
  high_ = transform(limits_.high);
}

void AxisMap::span(Extent extent) {
  begin_ = extent.begin;
  end_ = extent.end;
  factor_ = (Real(extent.length()) / (Real(high_) - Real(low_))).value();
}

AxisMap AxisMap::x(ErrorReporter& reporter, const ChartItem& plot_box, const ChartAxis& axis) {
  AxisMap map(reporter, x_scale_of(axis), axis);
  map.span(x_extent(plot_box));
  map.origin_ = map.low_;
  return map;
}

AxisMap AxisMap::y(ErrorReporter& reporter, const ChartItem& plot_box, const ChartAxis& axis) {
  AxisMap map(reporter, y_scale_of(axis), axis);
  map.span(y_extent(plot_box));
  map.factor_ = -map.factor_;
  map.origin_ = map.high_;
  return map;
}

AxisMap AxisMap::readable_y(ErrorReporter& reporter, const ChartItem& plot_box, ChartAxis axis) {
  if (y_scale_of(axis) == y_scale::density) axis.ScaleType = y_scale::weibull;
  return y(reporter, plot_box, axis);
}

std::int32_t AxisMap::held(double place) const {
  return clamped_place(std::clamp(place, begin_, end_));
}

double AxisMap::read(double place) const {
  const bool upward = factor_ < 0.0;
  if (place <= begin_) return upward ? limits_.high : limits_.low;
  if (place >= end_) return upward ? limits_.low : limits_.high;
  return inverse((Real(place - begin_) / factor_ + origin_).value());
}

double AxisMap::transform(double value) const { return scale_transform(reporter_, code_, value); }

double AxisMap::inverse(double place) const { return scale_inverse(reporter_, code_, place); }

std::int32_t AxisMap::operator()(double value) const {
  return clamped_place((transform(value) - origin_) * factor_ + begin_);
}

namespace {

/// The box that a code without a drawing asks for, in the place that finds it
/// first; empty when the code is drawn.
std::string undrawn_code(int x_code, int y_code) {
  if (x_code != x_scale::linear && x_code != x_scale::log) return "Undefined Xscale in xy2long";
  if (y_code == y_scale::density) return "pdf plot TBD.  Working ";
  if (y_code != y_scale::linear && y_code != y_scale::log && !is_probability_scale(y_code))
    return "Undefined Yscale in xy2long";
  return {};
}

/// An axis without a range is widened downward, for good.
void widen(ChartAxis& axis) {
  if (axis.Min == axis.Max) axis.Min *= 0.95;
}

void map_all(const AxisMap& map, std::vector<drawing::Place>& places,
             const std::vector<DataPair>& pairs, std::int32_t drawing::Place::*place,
             double DataPair::*value) {
  const std::size_t count = std::min(places.size(), pairs.size());
  for (std::size_t i = 0; i < count; ++i) places[i].*place = map(pairs[i].*value);
}

}  // namespace

void xy2Long(ErrorReporter& reporter, Prompts& prompts, const ChartItem& plot_box,
             ChartAxis& x_axis, ChartAxis& y_axis, std::vector<drawing::Place>& places,
             const std::vector<DataPair>& pairs) {
  const std::string undrawn = undrawn_code(x_scale_of(x_axis), y_scale_of(y_axis));
  if (!undrawn.empty()) {
    prompts.show({"", undrawn});
    return;
  }
  guarded(reporter, error_words("Error calculating Plot Scale values: ", "xy2Long routine:"), [&] {
    const AxisMap x = AxisMap::x(reporter, plot_box, x_axis);
    const AxisMap y = AxisMap::y(reporter, plot_box, y_axis);
    widen(x_axis);
    widen(y_axis);
    map_all(x, places, pairs, &drawing::Place::x, &DataPair::x);
    map_all(y, places, pairs, &drawing::Place::y, &DataPair::y);
  });
}

}  // namespace tavlo
