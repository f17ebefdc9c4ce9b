#include "analyses/sample_text.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>

#include "files/shortest_number.h"
#include "fit/parallel.h"

namespace tavlo {

// Reads "-d.dddddddddddddde+xx", the digits that a person would round.
void append_time(std::string& text, double time) {
  char written[32];
  char* const end =
      std::to_chars(written, written + sizeof written, time, std::chars_format::scientific, 14).ptr;
  const bool is_negative = *written == '-';
  const char* const first = written + (is_negative ? 1 : 0);
  const char* const power = first + 17;
  int exponent = 0, digits = 0;
  std::from_chars(*power == '+' ? power + 1 : power, end, exponent);
  for (const int place : {0, 2, 3, 4}) digits = 10 * digits + (first[place] - '0');
  if (first[5] >= '5') ++digits;
  if (digits == 10000) digits = 1000, ++exponent;
  char shown[] = "d.dddE+";
  for (const int place : {4, 3, 2, 0})
    shown[place] = static_cast<char>('0' + digits % 10), digits /= 10;
  if (exponent < 0) shown[6] = '-';
  const int size = std::abs(exponent);
  if (is_negative) text += '-';
  text.append(shown).append(size < 10 ? "0" : "").append(std::to_string(size));
}

float written_time(float time) {
  std::string text;
  append_time(text, time);
  float written = time;  // as it is where rounding takes it beyond all numbers
  std::from_chars(text.data(), text.data() + text.size(), written);
  return written;
}

namespace {

/// Lines of so many points, made in parts on all cores and handed on in their order.
template <class Line>
void write_lines(std::size_t count, std::string_view line_end, Line line,
                 const std::function<bool(std::string_view)>& write) {
  constexpr std::size_t part = 8192;
  std::vector<std::string> texts(16);
  for (std::size_t start = 0; start < count; start += part * texts.size()) {
    for_each_index(texts.size(), [&](std::size_t k) {
      texts[k].clear();
      const std::size_t first = start + k * part;
      for (std::size_t i = first; i < std::min(count, first + part); ++i) {
        line(texts[k], i);
        texts[k] += line_end;
      }
    });
    for (const std::string& text : texts)
      if (!text.empty() && !write(text)) return;
  }
}

void append_count(std::string& text, double count) {
  if (count > 1) text.append("x").append(std::to_string(static_cast<std::int64_t>(count)));
}

void append_units(std::string& text, std::string_view mark, const SampleRow& row, double count) {
  text += mark;
  append_shortest(text, row.time);
  append_count(text, count);
}

}  // namespace

void write_rows(const std::vector<SampleRow>& rows, std::string_view mark,
                std::string_view line_end, const std::function<bool(std::string_view)>& write) {
  const auto line = [&](std::string& text, std::size_t i) {
    const SampleRow& row = rows[i];
    if (row.failures > 0) append_units(text, {}, row, row.failures);
    if (row.failures > 0 && row.suspensions > 0) text += line_end;
    if (row.suspensions > 0) append_units(text, mark, row, row.suspensions);
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
