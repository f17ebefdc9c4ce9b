// Separated text: comma- or tab-separated rows under a header line that names
// the columns. Fields may stand in quotation marks and then hold line ends.
#pragma once

#include <optional>

#include "files/data_notation.h"
#include "files/point_list.h"
#include "files/read_fault.h"
#include "files/text_lines.h"

namespace tavlo {

/// Adds all the rows that are left in `lines` to `points`; the next line that is
/// no remark is the header. It holds a tab where tabs separate the columns.
std::optional<ReadFault> read_separated_text(TextLines lines, const ReadOptions& options,
                                             PointList& points);

}  // namespace tavlo
