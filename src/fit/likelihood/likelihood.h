// Likelihood: the log likelihood of a two-parameter Weibull on data with suspensions, its
// score in the slope, and the scale that belongs to a slope.
#pragma once

#include "fit/sample.h"

namespace tavlo {

/// A slope, the best scale for it, and what the likelihood is there; in inner units.
struct LikelihoodValue {
  double ln_likelihood = 0;
  double score = 0;  ///< -(1/r) d ln L / d beta at the best scale; rises with beta
  double scale = 0;  ///< 1 / eta
  double shape = 0;  ///< beta
};

/// The likelihood of one sample, for many slopes. Suspensions, and failures of other modes,
/// survive their time. Times enter as ln t less that of the largest, so that no power of a
/// time overflows. All times must be above 0. Keeps a reference to the sample.
class WeibullLikelihood {
 public:
  /// Only the failures of `mode` count as such; 0 takes all.
  explicit WeibullLikelihood(const Sample& sample, int mode = 0);

  /// At a slope above 0. Error 6 where the scale is beyond all numbers, 5 without failures.
  LikelihoodValue at(double beta) const;

  /// False when no failure comes before the largest time: the likelihood then grows with
  /// the slope without end.
  bool has_maximum() const { return has_maximum_; }
  double failures() const { return failures_; }

 private:
  struct Sums {
    double powers;        // A / Xmax^beta
    double powers_by_ln;  // (B - A ln Xmax) / Xmax^beta
  };
  Sums sums_at(double beta) const;

  const Sample& sample_;
  double ln_largest_ = 0;            // ln Xmax
  double failures_ = 0;              // r
  double failures_before_last_ = 0;  // the sum of failures by ln(t / Xmax)
  bool has_maximum_ = false;
};

}  // namespace tavlo
