// Shown parameters: the numbers of a stored fit as a person reads them.
#pragma once

#include <optional>

#include "life/life.h"

namespace tavlo {

/// What a population shows.
struct ShownParameters {
  double first = 0;   ///< eta, Xi, mu or the median
  double second = 0;  ///< beta, Del, sigma or exp(sigma)
};

/// Turns a stored row round by the axes of the model; 0 stands where the
/// reciprocal of 0 would. Nothing for a model without axes. Error 6 when a
/// result is beyond all numbers.
std::optional<ShownParameters> shown_parameters(int model_code, const FitParam& row);

/// The same for tables, where a model without axes (the fit by failure mode)
/// reads as the Weibulls that it is made of.
ShownParameters grid_parameters(int model_code, const FitParam& row);

}  // namespace tavlo
