#include "chart/scales/scale_points.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

#include "numerics/real.h"

namespace tavlo {

namespace {

// In order of importance: labels are placed in this order, the first come first.
constexpr std::array<double, 21> normal_levels = {
    0.5,     0.3,      0.7,      0.1,       0.9,       0.05,       0.95,
    0.01,    0.99,     0.001,    0.999,     0.0001,    0.9999,     0.00001,
    0.99999, 0.000001, 0.999999, 0.0000001, 0.9999999, 0.00000001, 0.99999999};

constexpr std::array<double, 21> weibull_levels = {
    0.5,      0.3,      0.7,     0.1,     0.9,        0.01,       0.05,
    0.95,     0.99,     0.02,    0.0001,  0.9999,     0.001,      0.999,
    0.000001, 0.999999, 0.00001, 0.99999, 0.00000001, 0.99999999, 0.0000001};

// 0.000005 and its complement stand twice and 0.0000005 not at all: kept, the
// charts of many reports show exactly these ticks.
constexpr std::array<double, 18> lesser_levels = {
    0.4,    0.6,     0.2,     0.8,      0.02,     0.98,     0.005,    0.995,      0.0005,
    0.9995, 0.00005, 0.99995, 0.000005, 0.999995, 0.000005, 0.999995, 0.00000005, 0.99999995};

void append_inside(std::span<const double> levels, double min, double max, Slots<double>& to) {
  for (const double level : levels)
    if (level > min && level < max) to.push_back(level);
}

}  // namespace

namespace detail {

double decade(double exponent) { return std::pow(10.0, exponent); }

ScalePoints probability_scale(ErrorReporter& reporter, int kind, double min, double max) {
  const double narrow_top = kind == scale_kind::normal ? 0.95 : 0.9;
  if (min >= 0.05 && max <= narrow_top) return linear_scale(reporter, min, max);
  if (max <= 0.2) return log_scale(reporter, min, max);
  // Wholly above 0.8 the limits run downward, which is reported and leaves the axis its two
  // end labels alone: kept on purpose.
  if (min >= 0.8) return log_scale(reporter, 1.0 - min, 1.0 - max);
  ScalePoints points;
  append_inside(kind == scale_kind::normal ? normal_levels : weibull_levels, min, max,
                points.major);
  append_inside(lesser_levels, min, max, points.minor);
  return points;
}

}  // namespace detail

ScalePoints GetScalePoints(ErrorReporter& reporter, int kind, double limit, double other_limit) {
  return guarded(reporter, ScalePoints{}, detail::scale_words(), [&]() -> ScalePoints {
    const double min = std::min(finite(limit), finite(other_limit));
    const double max = std::max(limit, other_limit);
    finite(max - min);
    if (min == max) return {};
    switch (kind) {
      case scale_kind::linear: return detail::linear_scale(reporter, min, max);
      case scale_kind::log: return detail::log_scale(reporter, min, max);
      case scale_kind::normal:
      case scale_kind::weibull: return detail::probability_scale(reporter, kind, min, max);
      default: return {};
    }
  });
}

}  // namespace tavlo
