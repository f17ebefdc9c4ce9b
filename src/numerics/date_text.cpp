#include "numerics/date_text.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace tavlo {
namespace {

constexpr std::array<std::string_view, 7> weekdays = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                      "Thursday", "Friday", "Saturday"};
constexpr std::array<std::string_view, 12> months = {
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};

template <std::size_t Count>
std::string_view name_at(const std::array<std::string_view, Count>& names, int index) {
  const bool inside = index >= 0 && index < static_cast<int>(Count);
  return inside ? names[static_cast<std::size_t>(index)] : std::string_view();
}

std::string padded(int number, std::size_t width) {
  std::string digits = std::to_string(number);
  return digits.size() < width ? std::string(width - digits.size(), '0') + digits : digits;
}

/// The pieces that stand for a part of the moment, the longer of two first.
constexpr std::array<std::string_view, 18> fields = {"am/pm", "ampm", "dddd", "ddd", "dd",   "d",
                                                     "mmmm",  "mmm",  "mm",   "m",   "yyyy", "yy",
                                                     "hh",    "h",    "nn",   "n",   "ss",   "s"};

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool starts_with_any_case(std::string_view text, std::string_view field) {
  return text.size() >= field.size() &&
         std::equal(field.begin(), field.end(), text.begin(),
                    [](char wanted, char found) { return wanted == lower(found); });
}

/// The field at the start of the text, in lower case; empty for a literal character.
std::string_view field_at(std::string_view text) {
  for (const std::string_view field : fields)
    if (starts_with_any_case(text, field)) return field;
  return {};
}

bool shows_half_day(std::string_view pattern) {
  for (std::size_t at = 0; at < pattern.size(); ++at)
    if (field_at(pattern.substr(at)).starts_with('a')) return true;
  return false;
}

std::string half_day(int hour, bool capital) {
  if (capital) return hour < 12 ? "AM" : "PM";
  return hour < 12 ? "am" : "pm";
}

/// One or two letters ask for the number, three for the short name, four for the whole.
std::string named(int number, std::string_view name, std::size_t letters) {
  if (letters > 2) return std::string(letters == 3 ? name.substr(0, 3) : name);
  return padded(number, letters);
}

int twelve_hour(int hour) { return hour % 12 == 0 ? 12 : hour % 12; }

/// Text of a field other than that of the half day. `hour` is by the clock asked for.
std::string field_text(const DateTime& moment, std::string_view field, int hour) {
  const std::size_t letters = field.size();
  switch (field.front()) {
    case 'd': return named(moment.day, name_at(weekdays, moment.weekday), letters);
    case 'm': return named(moment.month, name_at(months, moment.month - 1), letters);
    case 'y': return padded(letters == 2 ? moment.year % 100 : moment.year, letters);
    case 'h': return padded(hour, letters);
    case 'n': return padded(moment.minute, letters);
    default: return padded(moment.second, letters);
  }
}

}  // namespace

std::string format_date(const DateTime& moment, std::string_view pattern) {
  const int hour = shows_half_day(pattern) ? twelve_hour(moment.hour) : moment.hour;
  std::string text;
  for (bool behind_hour = false; !pattern.empty();) {
    const std::string_view field = field_at(pattern);
    if (field.empty()) {
      text += pattern.front();
    } else if (field.front() == 'a') {
      text += half_day(moment.hour, pattern.front() == 'A');
    } else if (behind_hour && (field == "m" || field == "mm")) {
      text += padded(moment.minute, field.size());
    } else {
      text += field_text(moment, field, hour);
    }
    if (!field.empty()) behind_hour = field.front() == 'h';
    pattern.remove_prefix(std::max<std::size_t>(field.size(), 1));
  }
  return text;
}

}  // namespace tavlo
