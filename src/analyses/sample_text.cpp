#include "analyses/sample_text.h"

#include <charconv>

namespace tavlo {

namespace {

constexpr std::size_t most_digits = 14;  // behind the first, as many as a double holds for sure
constexpr std::size_t shown_digits = 3;

/// "d.dddddddddddddde+xx" to three digits behind the point: the carry may run out in front.
std::string rounded(std::string_view whole) {
  std::string digits(1, whole[0]);
  digits += whole.substr(2, shown_digits);
  int exponent = 0;
  const char* power = whole.data() + whole.find('e') + 1;
  std::from_chars(power + (*power == '+' ? 1 : 0), whole.data() + whole.size(), exponent);
  if (whole[2 + shown_digits] >= '5') {
    std::size_t i = digits.size();
    while (i > 0 && digits[i - 1] == '9') digits[--i] = '0';
    if (i > 0) {
      ++digits[i - 1];
    } else {
      digits = "1" + digits.substr(0, shown_digits);
      ++exponent;
    }
  }
  const std::string power_digits = std::to_string(exponent < 0 ? -exponent : exponent);
  return digits.substr(0, 1) + "." + digits.substr(1) + (exponent < 0 ? "E-" : "E+") +
         (power_digits.size() < 2 ? "0" : "") + power_digits;
}

}  // namespace

void append_time(std::string& text, double time) {
  char buffer[40];
  const auto written = std::to_chars(buffer, buffer + sizeof buffer, time < 0 ? -time : time,
                                     std::chars_format::scientific, most_digits);
  if (time < 0) text += '-';
  text += rounded({buffer, static_cast<std::size_t>(written.ptr - buffer)});
}

namespace {

/// Lines of so many points, handed on in parts.
template <class Line>
void write_lines(std::size_t count, std::string_view line_end, Line line,
                 const std::function<bool(std::string_view)>& write) {
  constexpr std::size_t part = 1 << 16;
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    line(text, i);
    text += line_end;
    if (i + 1 < count && text.size() < part) continue;
    if (!write(text)) return;
    text.clear();
  }
}

void append_count(std::string& text, double count) {
  if (count > 1) text.append("x").append(std::to_string(static_cast<std::int64_t>(count)));
}

}  // namespace

void write_rows(const std::vector<SampleRow>& rows, std::string_view mark,
                std::string_view line_end, const std::function<bool(std::string_view)>& write) {
  const auto line = [&](std::string& text, std::size_t i) {
    const SampleRow& row = rows[i];
    if (row.failures == 0) text += mark;
    append_time(text, row.time);
    append_count(text, row.failures == 0 ? row.suspensions : row.failures);
  };
  write_lines(rows.size(), line_end, line, write);
}

void write_points(const DrawnPoints& points, std::string_view mark, std::string_view line_end,
                  const std::function<bool(std::string_view)>& write) {
  const auto line = [&](std::string& text, std::size_t i) {
    if (points.suspended.is_suspended[i]) text += mark;
    append_time(text, points.times[i]);
    if (i + 1 == points.times.size()) append_count(text, points.suspended.collapsed);
  };
  write_lines(points.times.size(), line_end, line, write);
}

}  // namespace tavlo
