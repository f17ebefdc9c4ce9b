#include "fit/likelihood/log_times.h"

#include <algorithm>
#include <cmath>

namespace tavlo {
namespace {

struct Equation {
  double value, slope;
};

/// Sum u e^(bu) / sum e^(bu) - 1/b - mean of the failures' u, rising in b.
Equation equation(const LogTimes& times, double top, double beta) {
  double s0 = 0, s1 = 0, s2 = 0;
  for (std::size_t i = 0; i < times.x.size(); ++i) {
    const double from_top = times.x[i] - top;
    const double weight = times.w[i] * std::exp(beta * from_top);
    s0 += weight;
    s1 += weight * from_top;
    s2 += weight * from_top * from_top;
  }
  const double mean = s1 / s0;
  return {mean - 1 / beta - (times.mean_of_failed - top),
          s2 / s0 - mean * mean + 1 / (beta * beta)};
}

}  // namespace

LogTimeWeibull most_likely_weibull(const LogTimes& times, double near) {
  constexpr double steepest = 1e5;
  const double top = *std::max_element(times.x.begin(), times.x.end());
  double beta = near, low = 1e-3, high = steepest;
  for (int i = 0; i < 60; ++i) {
    const Equation at = equation(times, top, beta);
    (at.value < 0 ? low : high) = beta;
    double next = beta - at.value / at.slope;
    if (!(next > low && next < high)) next = std::sqrt(low * high);
    const double change = std::fabs(next - beta);
    beta = next;
    if (change <= 1e-9 * beta) break;
  }
  double sum = 0;
  for (std::size_t i = 0; i < times.x.size(); ++i)
    sum += times.w[i] * std::exp(beta * (times.x[i] - top));
  return {beta, top + std::log(sum / times.failures) / beta};
}

}  // namespace tavlo
