// StatedLife: the life that a person states by the numbers of its populations.
#pragma once

#include <optional>
#include <vector>

#include "life/life.h"

namespace tavlo {

/// One population in the terms of its family: eta and beta; mu and sigma; the median and the
/// factor exp(sigma); Xi and Del. What was not stated is nothing.
struct StatedRow {
  std::optional<double> percent;  ///< share of all units
  std::optional<double> first;
  std::optional<double> second;
};

/// True where a population (from 1) of a model has a share that is stated: both of W5C, the first
/// two of W7P.
bool states_share(const Model& model, int population);

/// The life of a model by its populations in their order; what is missing is no number (NaN).
/// `t0` is the minimum life of W3T. A population without a share is a further risk of those
/// that have one.
Life stated_life(const Model& model, const std::vector<StatedRow>& rows, double t0 = 0);

}  // namespace tavlo
