#include "files/data_notation.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "files/decimal_comma.h"
#include "files/field_number.h"
#include "files/shortest_number.h"

namespace tavlo {

namespace {

bool take_front(std::string_view& text, char mark) {
  if (!text.starts_with(mark)) return false;
  text = trimmed(text.substr(1));
  return true;
}

FieldFault read_count(std::string_view text, double& units) {
  if (text.empty()) return "the count behind the x is missing";
  if (FieldFault fault = read_units(text, units)) return fault;
  if (units == 0.0) return "a count can't be 0";
  return std::nullopt;
}

void append_line(std::string& text, const char* mark, float time, double units) {
  text += mark;
  append_shortest(text, time);
  if (units != 1.0) {
    text += 'x';
    append_shortest(text, units);
  }
  text += '\n';
}

/// A table doesn't start in the middle of the notation.
std::string with_hint(std::string what, std::string_view line) {
  if (line.find_first_of(",;\t") != std::string_view::npos)
    what += " (the lines above it have one column)";
  return what;
}

FieldFault add_point(const NotationPoint& point, PointList& points) {
  return points.add(point.time, point.suspended ? 0.0 : point.units,
                    point.suspended ? point.units : 0.0);
}

/// Reads a number with the standard reader alone; null where that isn't enough.
template <class Number>
const char* plain_number(const char* from, const char* end, Number& number) {
  if (from == end || *from < '0' || *from > '9') return nullptr;
  const auto [behind, fault] = std::from_chars(from, end, number);
  return fault == std::errc() ? behind : nullptr;
}

/// Reads a line as most are, "100", ">100" or "100x3" without blanks. False for
/// whatever deserves a closer look: the strict reader then takes or refuses it.
bool read_plain_line(std::string_view line, NotationPoint& point) {
  const char* next = line.data();
  const char* const end = next + line.size();
  point.suspended = next != end && *next == '>';
  next = plain_number(point.suspended ? next + 1 : next, end, point.time);
  if (!next || !std::isnormal(point.time) || line.size() > longest_line) return false;
  if (next != end && *next == 'x') next = plain_number(next + 1, end, point.units);
  return next == end && point.units > 0.0 && point.units <= most_units;
}

FieldFault add_line(std::string_view line, const ReadOptions& options, PointList& points) {
  NotationPoint point;
  if (FieldFault fault = read_notation_line(line, options, point)) return fault;
  return add_point(point, points);
}

FieldFault read_line_with_comma(std::string_view line, ReadOptions options, NotationPoint& point) {
  if (line.find('.') != std::string_view::npos)
    return quoted(line) + " has a full stop, where the decimal sign is a comma";
  std::string pointed(line);
  std::replace(pointed.begin(), pointed.end(), ',', '.');
  options.decimal = DecimalSign::point;
  return read_notation_line(pointed, options, point);
}

ReadFault fault_of(std::string_view line, long number, std::string what,
                   const ReadOptions& options) {
  const bool doubt = options.decimal == DecimalSign::by_content && is_digits_comma_digits(line);
  return {number, doubt ? words_of_doubtful_comma(line) : std::move(what), doubt};
}

}  // namespace

FieldFault read_notation_line(std::string_view line, const ReadOptions& options,
                              NotationPoint& point) {
  if (options.decimal == DecimalSign::comma && line.find_first_of(",.") != std::string_view::npos)
    return read_line_with_comma(line, options, point);
  std::string_view rest = trimmed(line);
  point = {};
  point.suspended = take_front(rest, '>');
  if (!options.negative_is_value && !point.suspended) point.suspended = take_front(rest, '-');
  // A word may hold an x; only behind a number it means a count.
  if (!rest.empty() && !starts_as_number(rest)) return quoted(line) + " is not a number";
  const std::size_t mark = rest.find_first_of("xX");
  if (FieldFault fault = read_time(trimmed(rest.substr(0, mark)), point.time))
    return with_hint(*fault, line);
  if (point.time < 0.0F && !options.negative_is_value) return "a time can't be negative";
  if (mark == std::string_view::npos) return std::nullopt;
  return read_count(trimmed(rest.substr(mark + 1)), point.units);
}

std::optional<ReadFault> read_notation(TextLines lines, const ReadOptions& options,
                                       PointList& points) {
  points.reserve(lines.count());
  const bool plain_first = options.decimal != DecimalSign::comma;
  while (const auto whole = lines.next()) {
    NotationPoint point;
    if (plain_first && read_plain_line(*whole, point)) {
      if (FieldFault fault = add_point(point, points)) return ReadFault{lines.number(), *fault};
      continue;
    }
    if (whole->size() > longest_line) return ReadFault{lines.number(), "the line is too long"};
    const std::string_view line = trimmed(*whole);
    if (is_remark(line)) continue;
    if (FieldFault fault = add_line(line, options, points))
      return fault_of(line, lines.number(), *fault, options);
  }
  return std::nullopt;
}

std::string write_notation(const DataSet& data) {
  std::string text;
  const std::size_t end = export_end(data);
  for (std::size_t i = 0; i < end; ++i) {
    const SheetRow& row = data.rows[i];
    if (!can_be_exported(row)) continue;
    if (row.failures > 0.0) append_line(text, "", row.time, row.failures);
    if (row.suspensions > 0.0) append_line(text, ">", row.time, row.suspensions);
  }
  return text;
}

}  // namespace tavlo
