// Life search: the time by which a fit has reached a fraction failed, wherever
// it lies beyond the data.
#pragma once

#include "project/session.h"

namespace tavlo::cli {

/// A time and the fraction that has failed by it.
struct LifePoint {
  double x = 0;
  double p = 0;
  bool known = true;  ///< false when there is no such time among the numbers
};

/// The time at which `fit`, a fit of `data`, reaches `fraction` (between 0 and 1).
LifePoint find_life(ErrorReporter& reporter, const DataSet& data, const FitResult& fit,
                    double fraction);

}  // namespace tavlo::cli
