// Random life data for the tests of ranking and fitting: ties, suspensions
// before, between and behind the failures, counts above 1, fractional counts.
#pragma once

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "support/test_world.h"

namespace tavlo::test {

class RandomSample {
 public:
  explicit RandomSample(std::uint64_t seed) : random_(seed) {}

  double uniform(double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(random_);
  }
  double log_uniform(double low, double high) {
    return std::exp(uniform(std::log(low), std::log(high)));
  }
  int whole(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }
  bool chance(double probability) { return uniform(0, 1) < probability; }

  /// Sorted Weibull data; the times are cut to `digits` significant digits.
  DataSet weibull(int rows, double beta, double eta, int digits, double share_suspended,
                  bool fractions, int modes = 0) {
    std::weibull_distribution<double> time(beta, eta);
    std::vector<Point> points;
    for (int i = 0; i < rows; ++i) {
      const double x = std::max(time(random_), 1e-30);
      const double unit = std::pow(10.0, std::floor(std::log10(x)) - digits + 1);
      points.push_back(
          counts(std::max(1.0, std::round(x / unit)) * unit, share_suspended, fractions));
      if (modes > 0) points.back().mode = whole(0, modes);
    }
    std::stable_sort(points.begin(), points.end(), [](auto& a, auto& b) { return a.x < b.x; });
    return make_data(points);
  }

 private:
  Point counts(double x, double share_suspended, bool fractions) {
    Point point{.x = x, .fails = chance(0.2) ? whole(2, 5) : 1.0, .susps = 0};
    if (fractions && chance(0.3)) point.fails = whole(1, 11) * 0.25;
    if (!chance(share_suspended)) return point;
    point.susps = fractions && chance(0.3) ? uniform(0.1, 3) : whole(1, 3);
    if (chance(0.8)) point.fails = 0;
    return point;
  }

  std::mt19937_64 random_;
};

}  // namespace tavlo::test
