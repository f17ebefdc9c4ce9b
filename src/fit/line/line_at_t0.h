// Line at t0: the straight line through the points (ln(t - t0), Weibull ordinate) for one
// minimum life, the step that the search for the best one repeats.
#pragma once

#include <vector>

namespace tavlo {

struct LineAtT0 {
  double t0 = 0;
  double slope = 0;
  double life = 0;
  double r_squared = 0;
  /// By t0, of the sum of squares; its sign is opposite to that of r squared's (below 0: t0
  /// wants to rise).
  double derivative = 0;
};

/// Failures on Weibull paper, one entry a row, in ascending order of time. Padded with rows
/// that weigh nothing to whole packs.
class RowsAboveT0 {
 public:
  RowsAboveT0(std::vector<double> time, std::vector<double> ordinate, std::vector<double> weight);

  /// The line at t0, regressed either way. Error 5 when a time is not above t0, 6 and 11
  /// where no number can hold the line.
  LineAtT0 line(double t0, bool x_on_y);

  double first_time() const { return time_.front(); }
  double last_time() const { return last_time_; }

 private:
  struct Sums;
  Sums take_log_times(double t0);
  double derivative(const LineAtT0& line) const;

  std::vector<double> time_;
  std::vector<double> ordinate_;
  std::vector<double> weight_;
  std::vector<double> log_time_;  // ln(t - t0) at the last trial
  double last_time_ = 0;
  double middle_time_ = 0;
  double total_ = 0;  // of the weights
  double sum_y_ = 0;
  double sum_yy_ = 0;
};

}  // namespace tavlo
