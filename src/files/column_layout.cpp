#include "files/column_layout.h"

#include <algorithm>
#include <optional>

#include "files/field_number.h"
#include "files/text_lines.h"
#include "project/code_page.h"

namespace tavlo {

namespace {

struct ColumnName {
  std::string_view name;
  DataColumn column;
};

constexpr ColumnName column_names[] = {
    {"x", DataColumn::x},           {"time", DataColumn::x},
    {"fails", DataColumn::fails},   {"failures", DataColumn::fails},
    {"susps", DataColumn::susps},   {"suspensions", DataColumn::susps},
    {"status", DataColumn::status}, {"count", DataColumn::count},
    {"mode", DataColumn::mode},     {"comment", DataColumn::comment},
};

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool equal_in_any_case(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char left, char right) { return lower(left) == lower(right); });
}

std::optional<DataColumn> find_column(std::string_view name) {
  for (const ColumnName& known : column_names)
    if (equal_in_any_case(trimmed(name), known.name)) return known.column;
  return std::nullopt;
}

/// What the fields say in a column that may stay empty.
FieldFault read_optional_units(std::string_view field, double if_empty, double& units) {
  units = if_empty;
  return field.empty() ? std::nullopt : read_units(field, units);
}

FieldFault read_status(std::string_view field, bool& suspended) {
  if (field == "F" || field == "S") {  // as most are
    suspended = field == "S";
    return std::nullopt;
  }
  const bool failed = equal_in_any_case(field, "f") || field == "1";
  suspended = equal_in_any_case(field, "s") || field == "0";
  if (failed || suspended) return std::nullopt;
  if (field.empty()) return "the status is missing";
  return "the status " + quoted(field) + " is neither F or 1 (failure) nor S or 0 (suspension)";
}

std::string as_utf8(std::string_view field) {
  return is_utf8(field) ? std::string(field) : utf8_from_ansi(field);
}

}  // namespace

bool is_column_name(std::string_view name) { return find_column(name).has_value(); }

FieldFault ColumnLayout::read_header(Fields names) {
  for (const std::string_view name : names) {
    const auto column = find_column(name);
    if (!column)
      return quoted(name) + " is no column name (known: x or time, fails or failures, susps or " +
             "suspensions, status, count, mode, comment)";
    int& known_place = places_[static_cast<std::size_t>(*column)];
    if (known_place >= 0) return "the column " + quoted(name) + " stands there twice";
    known_place = static_cast<int>(count_++);
  }
  return check_columns();
}

FieldFault ColumnLayout::check_columns() const {
  if (!has(DataColumn::x)) return "no column is named x or time";
  const bool counted = has(DataColumn::fails) || has(DataColumn::susps);
  if (counted && has(DataColumn::status)) return "a status can't stand beside fails or susps";
  if (counted && has(DataColumn::count)) return "a count can't stand beside fails or susps";
  return std::nullopt;
}

bool ColumnLayout::tells_suspensions() const {
  return has(DataColumn::fails) || has(DataColumn::susps) || has(DataColumn::status);
}

// A minus sign marks a suspension only where no column tells.
FieldFault ColumnLayout::read_row_time(Fields fields, const ReadOptions& options, float& time,
                                       bool& suspended) const {
  if (FieldFault fault = read_time(field(fields, DataColumn::x), time)) return fault;
  if (time > 0.0F || options.negative_is_value) return std::nullopt;
  if (tells_suspensions()) return "a time can't be negative";
  suspended = true;
  time = -time;
  return std::nullopt;
}

FieldFault ColumnLayout::read_row_units(Fields fields, bool suspended, Units& units) const {
  if (has(DataColumn::fails) || has(DataColumn::susps)) {
    FieldFault fault = read_optional_units(field(fields, DataColumn::fails), 0.0, units.fails);
    if (fault) return fault;
    return read_optional_units(field(fields, DataColumn::susps), 0.0, units.susps);
  }
  if (has(DataColumn::status)) {
    FieldFault fault = read_status(field(fields, DataColumn::status), suspended);
    if (fault) return fault;
  }
  double& target = suspended ? units.susps : units.fails;
  return read_optional_units(field(fields, DataColumn::count), 1.0, target);
}

FieldFault ColumnLayout::add_words(Fields fields, const ReadOptions& options,
                                   PointList& points) const {
  if (has(DataColumn::comment) && options.comments)
    points.set_comment(as_utf8(field(fields, DataColumn::comment)));
  return has(DataColumn::mode) ? points.set_mode(as_utf8(field(fields, DataColumn::mode)))
                               : std::nullopt;
}

FieldFault ColumnLayout::add_row(Fields fields, const ReadOptions& options,
                                 PointList& points) const {
  if (fields.size() > count_)
    return "the row has more fields than the header names (" + std::to_string(count_) + ")";
  float time = 0;
  bool suspended = false;
  Units units;
  if (FieldFault fault = read_row_time(fields, options, time, suspended)) return fault;
  if (FieldFault fault = read_row_units(fields, suspended, units)) return fault;
  if (FieldFault fault = points.add(time, units.fails, units.susps)) return fault;
  return add_words(fields, options, points);
}

}  // namespace tavlo
