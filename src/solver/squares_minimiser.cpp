#include "solver/squares_minimiser.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "numerics/elementary.h"
#include "numerics/real.h"
#include "solver/column_arithmetic.h"
#include "solver/euclidean_norm.h"
#include "solver/levenberg_marquardt.h"
#include "solver/marquardt_parameter.h"
#include "solver/qr_factorization.h"
#include "solver/residuals.h"

namespace tavlo {
namespace {

constexpr double ftol = 1e-8;
constexpr double xtol = 1e-11;
constexpr double gtol = 0;
constexpr int most_evaluations = 100;
constexpr double machine_precision = 1e-15;

constexpr double p1 = 0.1;
constexpr double p5 = 0.5;
constexpr double p25 = 0.25;
constexpr double p75 = 0.75;
constexpr double p0001 = 0.0001;

double square(double value) { return value * value; }

/// No boxes while it lives, where `wanted`.
class Hush {
 public:
  Hush(Solver& solver, bool wanted) : solver_(solver), before_(solver.quiet) {
    solver_.quiet = before_ || wanted;
  }
  ~Hush() { solver_.quiet = before_; }
  Hush(const Hush&) = delete;
  Hush& operator=(const Hush&) = delete;

 private:
  Solver& solver_;
  const bool before_;
};

}  // namespace

SquaresMinimiser::SquaresMinimiser(Solver& solver, SquaresFunction function, int M, int K,
                                   ParameterVector& X, std::vector<double>& fvec,
                                   JacobianMatrix& fjac, VariableVector& diag)
    : solver_(solver),
      function_(std::move(function)),
      M_(M),
      K_(K),
      X_(X),
      fvec_(fvec),
      fjac_(fjac),
      diag_(diag) {}

int SquaresMinimiser::run(int mode, double factor) {
  own_scale_ = mode != scaling_mode::given;
  factor_ = factor;
  info_ = 0;
  if (!input_is_proper()) return info_;
  bool failed = true;
  step(solver_, "in LMDER routine", [&] {
    iterate();
    failed = false;
  });
  return failed ? 0 : info_;
}

bool SquaresMinimiser::input_is_proper() const {
  if (K_ < 1 || K_ > most_variables || M_ < K_ || !(factor_ > 0)) return false;
  if (fvec_.size() <= static_cast<std::size_t>(M_)) return false;
  const auto is_positive = [](double value) { return value > 0; };
  return own_scale_ || std::all_of(diag_.begin() + 1, diag_.begin() + 1 + K_, is_positive);
}

/// Outer turns take a new Jacobian, inner ones try steps until one is taken.
void SquaresMinimiser::iterate() {
  if (!evaluate_start()) return;
  trial_fvec_ = rotated_ = fvec_;
  for (;;) {
    if (!linearise()) return;
    gradient_ = gradient_norm();
    if (gradient_ <= gtol) {
      info_ = 4;
      return;
    }
    widen_scale();
    do {
      if (!try_step()) return;
    } while (!is_accepted());
  }
}

/// Calls the function; false when it asks for the end.
bool SquaresMinimiser::evaluate(ParameterVector& X, std::vector<double>& fvec, int request) {
  int iflag = request;
  function_(M_, K_, X, fvec, fjac_, iflag);
  if (request == residual_request::residuals) ++evaluations_;
  if (iflag < 0) info_ = iflag;
  return iflag >= 0;
}

bool SquaresMinimiser::evaluate_start() {
  const auto failures = solver_.state.failed_steps;
  if (!evaluate(X_, fvec_, residual_request::residuals)) return false;
  is_sound_ = solver_.state.failed_steps == failures;
  residual_norm_ = euclidean_norm(solver_, M_, fvec_.data());
  return true;
}

/// A step from where every row is defined to where one isn't went too far. It is turned
/// down without a word; only what is wrong with the start itself concerns the user.
bool SquaresMinimiser::evaluate_trial() {
  const auto failures = solver_.state.failed_steps;
  bool goes_on = false;
  {
    const Hush hush(solver_, is_sound_);
    goes_on = evaluate(trial_X_, trial_fvec_, residual_request::residuals);
  }
  if (!goes_on) return false;
  trial_is_sound_ = solver_.state.failed_steps == failures;
  const bool too_far = is_sound_ && !trial_is_sound_;
  trial_norm_ = too_far ? std::numeric_limits<double>::infinity()
                        : euclidean_norm(solver_, M_, trial_fvec_.data());
  return true;
}

/// Jacobian at X, its factors, and the residuals in the factors' coordinates.
bool SquaresMinimiser::linearise() {
  if (!evaluate(X_, fvec_, residual_request::jacobian)) return false;
  if (!QRFAC(solver_, M_, K_, fjac_, ipvt_, rdiag_, column_norm_)) return false;
  if (accepted_steps_ == 0) set_first_scale();
  rotate_residuals();
  return true;
}

void SquaresMinimiser::set_first_scale() {
  if (own_scale_)
    for (int j = 1; j <= K_; ++j) diag_[j] = column_norm_[j] == 0 ? 1.0 : column_norm_[j];
  x_norm_ = norm(scaled(X_.data()));
  delta_ = factor_ * x_norm_;
  if (delta_ == 0) delta_ = factor_;
}

/// Applies the reflectors to the residuals and completes R with its diagonal.
void SquaresMinimiser::rotate_residuals() {
  std::copy(fvec_.begin(), fvec_.end(), rotated_.begin());
  for (int j = 1; j <= K_; ++j) {
    const double* reflector = fjac_.column_data(j) + j;
    double* rest = rotated_.data() + j;
    const int count = M_ - j + 1;
    if (*reflector != 0)
      add_multiple(count, -dot_product(count, reflector, rest) / *reflector, reflector, rest);
    fjac_(j, j) = rdiag_[j];
    qtf_[j] = finite(rotated_[static_cast<std::size_t>(j)]);
    solver_.event_loop.yield();
  }
}

/// The largest cosine between the residuals and a column of the Jacobian.
double SquaresMinimiser::gradient_norm() const {
  double largest = 0;
  if (residual_norm_ == 0) return largest;
  for (int j = 1; j <= K_; ++j) {
    const double length = column_norm_[ipvt_[j]];
    if (length == 0) continue;
    double sum = 0;
    for (int i = 1; i <= j; ++i) sum += fjac_(i, j) * (qtf_[i] / residual_norm_);
    largest = fd_Max(solver_.errors, largest, finite(std::fabs(sum / length)));
  }
  return largest;
}

void SquaresMinimiser::widen_scale() {
  if (!own_scale_) return;
  for (int j = 1; j <= K_; ++j) diag_[j] = fd_Max(solver_.errors, diag_[j], column_norm_[j]);
}

/// One trial; false when the search is over.
bool SquaresMinimiser::try_step() {
  if (!propose_step()) return false;
  if (!evaluate_trial()) return false;
  predict_reduction();
  adapt_trust();
  if (is_accepted()) accept();
  test_convergence();
  solver_.event_loop.yield();
  return info_ == 0;
}

bool SquaresMinimiser::propose_step() {
  VariableVector sdiag{};
  if (!LMPAR(solver_, K_, fjac_, ipvt_, diag_, qtf_, delta_, par_, step_, sdiag)) return false;
  trial_X_ = X_;
  for (int j = 1; j <= K_; ++j) {
    step_[j] = -step_[j];
    trial_X_[j] = finite(X_[j] + step_[j]);
  }
  step_norm_ = norm(scaled(step_.data()));
  if (accepted_steps_ == 0) delta_ = fd_Min(solver_.errors, delta_, step_norm_);
  return true;
}

/// Actual reduction, the one that the linear model promised, and their ratio.
void SquaresMinimiser::predict_reduction() {
  actual_ = -1;
  if (p1 * trial_norm_ < residual_norm_) actual_ = 1 - square(trial_norm_ / residual_norm_);
  VariableVector change{};
  for (int j = 1; j <= K_; ++j)
    for (int i = 1; i <= j; ++i) change[i] += fjac_(i, j) * step_[ipvt_[j]];
  const double linear = square(norm(change) / residual_norm_);
  const double damping = square(std::sqrt(par_) * step_norm_ / residual_norm_);
  predicted_ = finite(linear + damping / p5);
  slope_ = -(linear + damping);
  ratio_ = predicted_ == 0 ? 0.0 : actual_ / predicted_;
}

void SquaresMinimiser::adapt_trust() {
  if (ratio_ <= p25) {
    shrink_trust();
  } else if (par_ == 0 || ratio_ >= p75) {
    delta_ = step_norm_ / p5;
    par_ *= p5;
  }
}

void SquaresMinimiser::shrink_trust() {
  double shrink = actual_ >= 0 ? p5 : p5 * slope_ / (slope_ + p5 * actual_);
  if (p1 * trial_norm_ >= residual_norm_ || shrink < p1) shrink = p1;
  delta_ = shrink * fd_Min(solver_.errors, delta_, step_norm_ / p1);
  par_ /= shrink;
}

bool SquaresMinimiser::is_accepted() const { return ratio_ >= p0001; }

void SquaresMinimiser::accept() {
  X_ = trial_X_;
  std::copy(trial_fvec_.begin(), trial_fvec_.end(), fvec_.begin());
  x_norm_ = norm(scaled(X_.data()));
  residual_norm_ = trial_norm_;
  is_sound_ = trial_is_sound_;
  ++accepted_steps_;
}

void SquaresMinimiser::test_convergence() {
  const auto reductions_within = [this](double tolerance) {
    return std::fabs(actual_) <= tolerance && predicted_ <= tolerance && p5 * ratio_ <= 1;
  };
  const bool small_reduction = reductions_within(ftol);
  const bool small_step = delta_ <= xtol * x_norm_;
  info_ = (small_reduction ? 1 : 0) + (small_step ? 2 : 0);
  if (info_ != 0) return;
  if (evaluations_ >= most_evaluations) info_ = 5;
  if (reductions_within(machine_precision)) info_ = 6;
  if (delta_ <= machine_precision * x_norm_) info_ = 7;
  if (gradient_ <= machine_precision) info_ = 8;
}

double SquaresMinimiser::norm(const VariableVector& v) {
  return euclidean_norm(solver_, K_, v.data());
}

/// `x`, slots 1 to K, in units of the scale.
VariableVector SquaresMinimiser::scaled(const double* x) const {
  VariableVector result{};
  for (int j = 1; j <= K_; ++j) result[j] = diag_[j] * x[j];
  return result;
}

}  // namespace tavlo
