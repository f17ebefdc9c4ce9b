// Likelihood: the log likelihood of a two-parameter Weibull on data with
// suspensions, its score in the slope, and the scale that belongs to a slope.
#pragma once

#include <optional>
#include <vector>

#include "ports/prompts.h"
#include "project/records.h"

namespace tavlo {

/// Mode flag of Calc_Likelihood: only the failure mode of row 0 counts.
inline constexpr int one_failure_mode = 2;

struct LikelihoodValue {
  double ln_likelihood = 0;
  double score = 0;  ///< -(1/r) d ln L / d beta at the best scale; rises with beta
  double scale = 0;  ///< 1 / eta
  double shape = 0;  ///< beta
};

/// The likelihood of one data set, for many slopes. Failures of other modes and
/// suspensions survive their time. Times are held as ln|X| less that of the
/// largest one, so that no power of a time overflows. Error 5 at an X of 0.
class WeibullLikelihood {
 public:
  /// With `one_mode` only the failures of the mode of row 0 count as such.
  WeibullLikelihood(const DataSet& data, bool one_mode);

  /// At a slope above 0, with the scale that is best for it.
  LikelihoodValue at(double beta) const;
  /// At a slope and a scale, both above 0.
  LikelihoodValue at(double beta, double scale) const;

  /// False when no failure comes before the largest time: the likelihood then
  /// grows with the slope without end.
  bool has_maximum() const { return has_maximum_; }
  double failures() const { return failures_; }

 private:
  struct Sums {
    double powers;        // A / Xmax^beta
    double powers_by_ln;  // (B - A ln Xmax) / Xmax^beta
  };
  void gather(const DataSet& data, bool one_mode);
  Sums sums_at(double beta) const;
  double score_of(double beta, const Sums& sums) const;

  struct WeightedTime {
    double weight;
    double ln_time;  // ln(|X| / Xmax)
  };
  std::vector<WeightedTime> times_;
  double ln_largest_ = 0;            // ln Xmax
  double failures_ = 0;              // r
  double failures_before_last_ = 0;  // L1 - r ln Xmax, the sum of Fails ln(|X| / Xmax)
  bool has_maximum_ = false;
};

/// The closed form for one failure before one suspension, each of one unit;
/// nothing for other data. Its score is 0: the search for a slope ends there.
std::optional<LikelihoodValue> one_failure_one_suspension(const DataSet& data, double failures);

/// Evaluates `fit` on `data` at the `Shape` of the row in use (row 1, or with
/// one_failure_mode that of row 0's Mode; 0 or less counts as 1). `solve` takes
/// the best scale for it and stores `Scale` and `Shape`; otherwise a stored
/// `Scale` above 0 is used. `Quality` receives ln L. Models other than the
/// Weibull with a free or fixed slope are refused by a box and change nothing.
/// Errors 5 (an X of 0) and 11 (no failures) are the caller's to report.
void Calc_Likelihood(Prompts& prompts, double& ln_likelihood, double& score, const DataSet& data,
                     FitResult& fit, bool solve, int mode_flag);

}  // namespace tavlo
