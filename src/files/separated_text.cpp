#include "files/separated_text.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "files/column_layout.h"
#include "files/column_names.h"
#include "files/headless_columns.h"
#include "files/table_rows.h"

namespace tavlo {

namespace {

/// The lines from the first that carries data on, and that line.
struct Table {
  TextLines lines;
  std::string_view first;
  char separator = ',';
};

/// How often `c` stands outside quotation marks.
std::ptrdiff_t count_outside_quotes(std::string_view line, char c) {
  std::ptrdiff_t count = 0;
  bool quoted = false;
  for (const char at : line) {
    quoted = quoted != (at == '"');
    count += at == c && !quoted ? 1 : 0;
  }
  return count;
}

bool is_digit(char c) { return c >= '0' && c <= '9'; }

/// True when each comma stands between two digits, so that it may belong to a number.
bool commas_are_inside_numbers(std::string_view line) {
  for (std::size_t i = line.find(','); i != std::string_view::npos; i = line.find(',', i + 1))
    if (i == 0 || i + 1 == line.size() || !is_digit(line[i - 1]) || !is_digit(line[i + 1]))
      return false;
  return true;
}

char separator_of(std::string_view line, DecimalSign decimal) {
  if (line.find('\t') != std::string_view::npos) return '\t';
  const auto commas = count_outside_quotes(line, ',');
  const auto semicolons = count_outside_quotes(line, ';');
  if (semicolons > 0 && (semicolons >= commas || commas_are_inside_numbers(line))) return ';';
  const bool has_blank = line.find(' ') != std::string_view::npos;
  const bool in_numbers =
      decimal == DecimalSign::comma || (has_blank && decimal != DecimalSign::point);
  if (commas > 0 && !(in_numbers && commas_are_inside_numbers(line))) return ',';
  if (has_blank && !find_column(line)) return ' ';
  // One column: what cuts its rows is no part of a number.
  return decimal == DecimalSign::comma ? '\t' : ',';
}

/// Spreadsheets name the separator in a first line "sep=;".
bool names_separator(std::string_view line) {
  return line.size() == 5 && equal_in_any_case(line.substr(0, 4), "sep=") &&
         std::string_view(",;|").find(line.back()) != std::string_view::npos;
}

Table find_table(TextLines lines, DecimalSign decimal) {
  Table table{lines, {}};
  char named = 0;
  while (const auto line = lines.next()) {
    table.first = trimmed(*line);
    const bool is_mark = names_separator(table.first);
    if (is_mark) named = table.first.back();
    if (!is_remark(table.first) && !is_mark) break;
    table.lines = lines;
  }
  table.separator = named != 0 ? named : separator_of(table.first, decimal);
  return table;
}

/// True for a line of data, false for a header line.
bool starts_as_row(std::string_view line) {
  return starts_as_number(line.substr(line.starts_with('"') ? 1 : 0));
}

/// The first of the lines with a comma if all are digits, a comma and digits, or one number.
std::optional<ReadFault> find_doubtful_commas(TextLines lines) {
  std::optional<ReadFault> doubt;
  while (const auto whole = lines.next()) {
    const std::string_view line = trimmed(*whole);
    if (is_remark(line)) continue;
    const bool plain = line.find_first_not_of("0123456789.") == std::string_view::npos;
    if (!plain && !is_digits_comma_digits(line)) return std::nullopt;
    if (!plain && !doubt) doubt = ReadFault{lines.number(), words_of_doubtful_comma(line), true};
  }
  return doubt;
}

std::optional<ReadFault> read_headless(TextLines lines, char separator, const ReadOptions& options,
                                       ColumnLayout& layout) {
  const bool undecided = separator == ',' && options.decimal == DecimalSign::by_content;
  if (auto doubt = undecided ? find_doubtful_commas(lines) : std::nullopt) return doubt;
  std::vector<DataColumn> columns;
  if (auto fault = tell_columns(TableRows(lines, separator), !options.failed.empty(), columns))
    return fault;
  layout.set_columns(columns);
  return std::nullopt;
}

/// The text of a row that a decimal comma may explain; empty where none can.
std::string doubtful_text(const TableRows& rows, const ColumnLayout& layout, DecimalSign decimal) {
  const Fields row = rows.row();
  if (decimal != DecimalSign::by_content || rows.separator() != ',') return {};
  const auto found = std::find_if(row.begin(), row.end(), is_digits_comma_digits);
  if (found != row.end()) return std::string(*found);
  const bool cut_in_two = layout.columns() == 1 && row.size() == 2;
  const std::string text = cut_in_two ? std::string(row[0]) + "," + std::string(row[1]) : "";
  return is_digits_comma_digits(text) ? text : "";
}

ReadFault fault_of(const std::string& what, const std::string& doubtful, long line) {
  if (doubtful.empty()) return {line, what};
  return {line, words_of_doubtful_comma(doubtful), true};
}

/// The rows below the header become points.
void add_rows(TableRows& rows, ColumnLayout& layout, DecimalSign decimal, PointList& points) {
  std::optional<ReadFault> doubt;
  while (!rows.fault && rows.next_row()) {
    if (FieldFault wrong = layout.add_row(rows.row(), points))
      rows.fault = fault_of(*wrong, doubtful_text(rows, layout, decimal), rows.line());
    if (layout.comma_in_doubt() && !doubt)
      doubt = ReadFault{rows.line(), words_of_doubtful_comma(trimmed(rows.row().front())), true};
  }
  if (!rows.fault && layout.comma_in_doubt()) rows.fault = doubt;
}

}  // namespace

std::optional<ReadFault> read_separated_text(TextLines lines, const ReadOptions& options,
                                             PointList& points) {
  const Table table = find_table(lines, options.decimal);
  TableRows rows(table.lines, table.separator);
  ColumnLayout layout(options, table.separator);
  if (options.columns.empty() && starts_as_row(table.first)) {
    if (auto fault = read_headless(table.lines.unwatched(), table.separator, options, layout))
      return fault;
  } else if (rows.next_row()) {
    if (FieldFault wrong = layout.read_header(rows.row())) rows.refuse(*wrong);
  }
  points.reserve(table.lines.count());
  add_rows(rows, layout, options.decimal, points);
  if (!rows.fault && points.empty()) rows.refuse("no rows follow the header line");
  if (FieldFault wrong = rows.fault ? std::nullopt : layout.check_ignored_columns())
    rows.refuse(*wrong);
  return rows.fault;
}

}  // namespace tavlo
