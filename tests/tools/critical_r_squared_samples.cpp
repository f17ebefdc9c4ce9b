#include "tools/critical_r_squared_samples.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

#include "numerics/normal.h"

namespace tavlo::test {

namespace {

using Column = std::vector<double>;

double squared_correlation(const Column& x, const Column& y) {
  const auto n = static_cast<double>(x.size());
  double mean_x = 0, mean_y = 0;
  for (std::size_t i = 0; i < x.size(); ++i) mean_x += x[i] / n, mean_y += y[i] / n;
  double xx = 0, yy = 0, xy = 0;
  for (std::size_t i = 0; i < x.size(); ++i) {
    const double a = x[i] - mean_x, b = y[i] - mean_y;
    xx += a * a, yy += b * b, xy += a * b;
  }
  return xy * xy / (xx * yy);
}

/// Of ln(t - t0), with t0 so far below the first time.
double r_squared_from(const Column& times, double below_first, const Column& y, Column& x) {
  for (std::size_t i = 0; i < times.size(); ++i) x[i] = std::log(times[i] - times[0] + below_first);
  return squared_correlation(x, y);
}

/// Over all t0 below the first time, minus infinity with them: there the times themselves are
/// on the line. A coarse look, then a golden section.
double best_r_squared(const Column& times, const Column& y) {
  constexpr double step = 0.5, lowest = -24, highest = 9;  // of ln(t1 - t0) in spans
  const double span = times.back() - times.front();
  Column x(times.size());
  const auto at = [&](double u) { return r_squared_from(times, span * std::exp(u), y, x); };
  double best_u = lowest, best = 0;
  for (double u = lowest; u <= highest; u += step)
    if (const double r = at(u); r > best) best = r, best_u = u;
  double a = best_u - step, b = best_u + step;
  for (int i = 0; i < 30; ++i) {
    const double width = (b - a) / (std::numbers::phi + 1), c = a + width, d = b - width;
    const double at_c = at(c), at_d = at(d);
    best = std::max({best, at_c, at_d});
    (at_c > at_d ? b : a) = at_c > at_d ? d : c;
  }
  return std::max(best, squared_correlation(times, y));
}

/// Of the ranks: the ordinates of the paper, ascending.
Column ordinates(const SimulatedNode& node) {
  Column y;
  for (int i = 1; i <= node.failures; ++i) {
    const double rank = (i - 0.3) / (node.failures + 0.4);
    y.push_back(node.lognormal ? normal_quantile(rank) : std::log(-std::log1p(-rank)));
  }
  return y;
}

/// Ascending logarithms of the times.
void draw(const SimulatedNode& node, std::mt19937_64& random, Column& ln_times) {
  std::normal_distribution<double> normal;
  std::exponential_distribution<double> exponential;
  for (double& t : ln_times)
    t = node.lognormal ? normal(random) : std::log(exponential(random)) / 2;
  std::sort(ln_times.begin(), ln_times.end());
}

}  // namespace

std::vector<double> simulated_r_squared(const SimulatedNode& node, std::size_t samples,
                                        std::uint64_t seed) {
  std::mt19937_64 random(seed);
  const Column y = ordinates(node);
  Column ln_times(y.size()), times(y.size()), r_squared;
  for (std::size_t k = 0; k < samples; ++k) {
    draw(node, random, ln_times);
    std::transform(ln_times.begin(), ln_times.end(), times.begin(),
                   [](double t) { return std::exp(t); });
    r_squared.push_back(node.three_parameters ? best_r_squared(times, y)
                                              : squared_correlation(ln_times, y));
  }
  std::sort(r_squared.begin(), r_squared.end());
  return r_squared;
}

CriticalRSquared table_value(const SimulatedNode& node, double r_squared) {
  const PaperKind kind = node.lognormal ? PaperKind::lognormal : PaperKind::weibull;
  return fd_Ccc2(kind, node.failures, node.three_parameters, r_squared);
}

double largest_difference(const SimulatedNode& node, const std::vector<double>& r_squared) {
  const auto n = static_cast<double>(r_squared.size());
  double largest = 0;
  for (const double p : {0.01, 0.05, 0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7, 0.8, 0.9, 0.95, 0.99}) {
    // From here on a minimum life puts most samples of three points on the line.
    if (node.three_parameters && node.failures == 3 && p > 0.2) break;
    const double seen = table_value(node, r_squared[static_cast<std::size_t>(p * n)]).pve;
    largest = std::max(largest, std::fabs(seen - p) / std::sqrt(p * (1 - p) / n));
  }
  return largest;
}

}  // namespace tavlo::test
