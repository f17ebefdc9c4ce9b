// How far two numbers are apart, in parts of the larger.
#pragma once

#include <algorithm>
#include <cmath>

namespace tavlo::test {

/// 0 when both are 0.
inline double relative_difference(double a, double b) {
  const double larger = std::max(std::fabs(a), std::fabs(b));
  return larger == 0.0 ? 0.0 : std::fabs(a - b) / larger;
}

}  // namespace tavlo::test
