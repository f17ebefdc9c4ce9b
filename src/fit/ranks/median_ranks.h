// Median ranks: the plotting positions of complete samples. The rank of the i-th
// of n failures at a level is the x at which at least i successes in n trials of
// chance x have the probability `level`: a quantile of the beta distribution.
#pragma once

#include <vector>

namespace tavlo {

/// Above this count Benard's approximation stands for the median rank.
inline constexpr int largest_exact_count = 5000;

/// F(x), the probability of at least i successes in n trials of chance x, for
/// 2 <= i <= n - 1. Absolute error below 1e-14 for n up to 1e6: the binomial
/// terms are summed from the largest one outward, so none of them underflows
/// that counts.
class RankProbability {
 public:
  RankProbability(int i, int n);
  double operator()(double x) const;

 private:
  double terms_downward(double term, double odds) const;
  double terms_upward(double term, double odds) const;

  int below_;        // i - 1, where the sums start
  int trials_;       // n
  double peak_;      // below_ / n, the chance at which the term of below_ is largest
  double log_term_;  // its logarithm there
};

/// The ranks 1 to n at `level` (0 < level < 1, else error 5), behind a 0 for no failure.
/// Near level 0.5 the ranks are Benard's if `use_benard` or n > largest_exact_count; n < 1
/// has none. The search for a rank ends when bracket and probability are within `tolerance`.
std::vector<double> fn_MedianRanks(bool use_benard, double level, int n, double tolerance);

/// The x with F(x) = level. `guess` is the rank before: the search starts from
/// twice the guess. A bracketing secant that turns to bisection when 6 net steps
/// go to one side; after 150 net steps or 2000 in all it keeps what it has.
double fn_RankSearch(const RankProbability& F, double level, double guess, double tolerance);

}  // namespace tavlo
