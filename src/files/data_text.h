// Data text: the one reader of what people open, paste or pipe as text, from its bytes to
// rows or to a data set. What kind of text it is, the data notation or a table, shows in
// its content; where it can be read in two ways it is refused.
#pragma once

#include <optional>
#include <string_view>

#include "files/data_notation.h"
#include "files/point_list.h"
#include "files/read_fault.h"
#include "ports/progress.h"
#include "project/records.h"

namespace tavlo {

/// Reads the points of a text in their order. Strict: anything that isn't
/// clearly data is a fault, and `data` is then left as it was. UTF-8 or UTF-16, with
/// or without a byte order mark; headings, comments and modes may also be in the ANSI
/// code page. Line ends may be LF, CR LF or CR. `progress` hears of long texts and may
/// stop the reading, which is a fault.
std::optional<ReadFault> read_data_rows(std::string_view bytes, const ReadOptions& options,
                                        DataRows& data, Progress* progress = nullptr);

/// The same into a data set, its rows and mode names: ready for Make_Ranks.
std::optional<ReadFault> read_data_text(std::string_view bytes, const ReadOptions& options,
                                        DataSet& data);

}  // namespace tavlo
