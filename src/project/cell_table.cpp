#include "project/cell_table.h"

#include "numerics/run_time_error.h"

namespace tavlo {

void CellTable::check(int row, int column) const {
  if (row < 0 || row >= rows() || column < 0 || column >= columns())
    throw RunTimeError(run_time::subscript);
}

void CellTable::keep_inside() {
  row_ = std::min(row_, rows() - 1);
  row_end_ = std::min(row_end_, rows() - 1);
}

void CellTable::go_to(int row, int column) {
  check(row, column);
  row_ = row_end_ = row;
  column_ = column_end_ = column;
}

GridBlock CellTable::selection() const {
  return {std::min(row_, row_end_), std::min(column_, column_end_), std::max(row_, row_end_),
          std::max(column_, column_end_)};
}

void CellTable::select_to(int row, int column) {
  check(row, column);
  row_end_ = row;
  column_end_ = column;
}

}  // namespace tavlo
