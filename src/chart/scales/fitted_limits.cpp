#include "chart/scales/fitted_limits.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "chart/scales/limit_rules.h"
#include "life/models.h"
#include "life/weibull_ordinate.h"

namespace tavlo {

namespace {

constexpr double round_tops[] = {0.1,     0.2,     0.3,      0.5,      0.7,       0.9,
                                 0.95,    0.99,    0.995,    0.999,    0.9995,    0.9999,
                                 0.99995, 0.99999, 0.999995, 0.999999, 0.9999995, 0.9999999};

bool is_tenth(double fraction) {
  return std::fabs(10 * fraction - std::round(10 * fraction)) < 1e-9;
}

/// The lowest round top that leaves a margin above the data. A tenth is round enough
/// where it does, and so is the 99 % that complete samples have had always.
double top_above(double stated, Limits data, double zone) {
  constexpr double usual_top = 0.99;
  constexpr double complete = 0.7;  // at the least is the largest rank of all failures
  constexpr double widest = 6;      // of a range that the margin grows with, in ln(-ln(1 - F))
  if (!(data.low > 0.0 && data.high < 1.0)) return stated;
  const double high = fd_WblY(data.high);
  const double margin = zone * std::min(high - fd_WblY(data.low), widest);
  const bool is_round = is_tenth(stated) || (stated == usual_top && data.high > complete);
  if (is_round && stated < 1.0 && fd_WblY(stated) >= high + 0.99 * margin) return stated;
  const auto top = std::find_if(std::begin(round_tops), std::end(round_tops),
                                [=](double each) { return fd_WblY(each) >= high + 1.5 * margin; });
  return top == std::end(round_tops) ? stated : *top;
}

double step_below(double size) {
  const double decade = std::pow(10.0, std::floor(std::log10(size)));
  for (const double digit : {5.0, 2.0})
    if (digit * decade <= size) return digit * decade;
  return decade;
}

/// A tenth or the highest of 1, 2, 5 ... that isn't above.
double bottom_below(double stated) {
  constexpr double noise = 1e-9;
  return is_tenth(stated) && stated > 0.05 ? stated : step_below(stated * (1 + noise));
}

/// Multiples of a step around the data. A scale that needs them stays above 0.
Limits in_steps(Limits data, double zone) {
  constexpr double steps = 10;  // at the least
  const double range = data.high - data.low;
  const double margin = 1.5 * zone * range;
  const double step = step_below(range / steps);
  const double low = std::floor((data.low - margin) / step) * step;
  return {data.low > 0.0 ? std::max(low, 0.0) : low, std::ceil((data.high + margin) / step) * step};
}

/// The highest of 1, 2, 5, 10 ... that isn't above the value.
double round_below(double value) { return step_below(value); }
double round_above(double value) {
  const double below = step_below(value);
  if (below == value) return value;
  const double digit = std::round(below / std::pow(10.0, std::floor(std::log10(below))));
  return digit == 2.0 ? below * 2.5 : below * 2.0;
}

Limits at_round_values(Limits data, double zone) {
  const double margin = std::pow(data.high / data.low, 1.5 * zone);
  return {round_below(data.low / margin), round_above(data.high * margin)};
}

/// Where the value stands on an axis between the limits: 0 to 1.
struct Place {
  Limits limits;
  bool is_log;
  double operator()(double value) const {
    return is_log ? std::log(value / limits.low) / std::log(limits.high / limits.low)
                  : (value - limits.low) / (limits.high - limits.low);
  }
};

bool suits(const Place& place, Limits data, double zone) {
  constexpr double least_share = 1.0 / 3.0;
  const double low = place(data.low);
  const double high = place(data.high);
  return high - low >= least_share && low >= 0.99 * zone && high <= 1.0 - 0.99 * zone;
}

}  // namespace

Limits fitted_limits(ErrorReporter& reporter, int code, Limits data, double zone) {
  constexpr double small_ratio = 3;  // up to it a logarithmic axis looks like a linear one
  const Limits stated = round_limits(reporter, code, data, zone);
  if (is_probability_scale(code))
    return {bottom_below(stated.low), top_above(stated.high, data, zone)};
  const bool is_log = needs_positive(code);
  if ((is_log && !(data.low > 0.0)) || suits({stated, is_log}, data, zone)) return stated;
  const bool by_ratio = is_log && data.high / data.low > small_ratio;
  const Limits fitted = by_ratio ? at_round_values(data, zone) : in_steps(data, zone);
  const bool holds = fitted.low < data.low && fitted.high > data.high &&
                     std::isfinite(fitted.high - fitted.low) && !(is_log && fitted.low <= 0.0);
  return holds ? fitted : stated;
}

}  // namespace tavlo
