#include "files/separated_writer.h"

#include <vector>

#include "files/point_list.h"
#include "files/shortest_number.h"
#include "files/text_lines.h"
#include "project/fit_records.h"

namespace tavlo {

namespace {

struct ExportColumn {
  const char* heading;
  bool (*holds)(const SheetRow& row);
  void (*append)(std::string& text, const SheetRow& row, const DataSet& data);
};

/// In quotation marks where a reader would take it for something else.
void append_field(std::string& text, const std::string& field) {
  if (field.find_first_of(",;\"\r\n") == std::string::npos) {
    text += field;
    return;
  }
  text += '"';
  for (const char c : field) text += c == '"' ? std::string("\"\"") : std::string(1, c);
  text += '"';
}

const std::vector<ExportColumn>& export_columns() {
  static const std::vector<ExportColumn> columns = {
      {"time", [](const SheetRow&) { return true; },
       [](std::string& text, const SheetRow& row, const DataSet&) {
         append_shortest(text, row.time);
       }},
      {"failures", [](const SheetRow& row) { return row.failures > 0; },
       [](std::string& text, const SheetRow& row, const DataSet&) {
         append_shortest(text, row.failures);
       }},
      {"suspensions", [](const SheetRow& row) { return row.suspensions > 0; },
       [](std::string& text, const SheetRow& row, const DataSet&) {
         append_shortest(text, row.suspensions);
       }},
      {"mode", [](const SheetRow& row) { return row.mode != 0; },
       [](std::string& text, const SheetRow& row, const DataSet& data) {
         append_field(text, mode_name(data, row.mode));
       }},
      {"comment", [](const SheetRow& row) { return !row.text(sheet_column::comment).empty(); },
       [](std::string& text, const SheetRow& row, const DataSet&) {
         append_field(text, row.text(sheet_column::comment));
       }}};
  return columns;
}

/// The columns that a row holds something in.
std::vector<ExportColumn> used_columns(const DataSet& data) {
  std::vector<ExportColumn> used;
  for (const ExportColumn& column : export_columns()) {
    bool holds = used.empty();
    for (std::size_t i = 0; !holds && i < data.rows.size(); ++i)
      holds = can_be_exported(data.rows[i]) && column.holds(data.rows[i]);
    if (holds) used.push_back(column);
  }
  return used;
}

/// False where a field was too long and was left out.
bool append_row(std::string& text, const std::vector<ExportColumn>& columns, const SheetRow& row,
                const DataSet& data) {
  const std::size_t start = text.size();
  bool is_whole = true;
  for (const ExportColumn& column : columns) {
    if (text.size() > start) text += ',';
    const std::size_t field = text.size();
    if (column.holds(row)) column.append(text, row, data);
    if (text.size() - start < longest_line) continue;  // another comma may follow
    text.resize(field);
    is_whole = false;
  }
  text += '\n';
  return is_whole;
}

/// Marks take room too.
bool may_be_too_long(const DataSet& data, const SheetRow& row) {
  return row.text(sheet_column::comment).size() + mode_name(data, row.mode).size() >
         longest_line / 3;
}

}  // namespace

std::string write_separated_text(const DataSet& data) {
  const std::vector<ExportColumn> columns = used_columns(data);
  std::string text;
  for (const ExportColumn& column : columns)
    text += (text.empty() ? "" : ",") + std::string(column.heading);
  text += '\n';
  const std::size_t end = export_end(data);
  for (std::size_t i = 0; i < end; ++i)
    if (can_be_exported(data.rows[i])) append_row(text, columns, data.rows[i], data);
  return text;
}

std::size_t rows_too_long(const DataSet& data) {
  const std::vector<ExportColumn> columns = used_columns(data);
  const std::size_t end = export_end(data);
  std::size_t number = 0;
  for (std::size_t i = 0; i < end; ++i) {
    std::string text;
    if (can_be_exported(data.rows[i]) && may_be_too_long(data, data.rows[i]))
      number += append_row(text, columns, data.rows[i], data) ? 0 : 1;
  }
  return number;
}

}  // namespace tavlo
