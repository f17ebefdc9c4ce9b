#include "chart/scales/limit_rules.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "life/models.h"
#include "life/weibull_ordinate.h"
#include "numerics/elementary.h"
#include "numerics/real.h"
#include "numerics/rounding.h"

namespace tavlo {

namespace {

constexpr int most_steps = 700;  // a double spans 632 decades
constexpr double lowest_fraction = 1e-8;
constexpr double highest_fraction = 0.99999999;

/// 10 to the whole part of the logarithm: the decade of a positive value.
double decade_of(ErrorReporter& reporter, double value) {
  return std::pow(10.0, IntFloor(fd_log10(reporter, value)));
}

double two_figures(ErrorReporter& reporter, double value) {
  return fd_Round(reporter, value, 2).value;
}

/// A lower limit rounded to two figures, unless that moves it into the data or,
/// below 1e-300, to 0.
double rounded_below(ErrorReporter& reporter, double limit, double data) {
  const double rounded = two_figures(reporter, limit);
  return rounded <= data && (rounded != 0.0 || limit < 0.0) ? rounded : limit;
}

double rounded_above(ErrorReporter& reporter, double limit, double data) {
  const double rounded = two_figures(reporter, limit);
  return rounded >= data ? rounded : limit;
}

/// The highest multiple of `unit` that is not above `low`, as a multiple.
double multiple_below(double low, double unit) {
  double k = IntFloor(low / unit - 1.0);
  while ((k + 1.0) * unit <= low) ++k;
  return k;
}

/// A multiple of `unit` at or above `high`. One that starts above it ends one
/// step higher, so that a chart from 10 to 100 reaches to 110: kept on purpose.
double multiple_above(double high, double low_multiple, double unit) {
  const double start = (IntFloor(high / unit) + low_multiple) * unit;
  if (start == high) return high;
  double k = IntFloor(high / unit);
  while (start < high ? k * unit < high : k * unit <= high) ++k;
  return k * unit;
}

Limits linear_rule(ErrorReporter& reporter, Limits data, double zone) {
  const double range = finite(data.high - data.low);
  const double unit = decade_of(reporter, range);
  const double largest = std::max(std::fabs(data.low), std::fabs(data.high));
  if (unit < 4.0 * (std::nextafter(largest, std::numeric_limits<double>::infinity()) - largest))
    throw RunTimeError(run_time::overflow);
  const double low_multiple = multiple_below(data.low, unit);
  Limits limits{low_multiple * unit, multiple_above(data.high, low_multiple, unit)};
  const double margin = range * zone;
  if (data.low - limits.low < margin)
    limits.low = rounded_below(reporter, data.low - margin, data.low);
  if (limits.high - data.high < margin)
    limits.high = rounded_above(reporter, data.high + margin, data.high);
  return limits;
}

/// The decade at or below a value; a value within 1e-5 below ten times it stays.
double decade_below(ErrorReporter& reporter, double value) {
  double decade = decade_of(reporter, value);
  for (int i = 0; decade > value && i < most_steps; ++i) decade *= 0.1;
  for (int i = 0; 10.0001 * decade < value && i < most_steps; ++i) decade *= 10.0;
  return decade;
}

double decade_above(ErrorReporter& reporter, double value) {
  double decade = decade_of(reporter, value);
  for (int i = 0; decade < value && i < most_steps; ++i) decade *= 10.0;
  for (int i = 0; 10.0001 * value < decade && i < most_steps; ++i) decade *= 0.1;
  return decade;
}

Limits positive_range(Limits data) {
  if (data.low <= 0.0) data.low = 1e-6;
  if (data.high <= 0.0) data.high = 1e-5;
  data.low = std::clamp(data.low, 1e-300, 1e300);
  data.high = std::clamp(data.high, 1e-300, 1e300);
  if (data.low == data.high) return {data.low * 0.95, data.high * 1.05};
  if (data.high < data.low) std::swap(data.low, data.high);
  return data;
}

Limits log_rule(ErrorReporter& reporter, Limits data, double zone) {
  data = positive_range(data);
  Limits limits{decade_below(reporter, data.low), decade_above(reporter, data.high)};
  const double low = fd_log10(reporter, data.low);
  const double high = fd_log10(reporter, data.high);
  const double margin = (high - low) * zone;
  if (low - fd_log10(reporter, limits.low) < margin)
    limits.low = rounded_below(reporter, std::pow(10.0, low - margin), data.low);
  if (fd_log10(reporter, limits.high) - high < margin)
    limits.high = rounded_above(reporter, std::pow(10.0, high + margin), data.high);
  return limits;
}

/// Both ends inside (0, 1) and in order.
Limits fraction_range(Limits range) {
  if (range.high >= 1.0) range.high = 0.999999;
  if (range.high <= 0.0) range.high = 1e-5;
  if (range.low >= 1.0) range.low = 0.99999;
  if (range.low <= 0.0) range.low = 1e-6;
  if (range.low == range.high) return {0.01, 0.99};
  if (range.high < range.low) std::swap(range.low, range.high);
  return range;
}

double fraction_below(ErrorReporter& reporter, double low) {
  const double limit = decade_of(reporter, low * 10.000001) * 0.1;
  if (limit >= 0.9) return 0.9;
  return limit < 0.1 ? decade_of(reporter, low) : limit;
}

double fraction_above(ErrorReporter& reporter, double high) {
  const double limit = decade_of(reporter, high * 10.000001) * 0.1;
  if (limit <= 0.9) return limit;
  return 1.0 - std::pow(10.0, IntFloor(fd_log10(reporter, 1.0 - high) + 1e-15));
}

double fraction_at(double weibull_place) { return -std::expm1(-std::exp(weibull_place)); }

Limits probability_rule(ErrorReporter& reporter, Limits data, double zone) {
  data = fraction_range(data);
  Limits limits =
      fraction_range({fraction_below(reporter, data.low), fraction_above(reporter, data.high)});
  const double low = fd_WblY(data.low);
  const double high = fd_WblY(data.high);
  const double margin = (high - low) * zone;
  if (low - fd_WblY(limits.low) < margin)
    limits.low = rounded_below(reporter, fraction_at(low - margin), data.low);
  if (fd_WblY(limits.high) - high < margin)
    limits.high = rounded_above(reporter, fraction_at(high + margin), data.high);
  return {std::clamp(limits.low, lowest_fraction, highest_fraction),
          std::clamp(limits.high, lowest_fraction, highest_fraction)};
}

}  // namespace

Limits usable_range(Limits data) {
  if (data.low > data.high) return {data.high, data.low};
  if (data.low < data.high) return data;
  if (data.low == 0.0) return {-0.5, 0.5};
  return data.low < 0.0 ? Limits{data.low * 1.05, data.high * 0.95}
                        : Limits{data.low * 0.95, data.high * 1.05};
}

Limits round_limits(ErrorReporter& reporter, int code, Limits data, double zone) {
  finite(data.low);
  finite(data.high);
  if (is_probability_scale(code)) return probability_rule(reporter, data, zone);
  if (code == x_scale::linear || code == y_scale::linear || code == y_scale::density)
    return linear_rule(reporter, data, zone);
  return log_rule(reporter, data, zone);
}

}  // namespace tavlo
