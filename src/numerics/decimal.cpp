#include "numerics/decimal.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <string_view>

namespace tavlo {
namespace {

void remove_trailing_zeros(std::string& digits) { digits.erase(digits.find_last_not_of('0') + 1); }

/// Adds one to the last digit; true when the carry ran out in front ("99").
bool increment(std::string& digits) {
  const std::size_t last_other = digits.find_last_not_of('9');
  const bool carried_out = last_other == std::string::npos;
  if (!carried_out) ++digits[last_other];
  const std::size_t first_nine = carried_out ? 0 : last_other + 1;
  std::fill(digits.begin() + static_cast<std::ptrdiff_t>(first_nine), digits.end(), '0');
  if (carried_out) digits.insert(digits.begin(), '1');
  return carried_out;
}

}  // namespace

// Reads "-d.ddde+xx", the scientific form of to_chars.
Decimal decimal_of(double value, int significant) {
  char text[40];
  const int precision = std::clamp(significant, 1, 17) - 1;
  const auto written =
      std::to_chars(text, text + sizeof text, value, std::chars_format::scientific, precision);
  const std::string_view whole(text, static_cast<std::size_t>(written.ptr - text));
  const std::size_t e = whole.find('e');
  Decimal decimal;
  decimal.negative = whole.front() == '-';
  for (const char c : whole.substr(0, e))
    if (c >= '0' && c <= '9') decimal.digits += c;
  remove_trailing_zeros(decimal.digits);
  if (decimal.digits.empty()) return decimal;
  const bool exponent_has_plus = whole[e + 1] == '+';
  int exponent = 0;
  std::from_chars(whole.data() + e + (exponent_has_plus ? 2 : 1), written.ptr, exponent);
  decimal.point = exponent + 1;
  return decimal;
}

void round_half_away(Decimal& decimal, int places) {
  const int kept = decimal.point + places;
  if (kept >= static_cast<int>(decimal.digits.size())) return;
  const bool up = kept >= 0 && decimal.digits[static_cast<std::size_t>(kept)] >= '5';
  decimal.digits.resize(static_cast<std::size_t>(std::max(kept, 0)));
  if (up && increment(decimal.digits)) ++decimal.point;
  remove_trailing_zeros(decimal.digits);
  if (decimal.digits.empty()) decimal.point = 0;
}

}  // namespace tavlo
