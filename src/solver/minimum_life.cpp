#include "solver/minimum_life.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "solver/line_at_t0.h"

namespace tavlo {
namespace {

constexpr int most_steps = 300;
constexpr double close_step = 1e-7;   ///< relative step from which the wanted line is taken
constexpr double closed_step = 1e-8;  ///< relative step that ends the search

class MinimumLifeSearch {
 public:
  MinimumLifeSearch(Solver& solver, RegressBlock& block, T0Trial& trial, int kind)
      : solver_(solver), block_(block), trial_(trial), kind_(kind) {}

  void run() {
    step(solver_, place, [&] { take_ordinates(block_, trial_); });
    trial_[t0_trial::r_squared] = -1e100;
    best_ = trial_;
    first_time_ = std::fabs(block_.T(1));
    down_ = std::max(10 * first_time_, 0.01 * block_.T(std::max(block_.N, 1)));
    if (find_bracket()) close_bracket();
    publish();
  }

 private:
  static constexpr const char* place = "in Findto Function routine";

  struct End {
    double t0 = 0;
    double value = 0;
    bool is_known = false;
  };

  double t0() const { return trial_[t0_trial::t0]; }
  double derivative() const { return trial_[t0_trial::derivative]; }

  void evaluate(int kind) {
    step(solver_, place, [&] { regress(block_, trial_, kind); });
    if (trial_[t0_trial::r_squared] > best_[t0_trial::r_squared]) best_ = trial_;
    publish();
    solver_.event_loop.yield();
  }

  void publish() {
    solver_.params.BetaA = trial_[t0_trial::slope];
    solver_.params.EtaA = trial_[t0_trial::life];
    solver_.params.Extra = t0();
    solver_.params.SumSq = trial_[t0_trial::r_squared];
  }

  bool give_up(double failure) {
    trial_[t0_trial::r_squared] = failure;
    return false;
  }

  /// Moves until the derivative has been seen on both sides of 0.
  bool find_bracket() {
    for (int count = 1; !solver_.aborted(); ++count) {
      evaluate(t0_kind::y_on_x);
      take_end();
      if (lower_.is_known && upper_.is_known) return true;
      trial_[t0_trial::t0] = next_t0(count - 1);
      if (!(t0() < first_time_)) return give_up(t0_failure::at_first_time);
      if (count == 30 || count == 40) down_ *= 10;
      if (count == 100) down_ = std::fabs(t0()) * 0.001;
      if (count == most_steps) return give_up(t0_failure::no_bracket);
    }
    return false;
  }

  void take_end() {
    if (derivative() < 0) upper_ = {t0(), derivative(), true};
    if (derivative() > 0 && (!lower_.is_known || t0() > lower_.t0))
      lower_ = {t0(), derivative(), true};
  }

  double next_t0(int count) {
    if (derivative() < 0) return higher_t0();
    if (derivative() > 0) return lower_t0(count);
    evaluate(kind_);
    return t0() + (upper_.is_known ? down_ : -down_);
  }

  // Steps that shrink the distance to the first time find the maximum also where
  // all times are large against their differences. No number is left in between
  // when r squared rises all the way.
  double higher_t0() const {
    if (t0() == 0) return first_time_ * 0.999;
    return first_time_ - 0.1 * (first_time_ - t0());
  }

  double lower_t0(int count) const {
    if (t0() == 0) return -down_;
    return BoxEstValue(lower_.t0, lower_.value, t0(), derivative(), 0, count) - down_;
  }

  void close_bracket() {
    trial_[t0_trial::t0] = std::midpoint(lower_.t0, upper_.t0);
    evaluate(t0_kind::y_on_x);
    for (int count = 1; !solver_.aborted(); ++count) {
      narrow();
      const double last = t0();
      trial_[t0_trial::t0] =
          BoxEstValue(lower_.t0, lower_.value, upper_.t0, upper_.value, 0, count - 1);
      const double change = relative_change(last);
      evaluate(change <= close_step ? kind_ : t0_kind::y_on_x);
      if (change <= closed_step) return finish();
      if (count > most_steps) return void(give_up(t0_failure::no_convergence));
    }
  }

  // Relative to t0, and to its distance from the first time where that is smaller:
  // there the logarithm of the first row feels every step.
  double relative_change(double last) const {
    const double change = std::fabs(t0() - last);
    const double size = std::min(std::fabs(last), first_time_ - last);
    return change == 0 ? 0.0 : change / size;
  }

  void narrow() {
    const End here{t0(), derivative(), true};
    if (derivative() >= 0) lower_ = here;
    if (derivative() <= 0) upper_ = here;
  }

  void finish() {
    if (best_[t0_trial::r_squared] > trial_[t0_trial::r_squared]) trial_ = best_;
    evaluate(kind_);
  }

  Solver& solver_;
  RegressBlock& block_;
  T0Trial& trial_;
  const int kind_;
  T0Trial best_{};
  double first_time_ = 0;
  double down_ = 0;  ///< the step towards lower t0
  End lower_;        ///< derivative above 0: the best t0 is higher
  End upper_;        ///< derivative below 0
};

/// Pulls a relative position in the bracket off its ends.
double damped(double f, int count) {
  const bool early_or_late = count < 6 || count > 15;
  const double outer = early_or_late ? 0.85 : 0.95;
  const double inner = early_or_late ? 0.8 : 0.9;
  if (f > outer) return outer;
  if (f < 1 - outer) return 1 - outer;
  if (f > inner) return 1 - 0.95 * (1 - f);
  if (f < 1 - inner) return 0.95 * f;
  return f;
}

}  // namespace

void Findto(Solver& solver, RegressBlock& block, T0Trial& trial, int kind) {
  step(solver, "in Findto Function routine",
       [&] { MinimumLifeSearch(solver, block, trial, kind).run(); });
}

double BoxEstValue(double t0_a, double value_a, double t0_b, double value_b, double target,
                   int count) {
  if (value_b < value_a) {
    std::swap(t0_a, t0_b);
    std::swap(value_a, value_b);
  }
  const double middle = std::midpoint(t0_a, t0_b);
  if (value_a == value_b) return middle;
  const double estimate = t0_a + (target - value_a) * ((t0_b - t0_a) / (value_b - value_a));
  if (!std::isfinite(estimate) || t0_a == t0_b) return middle;
  if (target < value_a || target > value_b) return estimate;
  return t0_a + damped((estimate - t0_a) / (t0_b - t0_a), count) * (t0_b - t0_a);
}

}  // namespace tavlo
