// Copied table: rows of cells as other programs take them: text with tabs, and HTML for a
// word processor. The first row is the headings. Numbers get the decimal sign of the system.
#pragma once

#include <string>
#include <vector>

#include "numerics/number_reading.h"
#include "ports/clipboard.h"
#include "project/cell_table.h"

namespace tavlo {

using TextRows = std::vector<std::vector<std::string>>;

ClipboardText copied_table(const TextRows& rows, const NumberPunctuation& punctuation);

/// The headings of a grid and its selected rows, in the selected columns.
TextRows selected_with_headings(const CellTable& grid);

}  // namespace tavlo
