// Weighted line: least squares of a straight line through weighted points. A straight
// line on paper gives the parameters of every classical model.
#pragma once

#include <span>

namespace tavlo {

/// v = intercept + slope u through points of some weight. Points without weight take no
/// part.
struct WeightedLine {
  double weight = 0;  ///< of all points; 0 leaves the rest 0
  double u_mean = 0;
  double v_mean = 0;
  bool has_u_spread = false;  ///< two points differ in u
  bool has_v_spread = false;
  // Of points with spread in both:
  double slope = 0;
  double intercept = 0;
  double r_squared = 0;
};

/// The arrays are of one length. Moments are taken about the means, compensated: they keep
/// the digits that raw ones lose where the spread is small against the place. Error 6 where
/// one is beyond all numbers.
WeightedLine weighted_line(std::span<const double> weight, std::span<const double> u,
                           std::span<const double> v);

}  // namespace tavlo
