// Data text: the one reader of what people open, paste or pipe as text, from its bytes to
// rows or to a data set. What kind of text it is, the data notation or a table, shows in
// its content; where it can be read in two ways it is refused.
#pragma once

#include <optional>
#include <string_view>

#include "files/data_notation.h"
#include "files/point_list.h"
#include "files/read_fault.h"
#include "project/records.h"

namespace tavlo {

/// Reads the points of a text in their order. Strict: anything that isn't
/// clearly data is a fault, and `data` is then left as it was. UTF-8, with or
/// without a byte order mark; comments and modes may also be in the ANSI code
/// page. Line ends may be LF, CR LF or CR.
std::optional<ReadFault> read_data_rows(std::string_view bytes, const ReadOptions& options,
                                        DataRows& data);

/// The same into a data set, its rows and mode names: ready for Make_Ranks.
std::optional<ReadFault> read_data_text(std::string_view bytes, const ReadOptions& options,
                                        DataSet& data);

}  // namespace tavlo
