#include "files/text_look.h"

#include <algorithm>

#include "files/headless_columns.h"
#include "files/table_rows.h"
#include "files/text_encoding.h"
#include "files/text_form.h"
#include "project/code_page.h"

namespace tavlo {

namespace {

std::string shown(std::string_view field) {
  field = trimmed(field);
  return is_utf8(field) ? std::string(field) : utf8_from_ansi(field);
}

std::vector<std::string> shown(Fields fields) {
  std::vector<std::string> texts;
  for (const std::string_view field : fields) texts.push_back(shown(field));
  return texts;
}

void look_at_notation(TextLines lines, std::size_t most_rows, TextLook& look) {
  look.columns = {DataColumn::x};
  while (look.rows.size() < most_rows) {
    const auto line = lines.next();
    if (!line) return;
    if (!is_remark(trimmed(*line))) look.rows.push_back({lines.number(), {shown(*line)}});
  }
}

void know_headings(TextLook& look) {
  for (std::size_t i = 0; i < look.headings.size(); ++i) {
    const auto column = find_column(look.headings[i]);
    if (!column) continue;
    const auto known = look.columns.begin() + static_cast<std::ptrdiff_t>(i);
    if (std::find(look.columns.begin(), known, column) == known) *known = column;
  }
}

/// The widest row tells how many columns there are.
std::optional<ReadFault> look_at_rows(TableRows& rows, std::size_t most_rows, TextLook& look) {
  std::size_t width = look.headings.size();
  while (rows.next_row()) {
    if (look.rows.size() < most_rows) look.rows.push_back({rows.line(), shown(rows.row())});
    std::size_t used = rows.row().size();
    while (used > width && trimmed(rows.row()[used - 1]).empty()) --used;
    width = std::max(width, used);
  }
  look.columns.resize(width);
  return rows.fault;
}

std::optional<ReadFault> look_at_table(TextLines lines, const ReadOptions& options,
                                       std::size_t most_rows, TextLook& look) {
  const TableStart table = find_table(lines, options);
  look.separator = table.separator;
  look.has_head_line = table.has_head_line;
  TableRows rows(table.lines, table.separator);
  if (table.has_head_line && rows.next_row()) look.headings = shown(rows.row());
  if (rows.fault) return rows.fault;
  if (auto fault = look_at_rows(rows, most_rows, look)) return fault;
  know_headings(look);
  std::vector<DataColumn> told;
  if (!table.has_head_line &&
      !tell_columns(TableRows(table.lines, table.separator), !options.failed.empty(), told))
    std::copy_n(told.begin(), std::min(told.size(), look.columns.size()), look.columns.begin());
  return std::nullopt;
}

}  // namespace

std::optional<ReadFault> look_at_text(std::string_view bytes, ReadOptions options,
                                      std::size_t most_rows, TextLook& look) {
  look = {};
  options.columns.clear();
  options.places.clear();
  std::string converted;
  if (auto fault = decode_text(bytes, converted)) return fault;
  const TextLines lines(bytes);
  long number = 1;
  const std::string_view first = first_data_line(lines, number);
  if (first.empty()) return ReadFault{number, "there is no data, only blank lines or remarks"};
  if (first.size() > longest_line) return ReadFault{number, "the line is too long"};
  if (form_of(first, options) != TextForm::notation)
    return look_at_table(lines, options, most_rows, look);
  look_at_notation(lines, most_rows, look);
  return std::nullopt;
}

std::string_view beginning_of(std::string_view text, std::size_t most) {
  if (text.size() <= most) return text;
  const char line_end = text.find('\n') == std::string_view::npos ? '\r' : '\n';
  bool in_quotes = false;
  std::size_t end = 0;
  for (std::size_t i = 0; i < most; ++i) {
    if (text[i] == '"') in_quotes = !in_quotes;
    if (text[i] == line_end && !in_quotes) end = i + 1;
  }
  return text.substr(0, end == 0 ? most : end);
}

}  // namespace tavlo
