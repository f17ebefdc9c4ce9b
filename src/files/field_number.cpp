#include "files/field_number.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "files/text_lines.h"

namespace tavlo {

namespace {

enum class Reading { good, no_number, out_of_range };

bool starts_as_number(std::string_view text) {
  if (text.starts_with('-')) text.remove_prefix(1);
  return !text.empty() && (text.front() == '.' || (text.front() >= '0' && text.front() <= '9'));
}

/// The standard reader takes no leading plus, and it knows "inf" and "nan",
/// which no time or count is.
template <class Number>
Reading read_number(std::string_view text, Number& number) {
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  if (!starts_as_number(text)) return Reading::no_number;
  const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (end != text.data() + text.size()) return Reading::no_number;
  return fault == std::errc() ? Reading::good : Reading::out_of_range;
}

}  // namespace

FieldFault read_time(std::string_view text, float& time) {
  if (text.empty()) return "the time is missing";
  const Reading reading = read_number(text, time);
  if (reading == Reading::no_number) return quoted(text) + " is not a number";
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
