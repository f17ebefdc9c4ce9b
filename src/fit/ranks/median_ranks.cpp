#include "fit/ranks/median_ranks.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "fit/ranks/adjusted_rank.h"
#include "numerics/run_time_error.h"

namespace tavlo {
namespace {

constexpr double negligible = 1e-18;  // of a sum: what follows falls off faster than a series
constexpr int net_steps_to_bisect = 6;
constexpr int most_net_steps = 150;
constexpr int most_steps = 2000;

double ln_factorial(int n) {
  double product = 1;
  for (int k = 2; k <= n; ++k) product *= k;
  return std::log(product);
}

/// ln n! - ln(sqrt(2 pi n) (n/e)^n). Stirling's series, from n = 16 on within
/// 1e-16; below that n! is exact.
double stirling_error(int n) {
  const double x = n;
  if (n < 16)
    return ln_factorial(n) - ((x + 0.5) * std::log(x) - x + 0.5 * std::log(2 * std::numbers::pi));
  const double q = 1 / (x * x);
  return (1.0 / 12 - (1.0 / 360 - (1.0 / 1260 - (1.0 / 1680 - q / 1188) * q) * q) * q) / x;
}

}  // namespace

// The binomial probability in Loader's form ("Fast and accurate computation of
// binomial probabilities", 2000): no large logarithms that cancel.
RankProbability::RankProbability(int i, int n) : below_(i - 1), trials_(n), peak_(0), log_term_(0) {
  const double k = below_;
  const double rest = trials_ - below_;
  peak_ = k / trials_;
  log_term_ = 0.5 * std::log(trials_ / (2 * std::numbers::pi * k * rest)) +
              stirling_error(trials_) - stirling_error(below_) - stirling_error(trials_ - below_);
}

double RankProbability::operator()(double x) const {
  if (x <= 0) return 0;
  if (x >= 1) return 1;
  const double rest = trials_ - below_;
  const double away = x - peak_;
  const double term = std::exp(log_term_ + below_ * std::log1p(away / peak_) +
                               rest * std::log1p(-away * trials_ / rest));
  const double odds = x / (1 - x);
  if (below_ <= trials_ * x) return 1 - terms_downward(term, odds);
  return terms_upward(term * odds * rest / (below_ + 1), odds);
}

/// P(at most i - 1), from i - 1 down.
double RankProbability::terms_downward(double term, double odds) const {
  double sum = term;
  for (int k = below_; k > 0 && term > negligible * sum; --k) {
    term *= k / ((trials_ - k + 1) * odds);
    sum += term;
  }
  return sum;
}

/// P(at least i), from i up.
double RankProbability::terms_upward(double term, double odds) const {
  double sum = term;
  for (int k = below_ + 1; k < trials_ && term > negligible * sum; ++k) {
    term *= odds * (trials_ - k) / (k + 1);
    sum += term;
  }
  return sum;
}

namespace {

struct ProbabilityAt {
  double x = 0;
  double F = 0;
};

struct RankBracket {
  const RankProbability& F;
  double level;
  ProbabilityAt low{0, 0};
  ProbabilityAt high{1, 1};
  ProbabilityAt now{};
  double estimate = -1;
  int net_steps = 0;  // upper ends taken less lower ends taken

