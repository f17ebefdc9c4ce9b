// Copied table: a block of cells in the forms that spreadsheets and word processors take, with
// the headings of its columns.
#pragma once

#include "numerics/number_reading.h"
#include "ports/clipboard.h"
#include "project/cell_table.h"

namespace tavlo {

/// As text with a tab between cells and a line for each row, and as a table of HTML. Row 0 of the
/// table, its headings, comes first for more than one cell. Numbers have the decimal sign of
/// `punctuation`; line ends and tabs inside a cell become blanks.
ClipboardText copied_table(const CellTable& table, const GridBlock& block,
                           const NumberPunctuation& punctuation);

}  // namespace tavlo
