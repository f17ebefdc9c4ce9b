#include "fit/line/minimum_life.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "fit/line/line_at_t0.h"

namespace tavlo {
namespace {

constexpr int most_steps = 300;
constexpr double closed_step = 1e-12;  ///< relative step that ends the search
constexpr double noise = 1e-12;        ///< of r squared, which is flat about its maximum

enum class SearchEnd { found, at_first_time, stopped };

class MinimumLifeSearch {
 public:
  MinimumLifeSearch(RowsAboveT0& rows, bool x_on_y, Companion& companion)
      : rows_(rows), x_on_y_(x_on_y), companion_(companion) {
    first_time_ = rows.first_time();
    down_ = std::max(10 * first_time_, 0.01 * rows.last_time());
  }

  SearchEnd run() {
    find_bracket();
    if (!ended_) close_bracket();
    return *ended_;
  }

  const LineAtT0& line() const { return trial_; }

 private:
  struct End {
    double t0 = 0;
    double value = 0;
    bool is_known = false;
  };

  double t0() const { return trial_.t0; }
  double derivative() const { return trial_.derivative; }
  void end(SearchEnd how) { ended_ = how; }

  /// A trial that no number can hold leaves the last one, if the person lets it.
  void evaluate(double t0, bool x_on_y) {
    companion_.turn();
    if (companion_.stop_wanted()) return end(SearchEnd::stopped);
    try {
      trial_ = rows_.line(t0, x_on_y);
    } catch (const RunTimeError& error) {
      trial_.t0 = t0;
      if (!companion_.fault("in Findto Function routine", error)) end(SearchEnd::stopped);
    }
    if (trial_.r_squared > best_.r_squared) best_ = trial_;
  }

  /// Moves until the derivative has been seen on both sides of 0.
  void find_bracket() {
    double next = 0;
    for (int count = 1; !ended_; ++count) {
      evaluate(next, false);
      if (ended_) return;
      take_end();
      if (lower_.is_known && upper_.is_known) return;
      next = next_t0(count - 1);
      if (ended_) return;
      if (!(next < first_time_)) return end(SearchEnd::at_first_time);
      if (count == 30 || count == 40) down_ *= 10;
      if (count == 100) down_ = std::fabs(next) * 0.001;
      if (count == most_steps) return evaluate_last(next);
    }
  }

  void evaluate_last(double t0) {
    evaluate(t0, x_on_y_);
    if (!ended_) end(SearchEnd::found);
  }

  void take_end() {
    if (derivative() < 0) upper_ = {t0(), derivative(), true};
    if (derivative() > 0 && (!lower_.is_known || t0() > lower_.t0))
      lower_ = {t0(), derivative(), true};
  }

  double next_t0(int count) {
    if (derivative() < 0) return higher_t0();
    if (derivative() > 0) return lower_t0(count);
    evaluate(t0(), x_on_y_);
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
    evaluate(std::midpoint(lower_.t0, upper_.t0), false);
    for (int count = 1; !ended_; ++count) {
      narrow();
      const double next =
          BoxEstValue(lower_.t0, lower_.value, upper_.t0, upper_.value, 0, count - 1);
      const double change = relative_change(t0(), next);
      evaluate(next, false);
      if (ended_) return;
      if (change <= closed_step || count > most_steps) return take_best();
    }
  }

  // Relative to t0, and to its distance from the first time where that is smaller:
  // there the logarithm of the first row feels every step.
  double relative_change(double last, double next) const {
    const double change = std::fabs(next - last);
    const double size = std::min(std::fabs(last), first_time_ - last);
    return change == 0 ? 0.0 : change / size;
  }

  void narrow() {
    const End here{t0(), derivative(), true};
    if (derivative() >= 0) lower_ = here;
    if (derivative() <= 0) upper_ = here;
  }

  /// The derivative tells the place of the maximum far better than r squared does.
  void take_best() { evaluate_last(best_.r_squared > trial_.r_squared + noise ? best_.t0 : t0()); }

  RowsAboveT0& rows_;
  const bool x_on_y_;
  Companion& companion_;
  LineAtT0 trial_{};
  LineAtT0 best_{};
  double first_time_ = 0;
  double down_ = 0;  ///< the step towards lower t0
  End lower_;        ///< derivative above 0: the best t0 is higher
  End upper_;        ///< derivative below 0
  std::optional<SearchEnd> ended_;
};

/// The failures of a sample, on Weibull paper.
RowsAboveT0 failures_of(const Sample& sample, const PaperRows& paper) {
  std::vector<double> time, ordinate, weight;
  for (std::size_t i = 0; i < sample.size(); ++i) {
    if (!(sample.failures[i] > 0)) continue;
    time.push_back(sample.time[i]);
    ordinate.push_back(paper.y[i]);
    weight.push_back(sample.failures[i]);
  }
  return {std::move(time), std::move(ordinate), std::move(weight)};
}

/// Distinct times of failures, counted up to 3.
int distinct_times(const Sample& sample) {
  double last = 0;
  int times = 0;
  for (std::size_t i = 0; i < sample.size() && times < 3; ++i) {
    if (!(sample.failures[i] > 0) || (times > 0 && sample.time[i] == last)) continue;
    last = sample.time[i];
    ++times;
  }
  return times;
}

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

RowAnswer fit_minimum_life_line(const Sample& sample, bool x_on_y, Companion& companion) {
  const int times = distinct_times(sample);  // two lie on a line at any t0
  if (times < 3) return Refusal{RefusalCode::no_spread, {static_cast<double>(times), 3}};
  RowsAboveT0 rows = failures_of(sample, paper_rows(sample, Paper::weibull, true));
  MinimumLifeSearch search(rows, x_on_y, companion);
  const SearchEnd how = search.run();
  if (how == SearchEnd::stopped) return Refusal{RefusalCode::stopped, {}};
  if (how == SearchEnd::at_first_time) return Refusal{RefusalCode::no_interior_maximum, {1}};
  const LineAtT0& line = search.line();
  if (!(line.r_squared > 0 && line.slope > 0)) return Refusal{RefusalCode::line_without_worth, {}};
  return RowFit{
      {.Scale = 1 / line.life, .Fraction = 1, .Shape = line.slope, .T0 = line.t0, .Applies = 1},
      line.r_squared};
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
