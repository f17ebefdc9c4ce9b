#include "numerics/matrix_solution.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <utility>

#include "numerics/real.h"

namespace tavlo {
namespace {

constexpr double smallest_pivot = 1e-300;

/// One elimination on a copy of the system. "First", "next" and "onward" follow
/// the direction of travel: it runs from n down to 1 when the last diagonal
/// element is at least as large as the second one, and from 1 up to n otherwise.
class Elimination {
 public:
  Elimination(const Matrix& system, int n, bool keep_pivot_column)
      : a_(system), n_(n), keep_pivot_column_(keep_pivot_column) {
    const bool down = std::fabs(a_(2, 2)) <= std::fabs(a_(n, n));
    first_ = down ? n : 1;
    step_ = down ? -1 : 1;
    end_ = down ? 0 : n + 1;
  }

  /// False when a pivot vanishes.
  bool run() {
    for (int k = first_; k != end_; k += step_) {
      bring_pivot_row_to(k);
      if (std::fabs(a_(k, k)) <= smallest_pivot) return false;
      eliminate(k);
    }
    return true;
  }

  Matrix take_result() { return std::move(a_); }

 private:
  void bring_pivot_row_to(int k) {
    int pivot = k;
    double best = -5;  // below any absolute value: row k always qualifies
    for (int j = k; j != end_; j += step_) {
      if (!(std::fabs(a_(j, k)) > best)) continue;
      best = std::fabs(a_(j, k));
      pivot = j;
    }
    if (pivot == k) return;
    std::swap(a_(k, 0), a_(pivot, 0));
    for (int c = k; c != end_; c += step_) std::swap(a_(k, c), a_(pivot, c));
  }

  void eliminate(int k) {
    const int first_column = keep_pivot_column_ ? k : k + step_;
    scale_row(k, first_column);
    for (int i = 1; i <= n_; ++i)
      if (i != k) subtract_row(k, i, first_column);
  }

  // The factor is taken before the loop, which may overwrite its element.
  void scale_row(int k, int first_column) {
    const Real factor = 1 / Real(a_(k, k));
    a_(k, 0) = (a_(k, 0) * factor).value();
    for (int c = first_column; c != end_; c += step_) a_(k, c) = (a_(k, c) * factor).value();
  }

  void subtract_row(int k, int i, int first_column) {
    const Real factor = a_(i, k);
    a_(i, 0) = (a_(i, 0) - factor * a_(k, 0)).value();
    for (int c = first_column; c != end_; c += step_)
      a_(i, c) = (a_(i, c) - factor * a_(k, c)).value();
  }

  Matrix a_;
  int n_;
  bool keep_pivot_column_;
  int first_ = 1;
  int step_ = 1;
  int end_ = 1;
};

int dimension_fault(int n) {
  if (n < 1) return error_code::undefined_array;
  return n == 1 ? error_code::array_too_small : error_code::none;
}

void add_failure_words(ErrorReporter& reporter, int code) {
  switch (code) {
    case error_code::undefined_array:
      reporter.add_lines({"Incoming array must be", " dimensioned (0 to n, 0 to n), with n>=2"});
      break;
    case error_code::array_too_small:
      reporter.add_lines({"Dimension 0 of Array ", "is unavailable to return solution."});
      break;
    case error_code::singular_matrix:
      reporter.add_lines({"Singular matrix.  The ", "Determinant is zero and the matrix cannot be ",
                          "solved.  Check for duplicated rows."});
      break;
    default:
      reporter.add_lines({"Ill-Conditioned Matrix.",
                          "  An overflow error occured while solving the ", "matrix. "});
  }
}

}  // namespace

Matrix::Matrix(int last_row, int last_column)
    : last_row_(std::max(last_row, -1)),
      last_column_(std::max(last_column, -1)),
      cells_((static_cast<std::size_t>(last_row_) + 1) *
             (static_cast<std::size_t>(last_column_) + 1)) {}

double& Matrix::operator()(int row, int column) { return cells_[index_of(row, column)]; }

double Matrix::operator()(int row, int column) const { return cells_[index_of(row, column)]; }

std::size_t Matrix::index_of(int row, int column) const {
  if (row < 0 || row > last_row_ || column < 0 || column > last_column_)
    throw RunTimeError(run_time::subscript);
  return static_cast<std::size_t>(row) * (static_cast<std::size_t>(last_column_) + 1) +
         static_cast<std::size_t>(column);
}

int MatSolve(ErrorReporter& reporter, Matrix& a, bool keep_pivot_column) {
  const int n = std::min(a.last_row(), a.last_column());
  int code = dimension_fault(n);
  const auto words = [&](ErrorReporter& to) {
    to.gErrCode = code;
    to.add_lines({"Matrix Solution subroutine: ", "Rows/Columns: " + std::to_string(n)});
    add_failure_words(to, code);
    to.add_lines({"MatSolve routine:"});
  };
  guarded(reporter, words, [&] {
    if (code != error_code::none) throw RunTimeError(run_time::invalid_argument);
    code = error_code::matrix_problem;  // what an overflow on the way will be
    Elimination elimination(a, n, keep_pivot_column);
    if (!elimination.run()) {
      code = error_code::singular_matrix;
      throw RunTimeError(run_time::division_by_zero);
    }
    a = elimination.take_result();
    code = error_code::none;
  });
  return code;
}

}  // namespace tavlo
