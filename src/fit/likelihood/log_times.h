// Log times: the Weibull of highest likelihood through rows of log times and weights.
#pragma once

#include <span>

namespace tavlo {

/// Failures and suspensions alike; what tells them apart are the sums over the failures.
struct LogTimes {
  std::span<const double> x;  ///< ln time
  std::span<const double> w;
  double failures = 0;        ///< sum of their weights
  double mean_of_failed = 0;  ///< of their x
};

struct LogTimeWeibull {
  double beta = 1;
  double ln_eta = 0;
};

/// Newton's method on the likelihood equation from the slope `near`, held in a bracket of
/// 1e-3 to 1e5: an end of it where the likelihood has no maximum between them.
LogTimeWeibull most_likely_weibull(const LogTimes& times, double near);

}  // namespace tavlo
