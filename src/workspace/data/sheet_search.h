// Sheet search: the next cell of a sheet whose text holds another one, in any case of its
// letters. Cells that can't hold it are passed without making their text.
#pragma once

#include <QString>
#include <optional>
#include <span>

#include "project/data_sheet.h"

namespace tavlo {

struct CellPlace {
  int row = 1;
  int column = sheet_column::x;

  friend bool operator==(const CellPlace&, const CellPlace&) = default;
};

enum class SearchWay { forward, backward };

/// Goes row by row through the columns, which stand in their order, from the cell behind `from`
/// to the end, on from the other end, and back to `from` itself. Nothing when no cell has it.
std::optional<CellPlace> find_cell(const DataSheet& sheet, std::span<const int> columns,
                                   const QString& wanted, CellPlace from, SearchWay way);

}  // namespace tavlo
