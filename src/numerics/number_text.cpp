#include "numerics/number_text.h"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <system_error>

#include "numerics/decimal.h"
#include "numerics/digit.h"

namespace tavlo {
namespace {

// Outside these powers of ten zeros would outweigh the digits: 1E+15, 1E-06.
constexpr int highest_plain_exponent = 14;
constexpr int lowest_plain_exponent = -5;

std::string special_text(double value) {
  if (std::isnan(value)) return "NaN";
  return value < 0 ? "-Infinity" : "Infinity";
}

/// The digits in front of the point, at least one.
std::string whole_part(const Decimal& decimal) {
  if (decimal.point <= 0) return "0";
  std::string whole = decimal.digits.substr(0, static_cast<std::size_t>(decimal.point));
  whole.resize(static_cast<std::size_t>(decimal.point), '0');
  return whole;
}

/// The digits behind the point, without trailing zeros.
std::string broken_part(const Decimal& decimal) {
  if (decimal.point > 0) {
    const auto point = static_cast<std::size_t>(decimal.point);
    return point < decimal.digits.size() ? decimal.digits.substr(point) : "";
  }
  return std::string(static_cast<std::size_t>(-decimal.point), '0') + decimal.digits;
}

std::string plain_text(const Decimal& decimal) {
  const std::string broken = decimal.digits.empty() ? "" : broken_part(decimal);
  return whole_part(decimal) + (broken.empty() ? "" : "." + broken);
}

/// "E+20", "E-06".
std::string exponent_text(int exponent) {
  const std::string digits = std::to_string(std::abs(exponent));
  return std::string(exponent < 0 ? "E-" : "E+") + (digits.size() < 2 ? "0" : "") + digits;
}

/// The power of ten of the first significant digit of a well-formed number, or
/// nothing when all its digits are 0. Large exponents saturate.
std::optional<std::int64_t> magnitude(std::string_view text) {
  constexpr std::int64_t limit = 1'000'000'000;
  const std::size_t e = text.find_first_of("eE");
  std::int64_t position = 0;
  std::optional<std::int64_t> first;
  bool behind_point = false;
  for (const char c : text.substr(0, e)) {
    if (c == '.') behind_point = true;
    if (!is_digit(c)) continue;
    if (behind_point) --position;
    if (first && !behind_point) ++*first;
    if (!first && c != '0') first = position;
  }
  if (!first || e == std::string_view::npos) return first;
  std::int64_t exponent = 0;
  for (const char c : text.substr(e + 1))
    if (is_digit(c) && exponent < limit) exponent = exponent * 10 + (c - '0');
  return *first + (text[e + 1] == '-' ? -exponent : exponent);
}

}  // namespace

std::string number_text(double value, int digits) {
  if (!std::isfinite(value)) return special_text(value);
  const Decimal decimal = decimal_of(value, digits);
  const std::string sign = decimal.negative && !decimal.digits.empty() ? "-" : "";
  const int exponent = decimal.exponent();
  if (exponent >= lowest_plain_exponent && exponent <= highest_plain_exponent)
    return sign + plain_text(decimal);
  Decimal mantissa = decimal;
  mantissa.point = 1;
  return sign + plain_text(mantissa) + exponent_text(exponent);
}

std::optional<double> parse_number(std::string_view text) {
  if (!text.empty() && text.front() == '+') {
    text.remove_prefix(1);
    if (!text.empty() && text.front() == '-') return std::nullopt;
  }
  // Letters would let "inf" and "nan" in.
  const std::size_t first = !text.empty() && text.front() == '-' ? 1 : 0;
  if (text.size() <= first || !(is_digit(text[first]) || text[first] == '.')) return std::nullopt;
  const char* const end = text.data() + text.size();
  double value = 0;
  const auto read = std::from_chars(text.data(), end, value);
  if (read.ptr != end || read.ec == std::errc::invalid_argument) return std::nullopt;
  if (read.ec == std::errc() && std::isfinite(value)) return value;
  const auto power = magnitude(text);
  if (power && *power >= 0) return std::nullopt;
  return first == 1 ? -0.0 : 0.0;  // too small for a double: underflow is silent
}

}  // namespace tavlo