  double width() const { return high.x - low.x; }
  double miss(const ProbabilityAt& at) const { return std::fabs(at.F - level); }
  const ProbabilityAt& nearer_end() const { return miss(low) < miss(high) ? low : high; }
  bool one_sided() const { return std::abs(net_steps) > most_net_steps; }
};

/// Where the line through two points meets the level; -1 when it is flat.
double line_at_level(const ProbabilityAt& a, const ProbabilityAt& b, double level) {
  if (a.F == b.F) return -1;
  return a.x + (b.x - a.x) * (level - a.F) / (b.F - a.F);
}

/// Halves x until F has fallen to the level, or else moves it towards 1 until F
/// has reached the level.
void enclose(RankBracket& bracket, double x) {
  ProbabilityAt at{x, bracket.F(x)};
  while (at.F > bracket.level && !bracket.one_sided()) {
    bracket.high = at;
    ++bracket.net_steps;
    at = {at.x / 2, bracket.F(at.x / 2)};
  }
  bracket.low = at;
  while (bracket.high.x >= 1 && at.F < bracket.level && at.x < 1 && !bracket.one_sided()) {
    bracket.low = at;
    --bracket.net_steps;
    at = {(at.x + 1) / 2, bracket.F((at.x + 1) / 2)};
  }
  if (at.F >= bracket.level && at.x > bracket.low.x) bracket.high = at;
}

/// Keeps a trial off the ends of the bracket. One close to an end is moved a
/// little further in, so that the far end closes up as well.
double off_the_ends(const RankBracket& bracket, double x) {
  const double width = bracket.width();
  if (width <= 0) return x;
  const double r = (x - bracket.low.x) / width;
  if (r < 0.00001) return bracket.low.x + 0.00001 * width;
  if (r < 0.001) return bracket.low.x + 1.5 * (x - bracket.low.x);
  if (r >= 0.99999) return bracket.low.x + 0.99999 * width;
  if (r >= 0.999) return bracket.high.x - 1.5 * (bracket.high.x - x);
  return x;
}

double next_trial(const RankBracket& bracket) {
  const double e = bracket.estimate;
  const bool usable = e >= bracket.low.x && e <= bracket.high.x && e >= 0 &&
                      std::abs(bracket.net_steps) < net_steps_to_bisect;
  return off_the_ends(bracket, usable ? e : (bracket.low.x + bracket.high.x) / 2);
}

/// One step of the search; true when it is over.
bool fn_RankStep(RankBracket& bracket, double tolerance) {
  const double x = next_trial(bracket);
  bracket.now = {x, bracket.F(x)};
  bracket.estimate = line_at_level(bracket.now, bracket.nearer_end(), bracket.level);
  if (bracket.now.F >= bracket.level) {
    bracket.high = bracket.now;
    ++bracket.net_steps;
  } else {
    bracket.low = bracket.now;
    --bracket.net_steps;
  }
  const bool found = bracket.width() < tolerance && bracket.miss(bracket.now) < tolerance;
  return found || bracket.one_sided();
}

std::size_t place(int i) { return static_cast<std::size_t>(i); }

void fill_by_benard(std::vector<double>& table, int n) {
  for (int i = 1; i <= n; ++i) table[place(i)] = benard_rank(i, n);
}

void fill_exactly(std::vector<double>& table, double level, int n, double tolerance) {
  table[1] = -std::expm1(std::log1p(-level) / n);
  table[place(n)] = std::exp(std::log(level) / n);
  const int half = (n + 1) / 2;
  for (int i = 2; i <= std::min(half, n - 1); ++i)
    table[place(i)] = fn_RankSearch(RankProbability(i, n), level, table[place(i - 1)], tolerance);
  // Mirrored: rank i at a level is 1 less rank n + 1 - i at 1 - level. At 0.5
  // that search has been made already.
  for (int i = std::max(half, 1) + 1; i < n; ++i) {
    const int mirrored = n - i + 1;
    table[place(i)] = level == 0.5 ? 1 - table[place(mirrored)]
                                   : 1 - fn_RankSearch(RankProbability(mirrored, n), 1 - level,
                                                       1 - table[place(i - 1)], tolerance);
  }
}

}  // namespace

double fn_RankSearch(const RankProbability& F, double level, double guess, double tolerance) {
  RankBracket bracket{.F = F, .level = level};
  enclose(bracket, std::clamp(2 * guess, 0.01, 0.99));
  bracket.estimate = std::clamp(line_at_level(bracket.low, bracket.high, level), 0.01, 0.99);
  bracket.net_steps = 0;
  for (int step = 0; step < most_steps; ++step)
    if (fn_RankStep(bracket, tolerance)) break;
  const ProbabilityAt& end = bracket.nearer_end();
  return bracket.miss(end) < bracket.miss(bracket.now) ? end.x : bracket.now.x;
}

std::vector<double> fn_MedianRanks(bool use_benard, double level, int n, double tolerance) {
  if (n < 1) return {0.0};
  if (!(level > 0 && level < 1)) throw RunTimeError(run_time::invalid_argument);
  std::vector<double> table(place(n) + 1);
  const bool at_median = std::fabs(level - 0.5) <= tolerance;
  if (at_median && (n > largest_exact_count || use_benard)) {
    fill_by_benard(table, n);
  } else {
    fill_exactly(table, level, n, tolerance);
  }
  return table;
}

}  // namespace tavlo
