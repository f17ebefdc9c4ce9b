// RTF table: texts in rows and columns as a piece of RTF for the log, in the form that word
// processors open as a table.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace tavlo {

/// Where the rows of a table stand on the page.
enum class RowAlignment { left, centred, right };

using TableRows = std::vector<std::vector<std::string>>;

/// The table on lines of its own. Cells hold plain UTF-8 text; a row has as many as there are
/// `widths`, in twips (1/1440 inch), and missing ones are empty. Empty without rows or columns.
std::string RTF_Table(const TableRows& rows, std::span<const int> widths, RowAlignment alignment);

}  // namespace tavlo
