#include "chart/parts/find_x.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "chart/parts/fraction_on_chart.h"
#include "numerics/number_text.h"
#include "numerics/run_time_error.h"

namespace tavlo {

namespace {

// Fractions outside these two are saturated: the model holds F within 1e-14 and
// 0.99999999999999, so nothing can be learned from their values.
constexpr double LOW = 2e-14;
constexpr double HIGH = 0.99999999999998;
constexpr double grain = 1e-14;
constexpr int most_refinements = 13;
constexpr int most_evaluations = 50000;

bool is_low(double f) { return f <= LOW; }
bool is_high(double f) { return f >= HIGH; }
bool is_saturated(double f) { return is_low(f) || is_high(f); }

/// What a stage of the search says to the next.
enum class Stage { go_on, give_up, found };

class Search {
 public:
  Search(const FitResult& fit, double y, double xa, double xb)
      : fit_(fit), y_(y), xa_(xa), xb_(xb) {}

  /// True when `result()` is the solution; otherwise it is the lower end.
  bool run(double x_tolerance, double y_tolerance);
  double result() const { return result_; }

 private:
  double F(double x);
  bool spent() const { return evaluations_ >= most_evaluations; }

  Stage leave_low_end();
  Stage climb_from_low_end();
  Stage leave_high_end();
  Stage pull_off_high_end();
  Stage widen();
  Stage lower_low_end(double factor);
  Stage shrink_saturated_ends();
  Stage bisect_saturated_ends();
  Stage set_bracket();
  Stage close_in(double x_tolerance, double y_tolerance);
  double estimate(double x, double f, int balance) const;
  bool is_close(double x_tolerance, double y_tolerance) const;
  double middle() const { return (xa_ + xb_) / 2.0; }

