#include "files/data_text.h"

#include <utility>

#include "files/column_layout.h"
#include "files/point_list.h"
#include "files/separated_text.h"
#include "files/text_lines.h"

namespace tavlo {

namespace {

enum class TextKind { nothing, notation, columns, unknown };

/// A line of the notation starts with a number or a sign; a header line holds
/// separators, or is the name of the one column.
TextKind kind_of_line(std::string_view line) {
  if (std::string_view("+-.>0123456789").find(line.front()) != std::string_view::npos)
    return TextKind::notation;
  const bool separated = line.find_first_of(",\t\"") != std::string_view::npos;
  return separated || is_column_name(line) ? TextKind::columns : TextKind::unknown;
}

/// The kind of the text by its first line that is no remark, and that line.
TextKind kind_of(TextLines lines, std::string_view& first, long& line_number) {
  while (const auto line = lines.next()) {
    first = trimmed(*line);
    line_number = lines.number();
    if (!is_remark(first)) return kind_of_line(first);
  }
  return TextKind::nothing;
}

std::optional<ReadFault> read_points(std::string_view text, const ReadOptions& options,
                                     PointList& points) {
  std::string_view first;
  long line = 1;
  const TextLines lines(text);
  switch (kind_of(lines, first, line)) {
    case TextKind::notation: return read_notation(lines, options, points);
    case TextKind::columns: return read_separated_text(lines, options, points);
    case TextKind::nothing: return ReadFault{line, "there is no data, only blank lines or remarks"};
    case TextKind::unknown: break;
  }
  return ReadFault{line, quoted(first) + " is neither a point (100, 100x3, >100) nor a header " +
                             "line that names columns (x,status)"};
}

}  // namespace

std::optional<ReadFault> read_data_rows(std::string_view bytes, const ReadOptions& options,
                                        DataRows& data) {
  if (bytes.empty()) return ReadFault{1, "the file is empty"};
  if (auto fault = find_foreign_bytes(bytes)) return fault;
  PointList points;
  if (auto fault = read_points(without_byte_order_mark(bytes), options, points)) return fault;
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
