#include "files/separated_text.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "files/column_layout.h"
#include "files/column_names.h"
#include "files/headless_columns.h"
#include "files/table_rows.h"
#include "files/text_form.h"

namespace tavlo {

namespace {

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

std::optional<ReadFault> find_doubt(const TableStart& table, const ReadOptions& options) {
  const bool undecided = table.separator == ',' && options.separator == 0 &&
                         options.decimal == DecimalSign::by_content && !table.has_head_line;
  return undecided ? find_doubtful_commas(table.lines.unwatched()) : std::nullopt;
}

std::optional<ReadFault> tell_headless(const TableStart& table, const ReadOptions& options,
                                       ColumnLayout& layout) {
  if (!options.columns.empty())
    return ReadFault{table.lines.number() + 1, "there is no header line that names columns"};
  std::vector<DataColumn> columns;
  if (auto fault = tell_columns(TableRows(table.lines.unwatched(), table.separator),
                                !options.failed.empty(), columns))
    return fault;
  layout.set_columns(columns);
  return std::nullopt;
}

/// What the columns are; the head line, if any, is read then.
std::optional<ReadFault> lay_out(const TableStart& table, const ReadOptions& options,
                                 TableRows& rows, ColumnLayout& layout) {
  if (auto doubt = find_doubt(table, options)) return doubt;
  const bool is_told = !options.places.empty();
  if (!table.has_head_line && !is_told) return tell_headless(table, options, layout);
  if (table.has_head_line && !rows.next_row()) return rows.fault;
  const Fields names = table.has_head_line ? rows.row() : Fields();
  FieldFault wrong =
      is_told ? layout.set_places(options.places, names.size()) : layout.read_header(names);
  if (!wrong) return std::nullopt;
  rows.refuse(*wrong);
  return rows.fault;
}

/// The text of a row that a decimal comma may explain; empty where none can.
std::string doubtful_text(const TableRows& rows, const ColumnLayout& layout,
                          const ReadOptions& options) {
  const Fields row = rows.row();
  const bool is_told = options.decimal != DecimalSign::by_content || options.separator != 0;
  if (is_told || rows.separator() != ',') return {};
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

/// What is wrong with the row; nothing, too, when it is held as it was typed. Then `first_held`
/// keeps the fault of the first one.
std::optional<ReadFault> add_row(const TableRows& rows, ColumnLayout& layout,
                                 const ReadOptions& options, PointList& points,
                                 std::optional<ReadFault>& first_held) {
  const std::size_t before = points.size();
  const FieldFault wrong = layout.add_row(rows.row(), points);
  if (!wrong) return std::nullopt;
  const ReadFault fault = fault_of(*wrong, doubtful_text(rows, layout, options), rows.line());
  if (!options.holds_unread || fault.comma_in_doubt || points.size() > before) return fault;
  if (const FieldFault refused = layout.hold_row(rows.row(), points))
    return ReadFault{rows.line(), *refused};
  if (!first_held) first_held = fault;
  return std::nullopt;
}

/// The rows below the header become points.
void add_rows(TableRows& rows, ColumnLayout& layout, const ReadOptions& options,
              PointList& points) {
  std::optional<ReadFault> doubt, first_held;
  while (!rows.fault && rows.next_row()) {
    rows.fault = add_row(rows, layout, options, points, first_held);
    if (layout.comma_in_doubt() && !doubt)
      doubt = ReadFault{rows.line(), words_of_doubtful_comma(trimmed(rows.row().front())), true};
  }
  if (!rows.fault && layout.comma_in_doubt()) rows.fault = doubt;
  if (!rows.fault && points.held() == points.size()) rows.fault = first_held;
}

}  // namespace

std::optional<ReadFault> read_separated_text(TextLines lines, const ReadOptions& options,
                                             PointList& points) {
  const TableStart table = find_table(lines, options);
  TableRows rows(table.lines, table.separator);
  ColumnLayout layout(options, table.separator);
  if (auto fault = lay_out(table, options, rows, layout)) return fault;
  if (table.has_head_line && options.places.empty()) points.set_unused(layout.unused(rows.row()));
  points.reserve(table.lines.count());
  ReadOptions options_of_rows = options;
  options_of_rows.holds_unread &= table.has_head_line;
  add_rows(rows, layout, options_of_rows, points);
  if (!rows.fault && points.empty()) rows.refuse("no rows follow the header line");
  if (FieldFault wrong = rows.fault ? std::nullopt : layout.check_ignored_columns())
    rows.refuse(*wrong);
  return rows.fault;
}

}  // namespace tavlo
