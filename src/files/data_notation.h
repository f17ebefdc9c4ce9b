// The data notation: one point a line. "100" is a failure at 100, "100x3" three
// of them, ">100" a suspension at 100, ">100x5" five, and "-100" a suspension
// too unless negative times are values. Blank lines and lines that start with
// # are skipped.
#pragma once

#include <string>
#include <string_view>

#include "files/point_list.h"
#include "files/read_fault.h"
#include "files/read_options.h"
#include "files/text_lines.h"

namespace tavlo {

/// One line of the notation.
struct NotationPoint {
  float time = 0;
  double units = 1;
  bool suspended = false;
};

/// Reads a line that is neither blank nor a remark; blanks may stand between
/// its parts.
FieldFault read_notation_line(std::string_view line, const ReadOptions& options,
                              NotationPoint& point);

/// Adds all the lines that are left to `points`.
std::optional<ReadFault> read_notation(TextLines lines, const ReadOptions& options,
                                       PointList& points);

/// The set in the notation, rows in the order of entry, each number in the
/// shortest form that reads back equal. A row with failures and suspensions
/// gives two lines; one that no data file can hold is left out. Negative times read back as
/// values only with the option.
std::string write_notation(const DataSet& data);

}  // namespace tavlo
