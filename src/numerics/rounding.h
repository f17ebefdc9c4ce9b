// Rounding: the ways in which a real number becomes a whole one. A bare cast
// from double truncates and is undefined out of range, so none is used.
#pragma once

#include <cmath>
#include <cstdint>

#include "numerics/run_time_error.h"

namespace tavlo {

/// The largest whole number at or below `value`, as a double.
inline double IntFloor(double value) { return std::floor(value); }

/// `value` rounded to the nearest whole number, ties to the even one.
inline double round_half_even(double value) {
  const double down = std::floor(value);
  const double rest = value - down;
  if (rest < 0.5) return down;
  if (rest > 0.5) return down + 1.0;
  return std::fmod(down, 2.0) == 0.0 ? down : down + 1.0;
}

namespace detail {
template <class Whole>
Whole to_whole(double value, double lowest, double highest) {
  const double rounded = round_half_even(value);
  if (!(rounded >= lowest && rounded <= highest)) throw RunTimeError(run_time::overflow);
  return static_cast<Whole>(rounded);
}
}  // namespace detail

/// Nearest 16-bit integer, ties to even; error 6 when it doesn't fit.
inline std::int16_t ToInt16(double value) {
  return detail::to_whole<std::int16_t>(value, -32768.0, 32767.0);
}

/// Nearest 32-bit integer, ties to even; error 6 when it doesn't fit.
inline std::int32_t ToInt32(double value) {
  return detail::to_whole<std::int32_t>(value, -2147483648.0, 2147483647.0);
}

/// The nearest 32-bit float; error 6 when the value lies beyond its range.
inline float ToSingle(double value) {
  if (!(std::fabs(value) <= 3.4028235677973366e38)) throw RunTimeError(run_time::overflow);
  return static_cast<float>(value);
}

}  // namespace tavlo
