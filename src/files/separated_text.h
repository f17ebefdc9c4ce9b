// Separated text: rows of fields between tabs, semicolons, commas or blanks, with a header
// line that names the columns or, where the rows alone tell, without one.
#pragma once

#include <optional>

#include "files/point_list.h"
#include "files/read_fault.h"
#include "files/read_options.h"
#include "files/text_lines.h"

namespace tavlo {

/// Adds all the rows that are left in `lines` to `points`. The next line that is no remark
/// is the header, unless it starts as a number does.
std::optional<ReadFault> read_separated_text(TextLines lines, const ReadOptions& options,
                                             PointList& points);

}  // namespace tavlo
