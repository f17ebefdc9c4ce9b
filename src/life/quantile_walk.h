// QuantileWalk: quantiles of one life at rising chances, each from the one before.
#pragma once

#include <optional>

#include "life/life.h"

namespace tavlo {

/// For lives of several populations, whose times are above 0: Newton's method for the logarithm
/// of the time by that of the cumulative hazard, in which a Weibull is a straight line, held in
/// a bracket.
class QuantileWalk {
 public:
  explicit QuantileWalk(const Life& life) : life_(life) {}

  /// The time by which p has failed, 0 < p < 1 and not below the last p asked for; to 1e-10 of
  /// itself. Nothing where `quantile` has none.
  std::optional<double> operator()(double p);

 private:
  struct Place {
    double ln_hazard;
    double slope;  ///< by the logarithm of the time
  };
  Place at(double ln_time) const;

  const Life& life_;
  double last_ = 0;  ///< time of the last chance; 0 before the first
};

}  // namespace tavlo
