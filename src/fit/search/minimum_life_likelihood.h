// Minimum life likelihood: minus ln L of a three-parameter Weibull to second order, by
// ln beta, ln eta and the logarithm of the distance of t0 from the first failure.
#pragma once

#include "fit/minimiser/newton.h"
#include "fit/search/minimum_life_profile.h"

namespace tavlo {

namespace minimum_life_variable {
inline constexpr std::size_t ln_beta = 0, ln_eta = 1, ln_distance = 2, count = 3;
}  // namespace minimum_life_variable

class MinimumLifeLikelihood {
 public:
  /// Takes the times, and pads them for its long loops.
  explicit MinimumLifeLikelihood(TimesFromFirst times);

  bool shape_at(const SmallVector& q, LocalShape& shape) const;

 private:
  TimesFromFirst times_;
};

}  // namespace tavlo
