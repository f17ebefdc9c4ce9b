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
constexpr int highest_exponent = 300;
constexpr double vanishing_denominator = 1e-300;
constexpr double small_denominator = 0.01;
constexpr double vanishing_numerator = 1e-14;

void refuse_nan(double value) {
  if (std::isnan(value)) throw RunTimeError(run_time::invalid_argument);
}

/// Exponent of the last of `digits` significant digits of a > 0. The logarithm
/// is a little low at 0.1, 0.01 ..., and one digit more is kept there.
int last_digit_exponent(ErrorReporter& reporter, double a, int digits) {
  const double exponent = IntFloor(fd_log10(reporter, a)) - digits + 1;
  return ToInt32(std::clamp<double>(exponent, -highest_exponent, highest_exponent));
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

Bounded fd_Bound(ErrorReporter& reporter, double low, double x, double high) {
  return guarded(reporter, Bounded{}, error_words("fd_Bound routine:"), [&]() -> Bounded {
    for (const double value : {low, x, high}) refuse_nan(value);
    if (x < low) return {low, -2};
    if (x == low) return {low, -1};
    if (x < high) return {x, 0};
    if (x == high) return {high, 1};
    return {high, 2};
  });
}

double fd_Max(ErrorReporter& reporter, double a, double b) {
  return guarded(reporter, 0.0, error_words("fd_Max routine:"), [&] {
    for (const double value : {a, b}) refuse_nan(value);
    return b > a ? b : a;
  });
}

double fd_Min(ErrorReporter& reporter, double a, double b) {
  return guarded(reporter, 0.0, error_words("fd_Min routine:"), [&] {
    for (const double value : {a, b}) refuse_nan(value);
    return b < a ? b : a;
  });
}

double fd_RSquared(ErrorReporter& reporter, double numerator, double denominator) {
  return guarded(reporter, 0.0, error_words("fd_RSquared routine:"), [&] {
    for (const double value : {numerator, denominator}) refuse_nan(value);
    const bool nothing_left = std::fabs(numerator) < vanishing_numerator;
    const double size = std::fabs(denominator);
    if (size < vanishing_denominator) return nothing_left ? 1.0 : -1.0;
    if (size < small_denominator && nothing_left) return 1.0;
    return (1 - Real(numerator) / denominator).value();
  });
}

}  // namespace tavlo
