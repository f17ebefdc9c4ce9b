#include "numerics/elementary.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>

#include "numerics/number_text.h"
#include "numerics/powers_of_ten.h"
#include "numerics/real.h"
#include "numerics/rounding.h"

namespace tavlo {
namespace {

constexpr double smallest_logarithm_argument = 1.2e-308;
constexpr double logarithm_limit = 709;
constexpr double log10_of_e = 0.434294481903252;  // 4e-16 above the true value
constexpr int most_digits = 15;
constexpr int largest_power = 300;

void refuse_nan(double value) {
  if (std::isnan(value)) throw RunTimeError(run_time::invalid_argument);
}

/// Exponent of the last of `digits` significant digits of a > 0. The logarithm
/// is a little low at 0.1, 0.01 ..., and one digit more is kept there.
int last_digit_exponent(ErrorReporter& reporter, double a, int digits) {
  const double exponent = IntFloor(fd_log10(reporter, a)) - digits + 1;
  return ToInt32(std::clamp<double>(exponent, -largest_power, largest_power));
}

Rounded round_to_digits(ErrorReporter& reporter, double value, int digits) {
  if (value == 0) return {};
  const Real a = std::fabs(value);
  const Real unit = power_of_ten(last_digit_exponent(reporter, a.value(), digits));
  const Real steps = IntFloor((a / unit).value());
  Real lower = steps * unit;
  Real upper = (steps + 1) * unit;
  if (value < 0) {
    const Real outer = -upper;
    upper = -lower;
    lower = outer;
  }
  // `a` is the absolute value for a negative number too, so that one always goes
  // to the neighbour nearer to zero.
  const bool up = abs(a - upper) < abs(a - lower);
  return {(up ? upper : lower).value(), lower.value(), upper.value()};
}

}  // namespace

double fd_log10(ErrorReporter& reporter, double x) {
  const auto words = [&](ErrorReporter& to) {
    to.add_lines({"Log10 Error: ", number_text(x), "fd_log10 routine:"});
  };
  return guarded(reporter, 0.0, words, [&] {
    refuse_nan(x);
    const double a = std::max(std::fabs(x), smallest_logarithm_argument);
    return std::clamp(std::log(a) * log10_of_e, -logarithm_limit, logarithm_limit);
  });
}

Rounded fd_Round(ErrorReporter& reporter, double value, int digits) {
  const auto words = [&](ErrorReporter& to) {
    to.add_lines(
        {"Rounding Error: ", "Value:" + number_text(value) + ", Digits" + std::to_string(digits),
         "fd_Round routine:"});
  };
  return guarded(reporter, Rounded{}, words, [&] {
    refuse_nan(value);
    const int asked = std::abs(std::clamp(digits, -most_digits, most_digits));
    return round_to_digits(reporter, value, std::max(asked, 1));
  });
}

}  // namespace tavlo
