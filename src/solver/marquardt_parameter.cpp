#include "solver/marquardt_parameter.h"

#include <cmath>

#include "numerics/elementary.h"
#include "numerics/real.h"
#include "solver/euclidean_norm.h"
#include "solver/qr_solution.h"

namespace tavlo {
namespace {

constexpr double smallest_magnitude = 1e-302;
constexpr double p1 = 0.1;
constexpr double p001 = 0.001;
constexpr int most_trials = 10;

class ParameterSearch {
 public:
  ParameterSearch(Solver& solver, int K, JacobianMatrix& r, const PivotList& ipvt,
                  const VariableVector& diag, const VariableVector& qtb, double delta)
      : solver_(solver), K_(K), r_(r), ipvt_(ipvt), diag_(diag), qtb_(qtb), delta_(delta) {}

  /// False when QRSOLV has failed and said so.
  bool run(double& par, VariableVector& x, VariableVector& sdiag) {
    take_gauss_newton_step(x);
    measure(x);
    if (excess_ <= p1 * delta_) {
      par = 0;
      return true;
    }
    set_bounds();
    start(par);
    for (int trial = 1;; ++trial) {
      if (!try_parameter(par, x, sdiag)) return false;
      if (is_close_enough() || trial == most_trials) return true;
      correct(par, sdiag);
    }
  }

 private:
  double norm(const VariableVector& v) { return euclidean_norm(solver_, K_, v.data()); }
  double larger(double a, double b) { return fd_Max(solver_.errors, a, finite(b)); }
  double smaller(double a, double b) { return fd_Min(solver_.errors, a, finite(b)); }

  int rank() const {
    int j = 1;
    while (j <= K_ && r_(j, j) != 0) ++j;
    return j - 1;
  }

  /// The step without any damping; variables beyond the rank stay where they are.
  void take_gauss_newton_step(VariableVector& x) {
    rank_ = rank();
    VariableVector solution = qtb_;
    for (int j = rank_ + 1; j <= K_; ++j) solution[j] = 0;
    for (int j = rank_; j >= 1; --j) {
      solution[j] /= r_(j, j);
      for (int i = 1; i < j; ++i) solution[i] -= r_(i, j) * solution[j];
    }
    for (int j = 1; j <= K_; ++j) x[ipvt_[j]] = finite(solution[j]);
  }

  /// Length of the scaled step, and by how much it is too long.
  void measure(const VariableVector& x) {
    for (int j = 1; j <= K_; ++j) scaled_[j] = diag_[j] * x[j];
    length_ = norm(scaled_);
    last_excess_ = excess_;
    excess_ = length_ - delta_;
  }

  VariableVector unit_step_scaled() const {
    VariableVector unit{};
    for (int j = 1; j <= K_; ++j) unit[j] = diag_[ipvt_[j]] * (scaled_[ipvt_[j]] / length_);
    return unit;
  }

  /// Newton's correction from the norm of a solved triangle.
  double newton_step(const VariableVector& solved) {
    const double size = norm(solved);
    return ((excess_ / delta_) / size) / size;
  }

  void set_bounds() {
    if (rank_ == K_) lower_ = finite(newton_step(solve_transposed(unit_step_scaled())));
    VariableVector gradient{};
    for (int j = 1; j <= K_; ++j) {
      double sum = 0;
      for (int i = 1; i <= j; ++i) sum += r_(i, j) * qtb_[i];
      gradient[j] = sum / diag_[ipvt_[j]];
    }
    gradient_norm_ = norm(gradient);
    upper_ = gradient_norm_ / delta_;
    if (upper_ == 0) upper_ = smallest_magnitude / smaller(delta_, p1);
  }

  VariableVector solve_transposed(VariableVector v) const {
    for (int j = 1; j <= K_; ++j) {
      double sum = 0;
      for (int i = 1; i < j; ++i) sum += r_(i, j) * v[i];
      v[j] = (v[j] - sum) / r_(j, j);
    }
    return v;
  }

  void start(double& par) {
    par = smaller(larger(par, lower_), upper_);
    if (par == 0) par = gradient_norm_ / length_;
  }

  bool try_parameter(double& par, VariableVector& x, VariableVector& sdiag) {
    if (par == 0) par = larger(smallest_magnitude, p001 * upper_);
    VariableVector weights{};
    for (int j = 1; j <= K_; ++j) weights[j] = std::sqrt(par) * diag_[j];
    if (!QRSOLV(solver_, K_, r_, ipvt_, weights, qtb_, x, sdiag)) return false;
    measure(x);
    return true;
  }

  bool is_close_enough() const {
    const bool has_passed_below = lower_ == 0 && excess_ <= last_excess_ && last_excess_ < 0;
    return std::fabs(excess_) <= p1 * delta_ || has_passed_below;
  }

  void correct(double& par, const VariableVector& sdiag) {
    VariableVector v = unit_step_scaled();
    for (int j = 1; j <= K_; ++j) {
      v[j] /= sdiag[j];
      for (int i = j + 1; i <= K_; ++i) v[i] -= r_(i, j) * v[j];
    }
    const double correction = newton_step(v);
    if (excess_ > 0) lower_ = larger(lower_, par);
    if (excess_ < 0) upper_ = smaller(upper_, par);
    par = larger(lower_, par + correction);
  }

  Solver& solver_;
  const int K_;
  JacobianMatrix& r_;
  const PivotList& ipvt_;
  const VariableVector& diag_;
  const VariableVector& qtb_;
  const double delta_;

  int rank_ = 0;
  VariableVector scaled_{};
  double length_ = 0;
  double excess_ = 0;
  double last_excess_ = 0;
  double gradient_norm_ = 0;
  double lower_ = 0;
  double upper_ = 0;
};

}  // namespace

bool LMPAR(Solver& solver, int K, JacobianMatrix& fjac, const PivotList& ipvt,
           const VariableVector& diag, const VariableVector& qtb, double delta, double& par,
           VariableVector& x, VariableVector& sdiag) {
  bool done = false;
  step(solver, "in LMPAR routine",
       [&] { done = ParameterSearch(solver, K, fjac, ipvt, diag, qtb, delta).run(par, x, sdiag); });
  return done;
}

}  // namespace tavlo
