#include "files/field_number.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>

#include "files/column_names.h"
#include "files/text_lines.h"
#include "numerics/digit.h"

namespace tavlo {

namespace {

enum class Reading { good, no_number, out_of_range };

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

/// Takes the next word off the front: letters and digits.
std::string_view take_word(std::string_view& text) {
  constexpr std::string_view between = " \t.,-/";
  text.remove_prefix(std::min(text.find_first_not_of(between), text.size()));
  const std::string_view word = text.substr(0, text.find_first_of(between));
  text.remove_prefix(word.size());
  return word;
}

/// Three letters of it or more.
bool is_month(std::string_view word) {
  constexpr std::string_view months[] = {"january",   "february", "march",    "april",
                                         "may",       "june",     "july",     "august",
                                         "september", "october",  "november", "december"};
  return word.size() >= 3 &&
         std::any_of(std::begin(months), std::end(months), [word](std::string_view month) {
           return equal_in_any_case(word, month.substr(0, word.size()));
         });
}

std::string words_of_no_time(std::string_view text) {
  if (is_date(text)) return words_of_date(text);
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

bool is_spelled_date(std::string_view text) {
  const std::string_view first = take_word(text);
  const std::string_view second = take_word(text);
  const bool month_first = is_month(first) && !second.empty() && is_digit(second.front());
  const bool day_first = !first.empty() && is_digit(first.front()) && is_month(second);
  return month_first || day_first;
}

std::string words_of_date(std::string_view text) {
  return quoted(text) + " is a date; a time to failure is wanted, as hours, cycles or km";
}

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
