// Row fit: one population fitted to a sample, still in the sample's inner unit of time,
// and the way from there to the person's unit.
#pragma once

#include <variant>

#include "fit/answer.h"

namespace tavlo {

struct RowFit {
  FitParam row;
  double quality = 0;  ///< r squared, or ln L in inner units
};

using RowAnswer = std::variant<Refusal, RowFit>;

/// A life in times 2^exponent larger; exact, but where a number leaves the normal range.
Life in_outer_unit(Life inner, int exponent);

/// ln L of a sample with so many failures, in the person's unit.
double ln_likelihood_in_outer_unit(double inner, double failures, int exponent);

/// The row of a classical fit in the person's unit; refused where the characteristic life,
/// or its reciprocal, is beyond what a number can hold.
std::variant<Refusal, FitParam> outer_row(std::int16_t model, const FitParam& inner, int exponent);

}  // namespace tavlo
