// JacobianMatrix: M rows by K columns, both from 1, each column contiguous.
#pragma once

#include <cstddef>
#include <numeric>
#include <utility>
#include <vector>

namespace tavlo {

class JacobianMatrix {
 public:
  JacobianMatrix() = default;
  JacobianMatrix(int rows, int columns)
      : stride_(static_cast<std::size_t>(rows) + 1),
        cells_(stride_ * static_cast<std::size_t>(columns)),
        place_(static_cast<std::size_t>(columns)) {
    std::iota(place_.begin(), place_.end(), std::size_t{0});
  }

  double& operator()(int row, int column) { return column_data(column)[row]; }
  double operator()(int row, int column) const { return column_data(column)[row]; }

  /// The column, indexed by row from 1; index 0 is a spare cell.
  double* column_data(int column) {
    return cells_.data() + stride_ * place_[static_cast<std::size_t>(column - 1)];
  }
  const double* column_data(int column) const {
    return cells_.data() + stride_ * place_[static_cast<std::size_t>(column - 1)];
  }

  /// Lets two columns change places without a move in memory.
  void swap_columns(int a, int b) {
    std::swap(place_[static_cast<std::size_t>(a - 1)], place_[static_cast<std::size_t>(b - 1)]);
  }

 private:
  std::size_t stride_ = 1;
  std::vector<double> cells_;
  std::vector<std::size_t> place_;  ///< where in `cells_` a column stands
};

}  // namespace tavlo
