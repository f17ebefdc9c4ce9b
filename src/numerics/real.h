// Real: a double that refuses to become infinite or undefined. An operation
// whose result is not finite raises RunTimeError before anything is assigned,
// so a failed statement leaves its target as it was. Underflow stays silent.
// Records keep plain doubles; formulas that must not run on rubbish use Real.
#pragma once

#include <cmath>

#include "numerics/run_time_error.h"

namespace tavlo {

/// `value` if it is finite; otherwise error 6 (overflow), or 5 when undefined.
inline double finite(double value) {
  if (std::isfinite(value)) return value;
  throw RunTimeError(std::isnan(value) ? run_time::invalid_argument : run_time::overflow);
}

class Real {
 public:
  constexpr Real() = default;
  constexpr Real(double value) : value_(value) {}  // NOLINT: meant to convert

  constexpr double value() const { return value_; }
  constexpr explicit operator double() const { return value_; }

  friend Real operator+(Real a, Real b) { return finite(a.value_ + b.value_); }
  friend Real operator-(Real a, Real b) { return finite(a.value_ - b.value_); }
  friend Real operator*(Real a, Real b) { return finite(a.value_ * b.value_); }
  friend Real operator/(Real a, Real b) {
    if (b.value_ == 0.0) throw RunTimeError(run_time::division_by_zero);
    return finite(a.value_ / b.value_);
  }
  friend constexpr Real operator-(Real a) { return Real(-a.value_); }

  Real& operator+=(Real other) { return *this = *this + other; }
  Real& operator-=(Real other) { return *this = *this - other; }
  Real& operator*=(Real other) { return *this = *this * other; }
  Real& operator/=(Real other) { return *this = *this / other; }

  friend constexpr bool operator==(Real a, Real b) { return a.value_ == b.value_; }
  friend constexpr auto operator<=>(Real a, Real b) { return a.value_ <=> b.value_; }

  /// Natural logarithm; error 5 for an argument at or below 0.
  friend Real ln(Real a) {
    if (!(a.value_ > 0.0)) throw RunTimeError(run_time::invalid_argument);
    return finite(std::log(a.value_));
  }
  friend Real exp(Real a) { return finite(std::exp(a.value_)); }
  friend Real abs(Real a) { return Real(std::fabs(a.value_)); }
  /// Error 5 below 0.
  friend Real sqrt(Real a) {
    if (a.value_ < 0.0) throw RunTimeError(run_time::invalid_argument);
    return finite(std::sqrt(a.value_));
  }
  /// Error 5 for a negative base with a broken exponent, 11 for 0 to a negative power.
  friend Real pow(Real base, Real exponent) {
    if (base.value_ == 0.0 && exponent.value_ < 0.0) throw RunTimeError(run_time::division_by_zero);
    return finite(std::pow(base.value_, exponent.value_));
  }

 private:
  double value_ = 0.0;
};

}  // namespace tavlo