  const FitResult& fit_;
  double y_;
  double xa_;
  double xb_;
  double fa_ = 0;
  double fb_ = 0;
  double factor_ = 0.5;  ///< 0.5 for a rising F between the ends, 2 for a falling one
  double result_ = 0;
  int evaluations_ = 0;
};

double Search::F(double x) {
  if (!std::isfinite(x)) throw RunTimeError(run_time::overflow);
  ++evaluations_;
  const double f = Fd_YofX(fit_, x);
  if (std::isnan(f)) throw RunTimeError(run_time::invalid_argument);
  return f;
}

/// From a saturated lower end up to the first x with LOW < F < y, in steps that
/// become finer each time that they overshoot.
Stage Search::climb_from_low_end() {
  double step = (xb_ - xa_) * 0.1;
  double x = xa_;
  double f = F(x);
  for (int refinement = 1; !spent();) {
    while (is_low(f) && x + step != x && !spent()) f = F(x += step);
    if (is_low(f)) return Stage::give_up;
    if (f < y_) {
      xa_ = x;
      return Stage::go_on;
    }
    x -= step;
    step *= 0.1;
    if (++refinement > most_refinements) return Stage::give_up;
    f = F(x += step);
  }
  return Stage::give_up;
}

Stage Search::leave_low_end() {
  const double f = F(xa_);
  if (is_high(f)) return Stage::give_up;
  if (!is_low(f)) return Stage::go_on;
  return is_low(F(xb_)) ? Stage::give_up : climb_from_low_end();
}

/// Walks down from the upper end until F is off its limit and above y. The step
/// is not refined when it overshoots: a later stage bisects, the result is the same.
Stage Search::pull_off_high_end() {
  const double step = (xb_ - xa_) * 0.1;
  double x = xb_;
  for (int turn = 1; !spent();) {
    double f = F(x);
    while (is_high(f) && x - step != x && !spent()) f = F(x -= step);
    if (is_high(f)) return Stage::give_up;
    if (f > y_) break;
    x += step;
    if (++turn > most_refinements) break;
  }
  xb_ = x;
  return Stage::go_on;
}

Stage Search::leave_high_end() { return F(xb_) < y_ ? Stage::give_up : pull_off_high_end(); }

Stage Search::lower_low_end(double factor) {
  while (fa_ > y_ && !spent()) {
    xa_ = xa_ <= 0.0 ? (xa_ - 1.0) * 2.0 : xa_ * factor;
    fa_ = F(xa_);
    if (is_saturated(fa_)) return Stage::give_up;
  }
  return Stage::go_on;
}

/// Moves the ends outward until they enclose y.
Stage Search::widen() {
  fa_ = F(xa_);
  fb_ = F(xb_);
  const double slope = xa_ == xb_ ? 1.0 : (fb_ - fa_) / (xb_ - xa_);
  factor_ = slope < 0.0 ? 2.0 : 0.5;
  if (fa_ <= y_ && fb_ >= y_) return Stage::go_on;
  while (fb_ < y_ && !spent()) {
    xb_ /= factor_;
    fb_ = F(xb_);
    if (is_saturated(fb_)) return Stage::give_up;
  }
  return lower_low_end(factor_);
}

Stage Search::shrink_saturated_ends() {
  const double q = factor_;
  while (is_high(fb_) && xb_ >= grain && !spent()) fb_ = F(xb_ *= q);
  if (fb_ < y_) {  // one step too far: the last pair encloses y
    xa_ = xb_;
    fa_ = fb_;
    xb_ /= q;
    fb_ = F(xb_);
  }
  while (is_low(fa_) && xa_ >= grain && !spent()) fa_ = F(xa_ /= q);
  if (fa_ > y_) {
    xb_ = xa_;
    fb_ = fa_;
    xa_ *= q;
    fa_ = F(xa_);
  }
  return Stage::go_on;
}

Stage Search::bisect_saturated_ends() {
  while ((is_high(fb_) || is_low(fa_)) && !spent()) {
    const double x = middle();
    const double f = F(x);
    (f <= y_ ? xa_ : xb_) = x;
    (f <= y_ ? fa_ : fb_) = f;
    const double larger = std::max(std::fabs(xa_), std::fabs(xb_));
    if (std::fabs(xb_ - xa_) <= grain * larger) return Stage::found;
  }
  return Stage::go_on;
}

Stage Search::set_bracket() {
  if (fb_ <= y_) {
    fa_ = fb_;
    std::swap(xa_, xb_);
    fb_ = F(xb_);
  } else {
    fa_ = F(xa_);
  }
  if (xa_ == xb_) return Stage::found;
  return fa_ > y_ || fb_ < y_ ? Stage::give_up : Stage::go_on;
}

/// Secant through the last point, the middle once one end has stayed for long.
double Search::estimate(double x, double f, int balance) const {
  if (std::abs(balance) >= 6) return middle();
  if (fb_ == fa_) return (x + xa_) / 2.0;
  const double slope = (x - xa_) / (fb_ - fa_);
  return std::clamp((y_ - f) * slope + x, std::min(xa_, xb_), std::max(xa_, xb_));
}

bool Search::is_close(double x_tolerance, double y_tolerance) const {
  if (std::fabs(x_tolerance) > std::fabs(xb_ - xa_)) {
    if (std::fabs(y_tolerance) > std::fabs(fb_ - fa_)) return true;
    if (fa_ == 0.0) return std::fabs(fb_) < grain;
    return std::fabs(fb_ / fa_ - 1.0) < grain;
  }
  if (xa_ == 0.0) return std::fabs(xb_) < grain;
  return std::fabs(xb_ / xa_ - 1.0) < grain;
}

Stage Search::close_in(double x_tolerance, double y_tolerance) {
  constexpr int most_one_sided = 10000;
  const double slope = fb_ == fa_ ? 1.0 : (xb_ - xa_) / (fb_ - fa_);
  double x = (y_ - fa_) * slope + xa_;
  for (int balance = 0; std::abs(balance) < most_one_sided;) {
    if (spent()) return Stage::give_up;
    const double f = F(x);
    (f > y_ ? xb_ : xa_) = x;
    (f > y_ ? fb_ : fa_) = f;
    balance += f > y_ ? 1 : -1;
    x = (2.0 * estimate(x, f, balance) + xa_ + xb_) * 0.25;
    if (is_close(x_tolerance, y_tolerance)) break;
  }
  return Stage::found;
}

bool Search::run(double x_tolerance, double y_tolerance) {
  Stage stage = leave_low_end();
  if (stage == Stage::go_on) stage = leave_high_end();
  if (stage == Stage::go_on) stage = widen();
  if (stage == Stage::go_on) stage = shrink_saturated_ends();
  if (stage == Stage::go_on) stage = bisect_saturated_ends();
  if (stage == Stage::go_on) stage = set_bracket();
  if (stage == Stage::go_on) stage = close_in(x_tolerance, y_tolerance);
  result_ = stage == Stage::found ? middle() : xa_;
  return stage == Stage::found;
}

double usable_target(double y) {
  if (std::isnan(y)) throw RunTimeError(run_time::invalid_argument);
  if (y >= HIGH) return HIGH - grain - grain;
  return y <= LOW ? LOW + grain + grain : y;
}

/// A parameter that is no number would be reported anew at every evaluation.
void check_parameters(const FitResult& fit) {
  for (const FitParam& row : fit.Rows)
    if (!std::isfinite(row.Scale + row.Shape + row.T0 + row.Fraction))
      throw RunTimeError(run_time::invalid_argument);
}

}  // namespace

double fd_FindX(ErrorReporter& reporter, const FitResult& fit, double y, double xa, double xb,
                double x_tolerance, double y_tolerance, bool& success) {
  const auto words = [xa, xb](ErrorReporter& to) {
    to.add_lines({"fd_FindX_Error: ", "dX = " + number_text(xa) + ", " + number_text(xb)});
  };
  return guarded(reporter, xa, words, [&] {
    check_parameters(fit);
    Search search(fit, usable_target(y), std::min(xa, xb), std::max(xa, xb));
    if (search.run(x_tolerance, y_tolerance)) success = true;
    return search.result();
  });
}

}  // namespace tavlo
