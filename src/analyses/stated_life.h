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

/// Why what was stated is no life that can be sampled.
enum class LifeFault {
  model,    ///< one that is not sampled, or not with so many populations
  missing,  ///< a parameter
  number,   ///< a parameter beyond all numbers
  scale,    ///< eta, the median, sigma or Del not above 0, or Xi of 0
  slope,    ///< beta not above 0, or sdF not above 1
  shares,   ///< below 0, or their sum is not 100 %
};

/// True for a model that samples are drawn from.
bool is_sampled(std::int16_t model);

/// True where a population (from 1) of a model has a share that is stated: both of W5C, the first
/// two of W7P.
bool states_share(const Model& model, int population);

/// Nothing for a life that can be sampled.
std::optional<LifeFault> fault_of(const Model& model, const std::vector<StatedRow>& rows,
                                  double t0 = 0);

/// The life of a model by its populations in their order, as far as they have no fault. `t0`
/// is the minimum life of W3T. A population without a share is a further risk of those that
/// have one.
Life stated_life(const Model& model, const std::vector<StatedRow>& rows, double t0 = 0);

}  // namespace tavlo
