#include "chart/scales/round_ticks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

#include "life/models.h"

namespace tavlo {

namespace {

using Values = std::vector<double>;

constexpr double slack = 1e-9;  // of the distance: a limit may hold the noise of a binary fraction
constexpr std::size_t fewest = 3;
constexpr double most_tick_steps = 1000;

constexpr std::array<double, 3> one_two_five = {1, 2, 5};
constexpr std::array<double, 1> one = {1};

/// A round number: 1, 2 or 5 times a power of ten, which is exact on either side of 1.
double round_number(double digit, int exponent) {
  return exponent < 0 ? digit / std::pow(10.0, -exponent) : digit * std::pow(10.0, exponent);
}

int exponent_of(double value) { return static_cast<int>(std::floor(std::log10(value))); }

bool is_within(double value, Limits limits) {
  const double margin = slack * (limits.high - limits.low);
  return value >= limits.low - margin && value <= limits.high + margin;
}

/// The same where only the proportion counts.
bool is_within_log(double value, Limits limits) {
  return value >= limits.low * (1 - slack) && value <= limits.high * (1 + slack);
}

/// A tick beyond a limit by the noise of its last digits stands on the limit.
double share_at(const AxisMap& map, double value) {
  const double held = std::clamp(value, map.limits().low, map.limits().high);
  return (map.transform(held) - map.low()) / (map.high() - map.low());
}

bool has_room(const AxisMap& map, const Values& ascending, double room) {
  for (std::size_t i = 1; i < ascending.size(); ++i)
    if (share_at(map, ascending[i]) - share_at(map, ascending[i - 1]) < room) return false;
  return true;
}

// --- equal steps

struct Step {
  int digit = 0;
  int exponent = 0;
  double size() const {
    return round_number(one_two_five[static_cast<std::size_t>(digit)], exponent);
  }
  Step next() const { return digit == 2 ? Step{0, exponent + 1} : Step{digit + 1, exponent}; }
};

Values multiples(Step step, Limits limits) {
  Values values;
  const double size = step.size();
  const double first = std::ceil(limits.low / size - slack);
  const double last = std::floor(limits.high / size + slack);
  if (!(last - first < most_tick_steps) || first + 1 == first) return values;
  const double digit = one_two_five[static_cast<std::size_t>(step.digit)];
  for (double k = first; k <= last; ++k)
    values.push_back(k == 0 ? 0.0 : round_number(k * digit, step.exponent));
  return values;
}

/// The finest equal steps with room, at most ten of them; the last that leave three
/// ticks where all are too close.
Values equal_steps(const AxisMap& map, double room, double& size) {
  const Limits limits = map.limits();
  const double range = limits.high - limits.low;
  Values best;
  if (!(range > 0) || !std::isfinite(range)) return best;
  Step step{0, exponent_of(range / 10)};
  while (range / step.size() > 10) step = step.next();
  for (;; step = step.next()) {
    Values values = multiples(step, limits);
    if (!best.empty() && values.size() < fewest) return best;
    if (values.empty()) return best;
    size = step.size();
    best = std::move(values);
    if (has_room(map, best, room)) return best;
  }
}

ScalePoints linear_points(const AxisMap& map, double room) {
  ScalePoints points;
  double size = 0;
  for (const double value : equal_steps(map, room, size)) points.major.push_back(value);
  points.minor(0) = size;  // tells that the ticks are evenly spaced
  return points;
}

// --- decades

Values in_decades(std::span<const double> digits, int step, Limits limits) {
  Values values;
  const int last = exponent_of(limits.high) + 1;
  int exponent = exponent_of(limits.low) - 1;
  while (exponent % step != 0) --exponent;
  for (; exponent <= last; exponent += step)
    for (const double digit : digits)
      if (const double value = round_number(digit, exponent); is_within_log(value, limits))
        values.push_back(value);
  return values;
}

void append_absent(const Values& from, const Slots<double>& present, Slots<double>& to) {
  for (const double value : from)
    if (std::find(present.begin() + 1, present.end(), value) == present.end()) to.push_back(value);
}

ScalePoints log_points(const AxisMap& map, double room) {
  const Limits limits = map.limits();
  ScalePoints points;
  const auto take = [&](const Values& major, const Values& minor) {
    for (const double value : major) points.major.push_back(value);
    append_absent(minor, points.major, points.minor);
    return points;
  };
  const Values usual = in_decades(one_two_five, 1, limits);
  if (usual.size() < fewest) return linear_points(map, room);
  if (has_room(map, usual, room)) return take(usual, {});
  constexpr int widest = 64;  // decades; a double has 617
  for (int step = 1;; step *= 2) {
    const Values tens = in_decades(one, step, limits);
    if (step < widest && tens.size() > fewest && !has_room(map, tens, room)) continue;
    return take(tens, step == 1 ? usual : in_decades(one, step / 2, limits));
  }
}

// --- percentages

// In order of importance: a level stands where the ones before it leave room.
constexpr std::array<double, 13> failed_levels = {0.1,  0.632, 0.9,  0.01, 0.99, 0.5, 0.001,
                                                  0.05, 0.2,   0.02, 0.3,  0.8,  0.95};
constexpr std::array<double, 13> symmetrical_levels = {0.5,  0.1,  0.9, 0.01, 0.99, 0.3, 0.7,
                                                       0.05, 0.95, 0.2, 0.8,  0.02, 0.98};
constexpr int least_exponent = -15;

/// The levels of the table, then those towards the ends: 1, 2, 5 and their mirror.
Values levels_of(int code, Limits limits) {
  const bool is_weibull = code == y_scale::weibull;
  const auto& table = is_weibull ? failed_levels : symmetrical_levels;
  Values levels(table.begin(), table.end());
  for (const double digit : {1.0, 5.0, 2.0})
    for (int exponent = -3; exponent >= least_exponent; --exponent) {
      levels.push_back(round_number(digit, exponent));
      if (digit == 1.0) levels.push_back(1 - round_number(digit, exponent));
    }
  std::erase_if(levels, [&](double level) { return !is_within(level, limits); });
  return levels;
}

bool stands_clear(const AxisMap& map, const Slots<double>& others, double level, double room) {
  return std::none_of(others.begin() + 1, others.end(), [&](double other) {
    return std::fabs(share_at(map, other) - share_at(map, level)) < room;
  });
}

ScalePoints percent_points(const AxisMap& map, double room) {
  ScalePoints points;
  for (const double level : levels_of(map.code(), map.limits()))
    if (stands_clear(map, points.major, level, room)) points.major.push_back(level);
  constexpr int fewest_levels = 4;
  if (points.major.bound() >= fewest_levels) return points;
  return linear_points(map, room);
}

}  // namespace

ScalePoints round_ticks(const AxisMap& map, double room) {
  if (!(map.high() > map.low())) return {};
  if (is_probability_scale(map.code())) return percent_points(map, room);
  return needs_positive(map.code()) ? log_points(map, room) : linear_points(map, room);
}

}  // namespace tavlo
