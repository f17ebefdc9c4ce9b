#include "project/grid.h"

#include <algorithm>
#include <limits>

#include "numerics/number_text.h"

namespace tavlo {

Grid::Grid(int rows, int columns)
    : columns_(columns),
      cells_(static_cast<std::size_t>(std::max(rows, 1)),
             std::vector<std::string>(static_cast<std::size_t>(columns))) {}

void Grid::set_rows(int rows) {
  cells_.resize(static_cast<std::size_t>(std::max(rows, 1)),
                std::vector<std::string>(static_cast<std::size_t>(columns_)));
  const int last = this->rows() - 1;
  row_ = std::min(row_, last);
  row_end_ = std::min(row_end_, last);
}

std::vector<std::string>& Grid::checked(int row, int column) {
  if (row < 0 || row >= rows() || column < 0 || column >= columns_)
    throw RunTimeError(run_time::subscript);
  return cells_[static_cast<std::size_t>(row)];
}

const std::string& Grid::text(int row, int column) const {
  return const_cast<Grid*>(this)->checked(row, column)[static_cast<std::size_t>(column)];
}

void Grid::set_text(int row, int column, std::string text) {
  checked(row, column)[static_cast<std::size_t>(column)] = std::move(text);
}

void Grid::clear(const GridBlock& block) {
  for (int row = block.first_row; row <= block.last_row; ++row)
    for (int column = block.first_column; column <= block.last_column; ++column)
      set_text(row, column, {});
}

void Grid::go_to(int row, int column) {
  checked(row, column);
  row_ = row_end_ = row;
  column_ = column_end_ = column;
}

GridBlock Grid::selection() const {
  return {std::min(row_, row_end_), std::min(column_, column_end_), std::max(row_, row_end_),
          std::max(column_, column_end_)};
}

void Grid::select_to(int row, int column) {
  checked(row, column);
  row_end_ = row;
  column_end_ = column;
}

void Grid::sort_rows(int first, int last, int key_column, bool ascending) {
  if (first > last) return;
  checked(first, key_column);
  checked(last, key_column);
  constexpr double lowest = -std::numeric_limits<double>::infinity();
  struct KeyedRow {
    double key;
    std::vector<std::string> texts;
  };
  std::vector<KeyedRow> rows;
  rows.reserve(static_cast<std::size_t>(last - first) + 1);
  for (int r = first; r <= last; ++r) {
    const double key = parse_number(text(r, key_column)).value_or(ascending ? 0.0 : lowest);
    rows.push_back({key, std::move(checked(r, 0))});
  }
  std::stable_sort(rows.begin(), rows.end(), [ascending](const KeyedRow& a, const KeyedRow& b) {
    return ascending ? a.key < b.key : a.key > b.key;
  });
  for (int r = first; r <= last; ++r)
    checked(r, 0) = std::move(rows[static_cast<std::size_t>(r - first)].texts);
}

}  // namespace tavlo
