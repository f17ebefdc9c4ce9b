// Grid: a table of texts, the model behind the fit grid. Row 0 holds the headings.
#pragma once

#include <string>
#include <vector>

#include "project/cell_table.h"

namespace tavlo {

class Grid : public CellTable {
 public:
  Grid(int rows, int columns);

  int rows() const override { return static_cast<int>(rows_.size()); }
  int columns() const override { return columns_; }
  std::string text(int row, int column) const override;

  /// Changes the number of rows, keeping what they hold; at least 1.
  void set_rows(int rows);

  /// Error 9 outside the table.
  void set_text(int row, int column, std::string text);

 private:
  using Row = std::vector<std::string>;

  int columns_;
  std::vector<Row> rows_;
};

}  // namespace tavlo
