#include "solver/qr_solution.h"

#include <cmath>

#include "numerics/real.h"

namespace tavlo {
namespace {

constexpr double p5 = 0.5;
constexpr double p25 = 0.25;

struct Rotation {
  double cosine;
  double sine;

  /// Turns the pair (a, b).
  void apply(double& a, double& b) const {
    const double turned = cosine * a + sine * b;
    b = -sine * a + cosine * b;
    a = turned;
  }
};

/// The rotation that makes b of the pair (a, b) vanish; neither quotient is above 1.
Rotation rotation_onto(double a, double b) {
  if (std::fabs(a) >= std::fabs(b)) {
    const double tangent = b / a;
    const double cosine = p5 / std::sqrt(p25 + p25 * tangent * tangent);
    return {cosine, cosine * tangent};
  }
  const double cotangent = a / b;
  const double sine = p5 / std::sqrt(p25 + p25 * cotangent * cotangent);
  return {sine * cotangent, sine};
}

class Solution {
 public:
  Solution(Solver& solver, int K, JacobianMatrix& fjac, VariableVector& sdiag)
      : solver_(solver), K_(K), r_(fjac), sdiag_(sdiag) {}

  void run(const PivotList& ipvt, const VariableVector& diag, const VariableVector& qtb,
           VariableVector& x) {
    copy_triangle_below_diagonal();
    right_side_ = qtb;
    for (int j = 1; j <= K_; ++j) {
      eliminate(j, diag[ipvt[j]]);
      solver_.event_loop.yield();
    }
    substitute_back();
    for (int j = 1; j <= K_; ++j) x[ipvt[j]] = finite(right_side_[j]);
  }

 private:
  void copy_triangle_below_diagonal() {
    for (int j = 1; j <= K_; ++j) {
      for (int i = j; i <= K_; ++i) r_(i, j) = r_(j, i);
      saved_diagonal_[j] = r_(j, j);
    }
  }

  /// Turns row j of the diagonal matrix into the triangle, then puts the diagonal
  /// of R back in its place.
  void eliminate(int j, double weight) {
    if (weight != 0) {
      for (int k = j; k <= K_; ++k) sdiag_[k] = 0;
      sdiag_[j] = weight;
      double right_side_of_row = 0;
      for (int k = j; k <= K_; ++k)
        if (sdiag_[k] != 0) rotate_into(k, right_side_of_row);
    }
    sdiag_[j] = r_(j, j);
    r_(j, j) = saved_diagonal_[j];
  }

  void rotate_into(int k, double& right_side_of_row) {
    const Rotation turn = rotation_onto(r_(k, k), sdiag_[k]);
    r_(k, k) = turn.cosine * r_(k, k) + turn.sine * sdiag_[k];
    turn.apply(right_side_[k], right_side_of_row);
    for (int i = k + 1; i <= K_; ++i) turn.apply(r_(i, k), sdiag_[i]);
  }

  int rank() const {
    int j = 1;
    while (j <= K_ && sdiag_[j] != 0) ++j;
    return j - 1;
  }

  void substitute_back() {
    const int usable = rank();
    for (int j = usable + 1; j <= K_; ++j) right_side_[j] = 0;
    for (int j = usable; j >= 1; --j) {
      double sum = 0;
      for (int i = j + 1; i <= usable; ++i) sum += r_(i, j) * right_side_[i];
      right_side_[j] = (right_side_[j] - sum) / sdiag_[j];
    }
  }

  Solver& solver_;
  const int K_;
  JacobianMatrix& r_;
  VariableVector& sdiag_;
  VariableVector saved_diagonal_{};
  VariableVector right_side_{};
};

}  // namespace

bool QRSOLV(Solver& solver, int K, JacobianMatrix& fjac, const PivotList& ipvt,
            const VariableVector& diag, const VariableVector& qtb, VariableVector& x,
            VariableVector& sdiag) {
  bool done = false;
  step(solver, "in QRSOLV routine", [&] {
    Solution(solver, K, fjac, sdiag).run(ipvt, diag, qtb, x);
    done = true;
  });
  return done;
}

}  // namespace tavlo
