#include "files/field_number.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "files/text_lines.h"

namespace tavlo {

namespace {

enum class Reading { good, no_number, out_of_range };

bool is_digit(char c) { return c >= '0' && c <= '9'; }

bool has_digits(std::string_view text) {
  if (text.starts_with('-')) text.remove_prefix(1);
  return !text.empty() && (text.front() == '.' || is_digit(text.front()));
}

/// The standard reader takes no leading plus, and it knows "inf" and "nan",
/// which no time or count is.
template <class Number>
Reading read_number(std::string_view text, Number& number) {
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  if (!has_digits(text)) return Reading::no_number;
  const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (end != text.data() + text.size()) return Reading::no_number;
  return fault == std::errc() ? Reading::good : Reading::out_of_range;
}

/// Digits, a sign, the same sign again and digits: 2024-01-31, 1/2/2024, 31.12.2024, 1-Jan-24.
bool is_date(std::string_view text) {
  const std::size_t first = text.find_first_of("-/.");
  if (first == std::string_view::npos || first == 0 || first > 4) return false;
  const std::size_t second = text.find(text[first], first + 1);
  if (second == std::string_view::npos || second > first + 4) return false;
  return is_digit(text.front()) && second + 1 < text.size() && is_digit(text[second + 1]);
}

bool is_time_of_day(std::string_view text) {
  const std::size_t colon = text.find(':');
  return colon != std::string_view::npos && colon > 0 && colon + 1 < text.size() &&
         is_digit(text.front()) && is_digit(text[colon + 1]);
}

std::string words_of_no_time(std::string_view text) {
  if (is_date(text))
    return quoted(text) + " is a date; a time to failure is wanted, as hours, cycles or km";
  if (is_time_of_day(text))
    return quoted(text) + " is a time of day; a time to failure is wanted, as one number";
  return quoted(text) + " is not a number";
}

}  // namespace

bool starts_as_number(std::string_view text) {
  return !text.empty() &&
         std::string_view("+-.>0123456789").find(text.front()) != std::string_view::npos;
}

bool is_date_or_time_of_day(std::string_view text) { return is_date(text) || is_time_of_day(text); }

FieldFault read_time(std::string_view text, float& time) {
  if (text.empty()) return "the time is missing";
  const Reading reading = read_number(text, time);
  if (reading == Reading::no_number) return words_of_no_time(text);
  if (reading == Reading::good && time == 0.0F) return "a time can't be 0";
  const bool subnormal = std::fabs(time) < std::numeric_limits<float>::min();
  if (reading == Reading::out_of_range || subnormal)
    return "the time " + quoted(text) + " is out of range (1.2e-38 to 3.4e+38)";
  return std::nullopt;
}

FieldFault read_units(std::string_view text, double& units) {
  const bool is_digit = text.size() == 1 && text.front() >= '0' && text.front() <= '9';
  if (is_digit) {  // as most counts are
    units = text.front() - '0';
    return std::nullopt;
  }
  const Reading reading = read_number(text, units);
  if (reading == Reading::no_number) return quoted(text) + " is not a number";
  if (text.starts_with('-') && !(reading == Reading::good && units == 0.0))
    return "the count " + quoted(text) + " is negative";
  if (reading == Reading::out_of_range || units > most_units)
    return "the count " + quoted(text) + " is out of range (at most 1e15 units)";
  return std::nullopt;
}

}  // namespace tavlo
