#include "solver/qr_factorization.h"

#include <algorithm>
#include <cmath>

#include "numerics/elementary.h"
#include "numerics/real.h"
#include "solver/column_arithmetic.h"
#include "solver/euclidean_norm.h"

namespace tavlo {
namespace {

constexpr double machine_precision = 1e-15;
constexpr double p05 = 0.05;

/// Rows that are worked on in all columns before the next ones come, so that they
/// are read from memory once: 8 kB of each column.
constexpr int block_rows = 1024;

class Factorization {
 public:
  Factorization(Solver& solver, int M, int K, JacobianMatrix& fjac, PivotList& ipvt,
                VariableVector& rdiag, VariableVector& acnorm)
      : solver_(solver), M_(M), K_(K), fjac_(fjac), ipvt_(ipvt), rdiag_(rdiag), acnorm_(acnorm) {}

  void run() {
    take_column_norms();
    for (int j = 1; j <= std::min(M_, K_); ++j) {
      bring_longest_column_to(j);
      eliminate_below_diagonal(j);
      solver_.event_loop.yield();
    }
  }

 private:
  double* from_row(int row, int column) { return fjac_.column_data(column) + row; }

  /// Norm of a column from a row down.
  double norm_from(int row, int column) {
    return euclidean_norm(solver_, M_ - row + 1, from_row(row, column) - 1);
  }

  void take_column_norms() {
    for (int j = 1; j <= K_; ++j) {
      acnorm_[j] = rdiag_[j] = true_norm_[j] = norm_from(1, j);
      ipvt_[j] = j;
      solver_.event_loop.yield();
    }
  }

  void bring_longest_column_to(int j) {
    int longest = j;
    for (int k = j + 1; k <= K_; ++k)
      if (rdiag_[k] > rdiag_[longest]) longest = k;
    if (longest == j) return;
    fjac_.swap_columns(j, longest);
    rdiag_[longest] = rdiag_[j];
    true_norm_[longest] = true_norm_[j];
    std::swap(ipvt_[j], ipvt_[longest]);
  }

  void eliminate_below_diagonal(int j) {
    double norm = norm_from(j, j);
    if (norm != 0) {
      if (fjac_(j, j) < 0) norm = -norm;
      make_reflector(j, norm);
      reflect_columns_behind(j);
      for (int k = j + 1; k <= K_; ++k) shorten_norm(j, k);
    }
    rdiag_[j] = -norm;
  }

  /// Scales column j to the reflector and takes its products with the columns
  /// behind it on the way; the unit that its diagonal then gets is in them too.
  void make_reflector(int j, double norm) {
    product_.fill(0);
    for_each_block(j, [&](int row, int count) {
      divide_all(count, norm, from_row(row, j));
      if (row == j) fjac_(j, j) += 1;
      for (int k = j + 1; k <= K_; ++k)
        product_[k] += dot_product(count, from_row(row, j), from_row(row, k));
    });
  }

  void reflect_columns_behind(int j) {
    const double diagonal = fjac_(j, j);
    for_each_block(j, [&](int row, int count) {
      for (int k = j + 1; k <= K_; ++k)
        add_multiple(count, -product_[k] / diagonal, from_row(row, j), from_row(row, k));
    });
  }

  template <class Work>
  void for_each_block(int first_row, Work work) {
    for (int row = first_row; row <= M_; row += block_rows) {
      work(row, std::min(block_rows, M_ - row + 1));
      solver_.event_loop.yield();
    }
  }

  /// The norm of column k without row j. The quick form loses digits at each step,
  /// and when few are left the norm is taken anew.
  void shorten_norm(int j, int k) {
    if (rdiag_[k] == 0) return;
    const double share = fjac_(j, k) / rdiag_[k];
    rdiag_[k] *= std::sqrt(fd_Max(solver_.errors, 0.0, finite(1 - share * share)));
    const double left = rdiag_[k] / true_norm_[k];
    if (p05 * left * left > machine_precision) return;
    rdiag_[k] = true_norm_[k] = j < M_ ? norm_from(j + 1, k) : 0.0;
  }

  Solver& solver_;
  const int M_;
  const int K_;
  JacobianMatrix& fjac_;
  PivotList& ipvt_;
  VariableVector& rdiag_;
  VariableVector& acnorm_;
  VariableVector true_norm_{};  ///< norm at the last time that it was taken anew
  VariableVector product_{};
};

}  // namespace

bool QRFAC(Solver& solver, int M, int K, JacobianMatrix& fjac, PivotList& ipvt,
           VariableVector& rdiag, VariableVector& acnorm) {
  bool done = false;
  step(solver, "in QRFAC routine", [&] {
    Factorization(solver, M, K, fjac, ipvt, rdiag, acnorm).run();
    done = true;
  });
  return done;
}

}  // namespace tavlo
