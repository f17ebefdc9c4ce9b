// MatSolve: a dense linear system solved in place by Gauss-Jordan elimination.
#pragma once

#include <cstddef>
#include <vector>

#include "numerics/error_reporter.h"

namespace tavlo {

/// A table with the indexes 0..last_row() and 0..last_column(); both bounds are
/// -1 when it is empty.
class Matrix {
 public:
  Matrix() = default;
  Matrix(int last_row, int last_column);

  double& operator()(int row, int column);  ///< error 9 outside the bounds
  double operator()(int row, int column) const;
  int last_row() const { return last_row_; }
  int last_column() const { return last_column_; }

 private:
  std::size_t index_of(int row, int column) const;

  int last_row_ = -1;
  int last_column_ = -1;
  std::vector<double> cells_;
};

/// Solves the n equations in rows and columns 1..n of `a`, n being the smaller
/// upper bound; the right-hand side stands in column 0, and there the solution
/// comes to stand. `keep_pivot_column` also rewrites column k at each step.
/// Returns 0, or the reported code 1003 to 1006, and then `a` is as it was.
/// The test for a singular matrix is absolute (1e-300): callers must not rely
/// on it for nearly singular systems.
int MatSolve(ErrorReporter& reporter, Matrix& a, bool keep_pivot_column);

}  // namespace tavlo
