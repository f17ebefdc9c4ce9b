// CompensatedSum: a sum that carries along what rounding cuts off (Knuth's exact
// two-sum). Moments of many rows lose digits when their differences are taken;
// summed so, they are as good as their last rounding, in any number of rows.
#pragma once

#include <cmath>

namespace tavlo {

class CompensatedSum {
 public:
  CompensatedSum& operator+=(double term) {
    const double sum = sum_ + term;
    const double taken = sum - sum_;
    rest_ += (sum_ - (sum - taken)) + (term - taken);
    sum_ = sum;
    return *this;
  }

  /// Not finite when a term or the sum was not (infinite after an overflow, as a
  /// plain sum is): test it once, behind the loop.
  double value() const { return std::isfinite(sum_) ? sum_ + rest_ : sum_; }

 private:
  double sum_ = 0;
  double rest_ = 0;
};

}  // namespace tavlo
