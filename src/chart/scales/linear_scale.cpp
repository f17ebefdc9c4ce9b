// The linear generator of scale points. Ticks are computed from whole-number
// multiples of the step, never by adding it up: 0 comes out as exactly 0.
#include <cmath>

#include "chart/scales/scale_points.h"
#include "numerics/rounding.h"
#include "numerics/run_time_error.h"

namespace tavlo::detail {

namespace {

/// A major step u x 10^e with u = 1, 2 or 5.
struct Step {
  double exponent = 0;
  int digit = 1;
  double size() const { return digit * decade(exponent); }
};

[[noreturn]] void fail() { throw RunTimeError(run_time::overflow); }

/// The step that leaves more than one and fewer than 20 intervals, thinned to 2
/// or 5 units where there are many. A reversed range never gets there and fails.
Step first_step(double range) {
  Step step{IntFloor(std::log10(std::fabs(range * 0.2))), 1};
  if (!std::isfinite(step.exponent)) throw RunTimeError(run_time::division_by_zero);
  double intervals = range / step.size();
  while (intervals <= 1.0 || intervals >= 20.0) {
    step.exponent += intervals <= 1.0 ? -1.0 : 1.0;
    intervals = range / step.size();
    if (step.size() == 0.0 || !std::isfinite(intervals)) fail();
  }
  if (intervals >= 13.0) {
    step.digit = 5;
  } else if (intervals > 6.0) {
    step.digit = 2;
  }
  return step;
}

/// 5, 2, 1, then 5 of the next lower decade.
Step next_lower(Step step) {
  if (step.digit == 1) return {step.exponent - 1.0, 5};
  return {step.exponent, step.digit == 5 ? 2 : 1};
}

double base_below(double min, double step) {
  const double base = IntFloor(min / step) * step;
  return base > min ? base - step : base;
}

/// Whether a tick stands between the limits, and not on one but for the noise of binary
/// fractions: -0.01 + 15 x 0.001 is a little below 0.005.
bool is_between(double value, double min, double max, double step) {
  const double noise = 1e-9 * step;
  return value > min + noise && value < max - noise;
}

/// Walks of a step that rounding swallows would never end.
void check_advance(double base, double step) {
  if (!std::isfinite(base) || !(base + step > base)) fail();
}

Slots<double> majors(double base, double step, double min, double max) {
  check_advance(base, step);
  Slots<double> list;
  list(0) = base;
  for (double k = 1; base + k * step < max; ++k)
    if (is_between(base + k * step, min, max, step)) list.push_back(base + k * step);
  return list;
}

/// How an interval between majors is divided: small steps a major, and which of
/// them are medium (512 is never).
struct Division {
  double step;
  int major;
  int medium;
};

Division division_of(const Step& step) {
  if (step.digit == 2) return {step.size() / 4.0, 4, 2};
  return {step.size() / 5.0, 5, 512};
}

void add_lesser(ScalePoints& points, const Division& division, double min, double max) {
  const double base = points.major(0);
  check_advance(base, division.step);
  points.minor(0) = division.step;
  for (int i = 0; base + i * division.step < max; ++i) {
    const double value = base + i * division.step;
    if (!is_between(value, min, max, division.step) || i % division.major == 0) continue;
    (i % division.medium == 0 ? points.medium : points.minor).push_back(value);
  }
}

/// A medium tick more than half way from the last major to the top gets a label.
/// Without mediums slot 0 is read, which makes 0 a major above an all-negative
/// axis: kept on purpose; the grid is clipped to the plot.
void promote_top(ScalePoints& points, double max) {
  const double last = points.major(points.major.bound());
  const double candidate = points.medium(points.medium.bound());
  if (!((candidate - last) / (max - last) > 0.5)) return;
  points.major.push_back(candidate);
  if (points.medium.bound() >= 1) points.medium.resize(points.medium.bound() - 1);
}

void fill(ScalePoints& points, double min, double max) {
  Step step = first_step(max - min);
  for (;; step = next_lower(step)) {
    points.major = majors(base_below(min, step.size()), step.size(), min, max);
    if (points.major.bound() > 2) break;
  }
  add_lesser(points, division_of(step), min, max);
  promote_top(points, max);
}

}  // namespace

ScalePoints linear_scale(ErrorReporter& reporter, double min, double max) {
  return guarded(reporter, ScalePoints{}, scale_words(), [&] {
    ScalePoints points;
    fill(points, min, max);
    return points;
  });
}

}  // namespace tavlo::detail
