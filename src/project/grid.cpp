#include "project/grid.h"

namespace tavlo {

Grid::Grid(int rows, int columns) : columns_(columns) { set_rows(rows); }

void Grid::set_rows(int rows) {
  rows_.resize(static_cast<std::size_t>(std::max(rows, 1)),
               Row(static_cast<std::size_t>(columns_)));
  keep_inside();
}

std::string Grid::text(int row, int column) const {
  check(row, column);
  return rows_[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
}

void Grid::set_text(int row, int column, std::string text) {
  check(row, column);
  rows_[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)] = std::move(text);
}

}  // namespace tavlo
