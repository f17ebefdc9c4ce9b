#include "project/grid.h"

#include <algorithm>
#include <limits>
#include <numeric>

#include "numerics/number_text.h"

namespace tavlo {

Grid::Grid(int rows, int columns)
    : rows_(std::max(rows, 1)), columns_(static_cast<std::size_t>(columns)) {}

void Grid::set_rows(int rows) {
  rows_ = std::max(rows, 1);
  for (Column& column : columns_)
    if (!column.empty()) column.resize(static_cast<std::size_t>(rows_));
  row_ = std::min(row_, rows_ - 1);
  row_end_ = std::min(row_end_, rows_ - 1);
}

void Grid::check(int row, int column) const {
  if (row < 0 || row >= rows_ || column < 0 || column >= columns())
    throw RunTimeError(run_time::subscript);
}

const std::string& Grid::text(int row, int column) const {
  static const std::string nothing;
  check(row, column);
  const Column& texts = columns_[static_cast<std::size_t>(column)];
  return texts.empty() ? nothing : texts[static_cast<std::size_t>(row)];
}

void Grid::set_text(int row, int column, std::string text) {
  check(row, column);
  Column& texts = columns_[static_cast<std::size_t>(column)];
  if (texts.empty()) {
    if (text.empty()) return;
    texts.resize(static_cast<std::size_t>(rows_));
  }
  texts[static_cast<std::size_t>(row)] = std::move(text);
}

void Grid::clear(const GridBlock& block) {
  for (int row = block.first_row; row <= block.last_row; ++row)
    for (int column = block.first_column; column <= block.last_column; ++column)
      set_text(row, column, {});
}

void Grid::go_to(int row, int column) {
  check(row, column);
  row_ = row_end_ = row;
  column_ = column_end_ = column;
}

GridBlock Grid::selection() const {
  return {std::min(row_, row_end_), std::min(column_, column_end_), std::max(row_, row_end_),
          std::max(column_, column_end_)};
}

void Grid::select_to(int row, int column) {
  check(row, column);
  row_end_ = row;
  column_end_ = column;
}

void Grid::sort_rows(int first, int last, int key_column, bool ascending) {
  if (first > last) return;
  check(first, key_column);
  check(last, key_column);
  constexpr double lowest = -std::numeric_limits<double>::infinity();
  const auto count = static_cast<std::size_t>(last - first) + 1;
  std::vector<double> keys(count);
  for (std::size_t i = 0; i < count; ++i)
    keys[i] = parse_number(text(first + static_cast<int>(i), key_column))
                  .value_or(ascending ? 0.0 : lowest);
  if (std::is_sorted(keys.begin(), keys.end(),
                     [ascending](double a, double b) { return ascending ? a < b : a > b; }))
    return;
  std::vector<std::size_t> order(count);
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    return ascending ? keys[a] < keys[b] : keys[a] > keys[b];
  });
  for (Column& column : columns_) {
    if (column.empty()) continue;
    Column sorted(count);
    const auto start = static_cast<std::size_t>(first);
    for (std::size_t i = 0; i < count; ++i) sorted[i] = std::move(column[start + order[i]]);
    std::move(sorted.begin(), sorted.end(), column.begin() + first);
  }
}

}  // namespace tavlo
