// Shown parameters: the numbers of a fitted population as a person reads them.
#pragma once

#include <cstdint>
#include <optional>

#include "life/life.h"

namespace tavlo {

/// What a population shows, in the order of parameter_names(). Nothing where it is not
/// determined: no failure reaches the population, it was not fitted, or the number lies
/// beyond all that can be written.
struct ShownParameters {
  std::optional<double> first;   ///< eta = 1/Scale, Xi = 1/Scale, mu or the median
  std::optional<double> second;  ///< beta, Del, sigma = 1/Shape or the factor exp(sigma)

  friend bool operator==(const ShownParameters&, const ShownParameters&) = default;
};

/// Turns a row of a model round. A model without a family of its own (the fit by failure
/// mode) reads as the Weibulls that it is made of.
ShownParameters shown_parameters(int model_code, const FitParam& row);

}  // namespace tavlo
