// Random life data for the tests of ranking and fitting: ties, suspensions before,
// between and behind the failures, counts above 1, fractional counts.
#pragma once

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "fit/sample.h"

namespace tavlo::test {

using Rows = std::vector<SampleRow>;

struct RowKinds {
  int digits = 4;  ///< significant digits of the times: few make ties
  double share_suspended = 0;
  bool fractions = false;
  int modes = 0;
};

class RandomRows {
 public:
  explicit RandomRows(std::uint64_t seed) : random_(seed) {}

  double uniform(double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(random_);
  }
  double log_uniform(double low, double high) {
    return std::exp(uniform(std::log(low), std::log(high)));
  }
  int whole(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }
  bool chance(double probability) { return uniform(0, 1) < probability; }
  std::mt19937_64& engine() { return random_; }

  /// Weibull times in ascending order.
  Rows weibull(int rows, double beta, double eta, const RowKinds& kinds = {}) {
    std::weibull_distribution<double> time(beta, eta);
    Rows made;
    for (int i = 0; i < rows; ++i) {
      const double x = std::max(time(random_), 1e-30);
      const double unit = std::pow(10.0, std::floor(std::log10(x)) - kinds.digits + 1);
      SampleRow row = counts(kinds);
      row.time = static_cast<float>(std::max(1.0, std::round(x / unit)) * unit);
      if (kinds.modes > 0) row.mode = static_cast<std::int16_t>(whole(0, kinds.modes));
      made.push_back(row);
    }
    std::stable_sort(made.begin(), made.end(), [](auto& a, auto& b) { return a.time < b.time; });
    return made;
  }

 private:
  SampleRow counts(const RowKinds& kinds) {
    SampleRow row{.failures = chance(0.2) ? whole(2, 5) : 1.0};
    if (kinds.fractions && chance(0.3)) row.failures = whole(1, 11) * 0.25;
    if (!chance(kinds.share_suspended)) return row;
    row.suspensions = kinds.fractions && chance(0.3) ? uniform(0.1, 3) : whole(1, 3);
    if (chance(0.8)) row.failures = 0;
    return row;
  }

  std::mt19937_64 random_;
};

/// Failures of one unit each.
inline Rows failures_at(const std::vector<double>& times) {
  Rows rows;
  for (const double time : times) rows.push_back({static_cast<float>(time), 1, 0, 0});
  return rows;
}

inline double relative_difference(double a, double b) {
  return std::fabs(a - b) / std::max({std::fabs(a), std::fabs(b), 1e-300});
}

}  // namespace tavlo::test
