// CellTable: a table of cells as a window shows it, with a current cell and a block that is
// selected. Row 0 is a heading.
#pragma once

#include <algorithm>
#include <string>

namespace tavlo {

/// Rows and columns, both ends included.
struct GridBlock {
  int first_row = 0;
  int first_column = 0;
  int last_row = 0;
  int last_column = 0;

  friend bool operator==(const GridBlock&, const GridBlock&) = default;
};

class CellTable {
 public:
  virtual ~CellTable() = default;

  virtual int rows() const = 0;
  virtual int columns() const = 0;

  /// What a cell shows; error 9 outside the table.
  virtual std::string text(int row, int column) const = 0;

  int row() const { return row_; }
  int column() const { return column_; }

  /// Moves the current cell, and the selection with it. Error 9 outside the table.
  void go_to(int row, int column);

  /// The selected block, its corners in order.
  GridBlock selection() const;
  /// Spans the selection from the current cell to (row, column).
  void select_to(int row, int column);

 protected:
  void check(int row, int column) const;
  /// The table has become shorter.
  void keep_inside();

 private:
  int row_ = 0;
  int column_ = 0;
  int row_end_ = 0;
  int column_end_ = 0;
};

}  // namespace tavlo
