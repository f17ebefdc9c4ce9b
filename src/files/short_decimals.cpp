#include "files/short_decimals.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

#include "numerics/digit.h"

namespace tavlo {

namespace {

constexpr std::array<double, 16> powers = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                           1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
constexpr std::size_t most_digits = 15;

std::size_t written(const char* from, const char* end) {
  return static_cast<std::size_t>(end - from);
}

}  // namespace

std::size_t read_short_decimal(std::string_view text, double& number) {
  std::size_t at = !text.empty() && text.front() == '-' ? 1 : 0;
  const bool negative = at == 1;
  std::int64_t mantissa = 0;
  std::size_t digits = 0;
  std::size_t behind_point = 0;
  bool point = false;
  for (; at < text.size(); ++at) {
    const char c = text[at];
    if (c == '.' && !point) {
      point = true;
    } else if (is_digit(c)) {
      if (++digits > most_digits) return 0;
      mantissa = mantissa * 10 + (c - '0');
      behind_point += point ? 1 : 0;
    } else {
      break;
    }
  }
  if (digits == 0) return 0;
  const double size = static_cast<double>(mantissa) / powers[behind_point];
  number = negative ? -size : size;
  return at;
}

std::size_t write_short_whole(double number, char* to) {
  if (!(std::fabs(number) < powers.back()) || std::trunc(number) != number) return 0;
  return written(
      to, std::to_chars(to, to + longest_short_decimal, static_cast<std::int64_t>(number)).ptr);
}

// The digits of 5^10 and those of a number of 32 bits fit into a double: the product is
// exact, and rounding it to a whole number rounds the number itself, ties to even.
std::size_t write_short_single(float number, char* to) {
  const double size = std::fabs(static_cast<double>(number));
  constexpr double least = 1e6;
  constexpr double beyond = 1e7;
  if (!(size >= 1e-4 && size < beyond)) return 0;
  std::size_t places = 0;
  while (size * powers[places] < least) ++places;
  const double rounded = std::nearbyint(size * powers[places]);
  if (rounded >= beyond) return 0;
  auto digits = static_cast<std::int64_t>(rounded);
  for (; places > 0 && digits % 10 == 0; --places) digits /= 10;
  const auto unit = static_cast<std::int64_t>(powers[places]);
  char* end = to;
  if (number < 0) *end++ = '-';
  end = std::to_chars(end, to + longest_short_decimal, digits / unit).ptr;
  if (places > 0) *end++ = '.';
  std::int64_t rest = digits % unit;
  for (char* at = end + places; at != end; rest /= 10) *--at = static_cast<char>('0' + rest % 10);
  return written(to, end + places);
}

}  // namespace tavlo
