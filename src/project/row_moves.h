// Row moves: a list of sheet rows with some put in, some taken out, or in another order.
// Each gives a new list and leaves the cells as they are.
#pragma once

#include "project/records.h"

namespace tavlo {

using SheetRows = SharedRows<SheetRow>;

/// With `count` blank rows before the row `index`, from 0, which the list has.
SheetRows with_blank_rows(const SheetRows& rows, std::size_t index, std::size_t count);

/// Without the rows `first` to `end` - 1, from 0, which the list has.
SheetRows without_rows(const SheetRows& rows, std::size_t first, std::size_t end);

enum class SortOrder { ascending, descending };

/// By what stands in a column from `sheet_column::x` on: numbers by their size, words in any case
/// of their letters, equal ones in the order that they had. In either order cells that can't be
/// read come behind the others, and empty ones last.
SheetRows sorted_rows(const DataSet& data, int column, SortOrder order);

/// Whether the row `index` is the one that the ranks at hand were made of.
bool has_rank_at_hand(const DataSet& data, std::size_t index);

/// Puts the cell of a column into another row.
void copy_cell(const SheetRow& from, SheetRow& to, int column);

}  // namespace tavlo
