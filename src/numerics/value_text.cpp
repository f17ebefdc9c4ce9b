#include "numerics/value_text.h"

#include <array>
#include <chrono>
#include <cmath>

#include "numerics/date_text.h"
#include "numerics/number_text.h"
#include "numerics/rounding.h"

namespace tavlo {

namespace {

/// An engineering prefix: the decades e that it serves and the value that shows
/// as exactly one of it.
struct Prefix {
  int last_decade;
  double factor;
  double one_from;
  double one_to;
  const char* letter;
};

constexpr std::array<Prefix, 5> prefixes = {{
    {6, 1e-3, 999.9999, 1000.0001, "K"},
    {9, 1e-6, 999999.9, 1000000.1, "M"},
    {12, 1e-9, 999999999.9, 1000000000.1, "G"},
    {15, 1e-12, 999999999999.9, 1000000000000.1, "T"},
    {17, 1e-15, 999999999999990.0, 1000000000000010.0, "P"},
}};

std::string scientific(double value, const std::string& pattern) {
  return format_number(value, pattern + "E+0");
}

/// A value below 1000 by the pattern, with the decimals that it needs to be seen.
std::string small_value(double value, const std::string& pattern) {
  if (value >= 1.0) return format_number(value, pattern);
  if (value < 0.001) return scientific(value, pattern);
  const std::size_t needed = value >= 0.1 ? 1 : value >= 0.01 ? 2 : 3;
  const auto point = pattern.find('.');
  const std::size_t given = point == std::string::npos ? 0 : pattern.size() - point - 1;
  return format_number(value, given >= needed ? pattern : "0." + std::string(needed, '0'));
}

std::string with_prefix(double value, const std::string& pattern) {
  if (value == 0.0) return format_number(0.0, pattern);
  for (const Prefix& prefix : prefixes)
    if (value > prefix.one_from && value < prefix.one_to) return std::string("1") + prefix.letter;
  const double decade = IntFloor(std::log10(value));
  if (decade < -3.0 || decade >= 18.0) return scientific(value, pattern);
  if (decade < 3.0) return small_value(value, pattern);
  for (const Prefix& prefix : prefixes)
    if (decade <= prefix.last_decade)
      return format_number(value * prefix.factor, pattern) + prefix.letter;
  return scientific(value, pattern);
}

bool is_date_pattern(const std::string& format) {
  return format.find_first_of("dmyhns") != std::string::npos &&
         format.find_first_of("0#") == std::string::npos;
}

DateTime moment_of(double day_count) {
  using namespace std::chrono;
  const double whole = IntFloor(day_count);
  const auto day = sys_days(year(1899) / 12 / 30) + days(ToInt32(whole));
  const year_month_day date(day);
  const int seconds = ToInt32(IntFloor((day_count - whole) * 86400.0 + 1e-4));
  return {static_cast<int>(date.year()),
          static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day())),
          seconds / 3600,
          seconds / 60 % 60,
          seconds % 60,
          static_cast<int>(weekday(day).c_encoding())};
}

}  // namespace

std::string fs_Dbl2Txt(double value, const std::string& format) {
  const std::string cut = format.substr(0, 32);
  if (is_date_pattern(cut)) return format_date(moment_of(value), cut);
  const std::string sign = value < 0.0 ? "-" : "";
  const double size = std::fabs(value);
  const auto k = cut.find('k');
  if (k == std::string::npos) return sign + format_number(size, cut);
  return sign + with_prefix(size, k == 0 ? "0" : cut.substr(0, k));
}

std::string fs_BitList(std::int32_t value) {
  constexpr std::int64_t mask = 1073741823;
  if (std::abs(static_cast<std::int64_t>(value)) > mask) return "N/A";
  std::string text;
  std::int64_t rest = value & mask;
  for (int number = 1; rest != 0; ++number, rest >>= 1)
    if ((rest & 1) != 0) text += (text.empty() ? "" : ",") + std::to_string(number);
  return text.empty() ? "0" : text;
}

}  // namespace tavlo
