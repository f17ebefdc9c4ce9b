#include "files/data_text.h"

#include <utility>

#include "files/field_number.h"
#include "files/point_list.h"
#include "files/separated_text.h"
#include "files/text_encoding.h"
#include "files/text_form.h"
#include "files/text_lines.h"

namespace tavlo {

namespace {

ReadFault fault_of_first_line(std::string_view line, long number) {
  return {number, quoted(line) + " is neither a point (100, 100x3, >100) nor a header line that " +
                      "names columns (x,status)"};
}

std::optional<ReadFault> read_points(const TextLines& lines, std::string_view first, long number,
                                     const ReadOptions& options, PointList& points) {
  if (first.empty()) return ReadFault{number, "there is no data, only blank lines or remarks"};
  if (first.size() > longest_line) return ReadFault{number, "the line is too long"};
  const TextForm form = form_of(first, options);
  if (form == TextForm::table) return read_separated_text(lines, options, points);
  if (form == TextForm::neither) return fault_of_first_line(first, number);
  if (!options.columns.empty())
    return ReadFault{number, "there is no header line that names columns"};
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
