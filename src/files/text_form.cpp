#include "files/text_form.h"

#include <algorithm>

#include "files/column_names.h"
#include "files/data_notation.h"
#include "files/field_number.h"
#include "numerics/digit.h"

namespace tavlo {

namespace {

bool fits_notation(std::string_view line, const ReadOptions& options) {
  NotationPoint point;
  return !read_notation_line(line, options, point);
}

/// A number and something behind it, or words of which one is a known heading.
bool has_blank_columns(std::string_view line) {
  std::size_t blank = line.find_first_of(" \t");
  if (blank != std::string_view::npos && starts_as_number(line)) return true;
  while (blank != std::string_view::npos) {
    if (find_column(line.substr(0, blank))) return true;
    line = trimmed(line.substr(blank));
    blank = line.find_first_of(" \t");
    if (blank == std::string_view::npos) return find_column(line).has_value();
  }
  return false;
}

/// A table has a separator, or is one column under a name.
bool is_table(std::string_view line, const ReadOptions& options) {
  const bool separated = line.find_first_of(",;\t\"") != std::string_view::npos;
  const bool named = std::any_of(
      options.columns.begin(), options.columns.end(),
      [line](const ColumnChoice& choice) { return equal_in_any_case(line, choice.name); });
  return separated || named || find_column(line) || has_blank_columns(line);
}

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

/// True for a line of data, false for a header line.
bool starts_as_row(std::string_view line) {
  return starts_as_number(line.substr(line.starts_with('"') ? 1 : 0));
}

bool has_head_line(std::string_view first, const ReadOptions& options) {
  if (options.head_line != HeadLine::by_content) return options.head_line == HeadLine::yes;
  return !options.columns.empty() || !starts_as_row(first);
}

bool tells_of_table(const ReadOptions& options) {
  return options.separator != 0 || !options.places.empty() || options.head_line == HeadLine::yes;
}

}  // namespace

std::string_view first_data_line(TextLines lines, long& number) {
  while (const auto line = lines.next()) {
    number = lines.number();
    if (!is_remark(trimmed(*line))) return trimmed(*line);
  }
  return {};
}

TextForm form_of(std::string_view first_line, const ReadOptions& options) {
  if (tells_of_table(options)) return TextForm::table;
  if (fits_notation(first_line, options)) return TextForm::notation;
  if (is_table(first_line, options)) return TextForm::table;
  return starts_as_number(first_line) ? TextForm::notation : TextForm::neither;
}

TableStart find_table(TextLines lines, const ReadOptions& options) {
  TableStart table{lines, {}};
  char named = 0;
  while (const auto line = lines.next()) {
    table.first = trimmed(*line);
    const bool is_mark = names_separator(table.first);
    if (is_mark) named = table.first.back();
    if (!is_remark(table.first) && !is_mark) break;
    table.lines = lines;
  }
  if (options.separator != 0) named = options.separator;
  table.separator = named != 0 ? named : separator_of(table.first, options.decimal);
  table.has_head_line = has_head_line(table.first, options);
  return table;
}

}  // namespace tavlo
