#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "numerics/real.h"
#include "solver/parameter_translation.h"
#include "solver/residuals.h"
#include "solver/starting_values.h"

namespace tavlo {
namespace {

constexpr const char* place = "in GetEstimate routine";

constexpr double good_enough = 0.5;  ///< r squared with which the minimiser can start
constexpr double most_seconds = 5;
constexpr double most_seconds_of_passes = 3;
constexpr int most_rounds = 20;  ///< so that the start doesn't depend on the machine
constexpr int most_counted = 4;  ///< of the pass counter, which starts from the rows
constexpr double no_width = 1e-6;
constexpr int only_evaluate = 10;

/// Row and method of the table where the parameters on entry are kept.
constexpr int fallback_model = 6;
constexpr int fallback_method = solver_method::y_on_x;

class PatternSearch {
 public:
  PatternSearch(Solver& solver, int M, int K, ParameterVector& X)
      : solver_(solver),
        M_(std::abs(M)),
        K_(K),
        X_(X),
        fvec_(static_cast<std::size_t>(M_) + 1),
        method_(solver.data.Method) {}

  void evaluate_only() {
    translate(solver_.data.TransMode);
    evaluate(M_);
  }

  void run() {
    clear_other_populations();
    translate(solver_.data.TransMode);
    evaluate(M_);
    keep_fallback();
    prepare_sample();
    widths_.fill(0.1);
    search();
    exchange_populations();
    settle();
  }

 private:
  void translate(int direction) { TranslateParams(solver_, direction, K_, X_); }

  void evaluate(int n) {
    int iflag = residual_request::evaluate_once;
    ResidualFn(solver_, n, K_, X_, fvec_, unused_, iflag);
  }

  double now() { return solver_.clock.steady_seconds(); }

  void clear_other_populations() {
    SolverParams& params = solver_.params;
    const bool has_b = K_ == 4 || K_ == 7;
    const bool has_c = K_ == 5 || K_ == 7;
    if (!has_b) params.BetaB = params.EtaB = params.LnEtaB = 0;
    if (!has_c) params.BetaC = params.EtaC = params.LnEtaC = 0;
    if (K_ == 2 || K_ == 4) params.Extra = 0;
  }

  void keep_fallback() {
    for (int i = 0; i <= 7; ++i) solver_.table(fallback_model, fallback_method, i) = X_[i];
  }

  void take_from_table(int model, int method, int first_slot) {
    for (int i = first_slot; i <= 7; ++i) X_[i] = solver_.table(model, method, i);
  }

  /// The search begins with Y on X on about twenty rows: the only cheap one.
  void prepare_sample() {
    const SolverData& data = solver_.data;
    const int rows = std::min(M_, data.N > 0 ? data.N : M_);
    Real sum = 0;
    Real squares = 0;
    for (int i = 1; i <= rows; i += std::max(1, rows / 20)) {
      if (data.Ys(i) > SolverData::largest_ordinate) continue;
      sum += data.Ys(i);
      squares += Real(data.Ys(i)) * data.Ys(i);
      ++sampled_;
    }
    step(solver_, place, [&] {
      const Real count = sampled_;
      solver_.params.InvSpreadB = (count / (count * squares - sum * sum)).value();
    });
    solver_.data.Method = solver_method::y_on_x;
    n_ = -rows;
  }

  void search() {
    const double start = now();
    for (int round = 1; round <= most_rounds; ++round) {
      const bool improved = run_passes();
      if (solver_.aborted()) return;
      if (n_ < 0) go_over_to_all_rows();
      if (X_[0] >= good_enough && method_ != solver_method::mle) return;
      if (now() - start >= most_seconds || (!improved && is_exhausted())) return;
    }
  }

  bool is_exhausted() const {
    return std::all_of(widths_.begin() + 1, widths_.begin() + 1 + K_,
                       [](double width) { return std::fabs(width) < no_width; });
  }

  /// Passes until the start is good enough or the counter ends them. True when
  /// some step improved X.
  bool run_passes() {
    const double start = now();
    evaluate(n_);
    best_ = X_[0];
    const double before = best_;
    while (X_[0] < good_enough && !solver_.aborted()) {
      for (int i = 1; i <= K_ && !solver_.aborted(); ++i) vary(i);
      X_[0] = best_;
      if (++sampled_ >= most_counted || now() - start >= most_seconds_of_passes) break;
    }
    return best_ > before;
  }

  /// Steps parameter i by its width, then half as far the other way. A width that
  /// fails both ways shrinks to a quarter.
  void vary(int i) {
    const double saved = X_[i];
    if (!improves(i, saved)) {
      widths_[i] *= -0.5;
      if (!solver_.aborted() && !improves(i, saved)) widths_[i] *= -0.5;
    }
    if (!(X_[0] > best_) || solver_.aborted()) X_[i] = saved;
    best_ = solver_.aborted() ? best_ : std::max(best_, X_[0]);
  }

  bool improves(int i, double saved) {
    X_[i] = (1 + widths_[i]) * saved;
    evaluate(n_);
    return X_[0] > best_;
  }

  void go_over_to_all_rows() {
    solver_.data.Method = method_;
    n_ = M_;
    evaluate(n_);
    const bool worse = solver_.table(fallback_model, fallback_method, 0) > X_[0];
    const auto is_positive = [](double value) { return value > 0; };
    if (worse || !std::all_of(X_.begin() + 1, X_.begin() + 1 + K_, is_positive))
      take_from_table(fallback_model, fallback_method, 0);
  }

  /// A and B act alike; A is to be the steeper.
  void exchange_populations() {
    if ((K_ != 4 && K_ != 7) || !(X_[3] > X_[1])) return;
    std::swap(X_[1], X_[3]);
    std::swap(X_[2], X_[4]);
  }

  void settle() {
    const int mode = solver_.data.TransMode;
    translate(mode + 2);
    translate(translation::parameters_to_x);
    if (has_lost_parameter()) take_from_table(K_, method_, 1);
    translate(translation::x_to_parameters);
    translate(mode);
  }

  bool has_lost_parameter() const {
    if (K_ == 3) return false;
    for (int i = 1; i <= K_; ++i)
      if (i != 3 && X_[i] <= 0) return true;
    return false;
  }

  Solver& solver_;
  const int M_;
  const int K_;
  ParameterVector& X_;
  std::vector<double> fvec_;
  JacobianMatrix unused_;
  const int method_;  ///< the one asked for

  int n_ = 0;        ///< rows to evaluate, as ResidualFn takes them
  int sampled_ = 0;  ///< rows of the sample, then the pass counter
  double best_ = 0;
  std::array<double, 9> widths_{};  ///< relative step of each parameter
};

}  // namespace

void GetEstimate(Solver& solver, int& M, int K, ParameterVector& X, int& status) {
  const int method = solver.data.Method;
  step(solver, place, [&] {
    PatternSearch search(solver, M, K, X);
    if (status == only_evaluate)
      search.evaluate_only();
    else
      search.run();
  });
  solver.data.Method = method;  // the search has set its own for a while
}

}  // namespace tavlo
