// Grid: a table of texts with a current cell and a selection, the model behind
// the data sheet and the fit grid. Row 0 holds the headings.
#pragma once

#include <string>
#include <vector>

#include "numerics/slots.h"

namespace tavlo {

/// A block of cells, its corners included.
struct GridBlock {
  int first_row = 0;
  int first_column = 0;
  int last_row = 0;
  int last_column = 0;

  friend bool operator==(const GridBlock&, const GridBlock&) = default;
};

class Grid {
 public:
  Grid(int rows, int columns);

  int rows() const { return rows_; }
  int columns() const { return static_cast<int>(columns_.size()); }

  /// Changes the number of rows, keeping what they hold; at least 1.
  void set_rows(int rows);

  /// Error 9 outside the table.
  const std::string& text(int row, int column) const;
  void set_text(int row, int column, std::string text);

  /// Empties the block.
  void clear(const GridBlock& block);

  int row() const { return row_; }
  int column() const { return column_; }

  /// Moves the current cell, and the selection with it.
  void go_to(int row, int column);

  /// The selected block, its corners in order.
  GridBlock selection() const;
  /// Spans the selection from the current cell to (row, column).
  void select_to(int row, int column);

  /// Sorts whole rows first..last by the numbers in the key column; stable. An
  /// empty or unreadable cell counts as 0 ascending and stands last descending.
  void sort_rows(int first, int last, int key_column, bool ascending);

 private:
  /// A column holds no texts until one is written to it: most sheets leave most
  /// columns empty, and a million rows must stay small.
  using Column = std::vector<std::string>;

  void check(int row, int column) const;

  int rows_;
  std::vector<Column> columns_;
  int row_ = 0;
  int column_ = 0;
  int row_end_ = 0;
  int column_end_ = 0;
};

}  // namespace tavlo
