#include "files/column_names.h"

#include <algorithm>
#include <array>

#include "files/text_lines.h"

namespace tavlo {

namespace {

struct ColumnName {
  std::string_view name;
  DataColumn column;
};

constexpr ColumnName column_names[] = {
    {"x", DataColumn::x},
    {"time", DataColumn::x},
    {"times", DataColumn::x},
    {"t", DataColumn::x},
    {"hours", DataColumn::x},
    {"life", DataColumn::x},
    {"lifetime", DataColumn::x},
    {"age", DataColumn::x},
    {"cycles", DataColumn::x},
    {"km", DataColumn::x},
    {"miles", DataColumn::x},
    {"ttf", DataColumn::x},
    {"time to failure", DataColumn::x},
    {"fails", DataColumn::fails},
    {"failures", DataColumn::fails},
    {"f", DataColumn::fails},
    {"susps", DataColumn::susps},
    {"suspensions", DataColumn::susps},
    {"s", DataColumn::susps},
    {"status", DataColumn::status},
    {"event", DataColumn::status},
    {"e", DataColumn::status},
    {"failed", DataColumn::status},
    {"failed?", DataColumn::status},
    {"censored", DataColumn::censored},
    {"censored?", DataColumn::censored},
    {"suspended", DataColumn::censored},
    {"suspended?", DataColumn::censored},
    {"count", DataColumn::count},
    {"counts", DataColumn::count},
    {"quantity", DataColumn::count},
    {"qty", DataColumn::count},
    {"frequency", DataColumn::count},
    {"freq", DataColumn::count},
    {"mode", DataColumn::mode},
    {"failure mode", DataColumn::mode},
    {"comment", DataColumn::comment},
    {"comments", DataColumn::comment},
    {"note", DataColumn::comment},
    {"notes", DataColumn::comment},
    {"remark", DataColumn::comment},
};

constexpr std::array<std::string_view, data_columns> roles = {
    "x", "fails", "susps", "status", "censored", "count", "mode", "comment", "group"};

constexpr std::array<std::string_view, data_columns> nouns = {
    "time",  "failures", "suspensions", "status", "censored units",
    "count", "mode",     "comment",     "group"};

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// "Time_to_failure" is "time to failure" as programs write it.
char plain(char c) { return c == '_' ? ' ' : lower(c); }

std::string_view without_unit(std::string_view heading) {
  heading = trimmed(heading);
  if (heading.ends_with(')')) return trimmed(heading.substr(0, heading.find('(')));
  if (heading.ends_with(']')) return trimmed(heading.substr(0, heading.find('[')));
  return heading;
}

}  // namespace

bool equal_in_any_case(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char left, char right) { return lower(left) == lower(right); });
}

std::optional<DataColumn> find_column(std::string_view heading) {
  const std::string_view name = without_unit(heading);
  for (const ColumnName& known : column_names)
    if (std::equal(name.begin(), name.end(), known.name.begin(), known.name.end(),
                   [](char left, char right) { return plain(left) == right; }))
      return known.column;
  return std::nullopt;
}

std::optional<DataColumn> find_column_role(std::string_view role) {
  for (std::size_t i = 0; i < sheet_data_columns; ++i)
    if (equal_in_any_case(role, roles[i])) return static_cast<DataColumn>(i);
  return std::nullopt;
}

std::string_view role_of(DataColumn column) { return roles[static_cast<std::size_t>(column)]; }
std::string_view noun_of(DataColumn column) { return nouns[static_cast<std::size_t>(column)]; }

}  // namespace tavlo
