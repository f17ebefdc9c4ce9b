// Pasted rows: rows that the reader of data texts has read, on their way into a sheet,
// and what the person is told of them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "files/point_list.h"
#include "files/read_fault.h"
#include "project/data_sheet.h"
#include "project/session.h"

namespace tavlo {

/// Reads a text into `rows`, of which it may have `most_rows`. Where a comma may
/// mean two things and the settings don't tell, the person is asked once; `cancelled` is
/// then set by Cancel.
std::optional<ReadFault> read_pasted_rows(std::string_view text, Session& session, int most_rows,
                                          DataRows& rows, bool& cancelled);

/// Puts the rows into the sheet from `row` on. A row with a mode or a comment replaces
/// those that stood there.
void enter_rows(DataSheet& sheet, int row, const DataRows& rows);

/// "10 rows: 8 failures, 2 suspensions".
std::string words_of_units(std::size_t rows, double failures, double suspensions);

/// The same of the rows `first` to `last` of a sheet, and how many of them can't be read.
std::string words_of_rows(const DataSheet& sheet, int first, int last);

}  // namespace tavlo
