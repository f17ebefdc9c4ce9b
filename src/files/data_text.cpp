#include "files/data_text.h"

#include <algorithm>
#include <utility>

#include "files/column_names.h"
#include "files/field_number.h"
#include "files/point_list.h"
#include "files/separated_text.h"
#include "files/text_encoding.h"
#include "files/text_lines.h"

namespace tavlo {

namespace {

/// The first line that carries data, without the blanks around it.
std::string_view first_data_line(TextLines lines, long& number) {
  while (const auto line = lines.next()) {
    number = lines.number();
    if (!is_remark(trimmed(*line))) return trimmed(*line);
  }
  return {};
}

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

ReadFault fault_of_first_line(std::string_view line, long number) {
  return {number, quoted(line) + " is neither a point (100, 100x3, >100) nor a header line that " +
                      "names columns (x,status)"};
}

// A text that fits both is the notation.
std::optional<ReadFault> read_points(const TextLines& lines, std::string_view first, long number,
                                     const ReadOptions& options, PointList& points) {
  if (first.empty()) return ReadFault{number, "there is no data, only blank lines or remarks"};
  if (first.size() > longest_line) return ReadFault{number, "the line is too long"};
  const bool in_notation = fits_notation(first, options);
  if (in_notation && !options.columns.empty())
    return ReadFault{number, "there is no header line that names columns"};
  if (!in_notation && is_table(first, options)) return read_separated_text(lines, options, points);
  if (!starts_as_number(first)) return fault_of_first_line(first, number);
  return read_notation(lines, options, points);
}

/// No column fits "Jan 5 2024"; said so, the person knows what is wrong.
std::optional<ReadFault> read_lines(const TextLines& lines, const ReadOptions& options,
                                    PointList& points) {
  long number = 1;
  const std::string_view first = first_data_line(lines, number);
  auto fault = read_points(lines, first, number, options, points);
  if (fault && fault->line == number && is_spelled_date(first))
    return ReadFault{number, words_of_date(first)};
  return fault;
}

}  // namespace

std::optional<ReadFault> read_data_rows(std::string_view bytes, const ReadOptions& options,
                                        DataRows& data, Progress* progress) {
  if (bytes.empty()) return ReadFault{1, "the file is empty"};
  std::string converted;
  if (auto fault = decode_text(bytes, converted)) return fault;
  PointList points(options.most_rows);
  ReadWatch watch(progress, bytes.size());
  const auto fault = read_lines(TextLines(bytes, &watch), options, points);
  if (watch.stopped()) return ReadFault{1, "the reading was stopped", false, true};
  if (fault) return fault;
  data = points.take();
  return std::nullopt;
}

std::optional<ReadFault> read_data_text(std::string_view bytes, const ReadOptions& options,
                                        DataSet& data) {
  DataRows rows;
  if (auto fault = read_data_rows(bytes, options, rows)) return fault;
  fill_data_set(std::move(rows), data);
  return std::nullopt;
}

}  // namespace tavlo
