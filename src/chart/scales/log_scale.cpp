// The logarithmic generator of scale points. Limits at or below 0 are read by
// their size, as the base 10 logarithm of this program does.
#include <array>
#include <cmath>

#include "chart/scales/scale_points.h"
#include "numerics/elementary.h"
#include "numerics/rounding.h"

namespace tavlo::detail {

namespace {

constexpr int never = 512;

/// Range of an axis in decades, shrunk by a thousandth at each end so that the
/// limits themselves are no ticks.
struct Decades {
  double low;
  double high;
  double range() const { return high - low; }
};

Decades shrunk(ErrorReporter& reporter, double min, double max) {
  Decades span{fd_log10(reporter, min), fd_log10(reporter, max)};
  span.low += span.range() * 0.001;
  span.high -= span.range() * 0.001;
  return span;
}

/// The first of 1, 3, 9, 27 ... that leaves fewer than 9 whole steps.
int first_step(const Decades& span) {
  int step = 1;
  while (IntFloor(span.range() / step) >= 9.0) step *= 3;
  return step;
}

/// The multiple of the step at or below the lower end.
int first_decade(const Decades& span, int step) {
  const int floor = ToInt32(IntFloor(span.low));
  const int multiple = floor - floor % step;
  return multiple > floor ? multiple - step : multiple;
}

Slots<double> decade_majors(const Decades& span, int step) {
  Slots<double> list;
  for (int k = first_decade(span, step) + step; k < span.high; k += step)
    if (k > span.low) list.push_back(decade(k));
  return list;
}

/// Moduli that pick medium and minor ticks among the multipliers 2 to 10.
struct Moduli {
  int medium;
  int minor;
};

Moduli moduli_of(int step, int count) {
  if (step >= 9) return {10, 10};
  if (count >= 3 && step >= 3) return {never, 10};
  if (step >= 3) return {10, 5};
  if (count >= 9) return {never, 5};
  if (count >= 4) return {never, 2};
  return {5, 1};
}

/// Where i x 10^k belongs; `index` counts the decades from 1. Null is nowhere.
Slots<double>* list_for(ScalePoints& points, int i, int index, int step, Moduli moduli) {
  if (i == 10 && index % step == 0) return nullptr;  // a major stands there
  if (i % moduli.medium == 0) return step >= 9 && index % 3 != 0 ? &points.minor : &points.medium;
  return i % moduli.minor == 0 ? &points.minor : nullptr;
}

void add_lesser(ScalePoints& points, const Decades& span, int step) {
  const Moduli moduli = moduli_of(step, points.major.bound());
  int k = first_decade(span, step);
  int index = 1;
  for (; k + 1 < span.low; ++k) ++index;
  for (;; ++k, ++index) {
    for (int i = 2; i <= 10; ++i) {
      const double at = k + std::log10(i);
      if (at <= span.low) continue;
      if (at >= span.high) return;
      if (Slots<double>* list = list_for(points, i, index, step, moduli))
        list->push_back(i * decade(k));
    }
  }
}

/// Multipliers of every decade: from `first` in steps of `step` up to `last`.
struct Multipliers {
  double first;
  double step;
  double last;
};
constexpr Multipliers even{2.0, 2.0, 10.0};
constexpr Multipliers odd{1.0, 2.0, 9.01};
constexpr Multipliers halves{1.5, 1.0, 9.51};

Slots<double> multiples(const Decades& span, const Multipliers& by, double min, double max) {
  Slots<double> list;
  for (int k = ToInt32(IntFloor(span.low)); k < span.high; ++k)
    for (double factor = by.first; factor <= by.last; factor += by.step)
      if (factor * decade(k) > min && factor * decade(k) < max) list.push_back(factor * decade(k));
  return list;
}

/// One to two decades: decades alone would leave the axis bare.
ScalePoints fine_scale(const Decades& span, double min, double max) {
  ScalePoints points;
  points.major = multiples(span, even, min, max);
  if (span.range() >= 1.5) {
    points.minor = multiples(span, odd, min, max);
  } else {
    points.medium = multiples(span, odd, min, max);
    points.minor = multiples(span, halves, min, max);
  }
  return points;
}

ScalePoints decade_scale(const Decades& span, double min, double max) {
  ScalePoints points;
  for (int step = first_step(span);; step = step >= 4 ? step / 3 : 1) {
    points.major = decade_majors(span, step);
    const int count = points.major.bound();
    if (count > 2 || (count == 2 && span.range() / step > 2.0)) {
      add_lesser(points, span, step);
      return points;
    }
    if (step == 1) return fine_scale(span, min, max);
  }
}

}  // namespace

ScalePoints log_scale(ErrorReporter& reporter, double min, double max) {
  return guarded(reporter, ScalePoints{}, scale_words(), [&] {
    const Decades span = shrunk(reporter, min, max);
    return span.range() < 1.0 ? linear_scale(reporter, min, max) : decade_scale(span, min, max);
  });
}

}  // namespace tavlo::detail
