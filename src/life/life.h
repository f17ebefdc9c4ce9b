// Life: a fitted life distribution as a value: a model and the rows of its populations.
// Everything that is read off a fit (charts' lines excepted, which follow a rule of their
// own below a minimum life) comes from here.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "life/models.h"

namespace tavlo {

/// One population of a fit. What `Scale` and `Shape` hold depends on the family:
/// Weibull 1/eta and beta, Gumbel 1/Xi and Del, Normal mu and 1/sigma, LogNormal
/// the median and 1/sigma.
struct FitParam {
  double Scale = 0;
  double Fraction = 0;  ///< share of all units; 0 for a further risk of the same units
  double Shape = 0;
  double T0 = 0;             ///< minimum life
  std::int32_t Applies = 0;  ///< bit i - 1: acts in sub-population i

  friend bool operator==(const FitParam&, const FitParam&) = default;
};

/// Stands for a population that no failure reaches: its life is beyond all times.
inline constexpr double unreached_scale = 1e-300;
inline bool is_unreached(const FitParam& row) { return row.Scale == unreached_scale; }

/// Row j is a risk; row i with a share is also a term of the mixture, in which the risks
/// act whose `Applies` has the bit i - 1. By failure mode each row is the Weibull of one
/// mode, and all modes act on all units: R is the product of theirs.
struct Life {
  std::int16_t model = model_code::weibull2;
  std::vector<FitParam> rows;

  friend bool operator==(const Life&, const Life&) = default;
};

/// Fraction failed by time x, 0 to 1. Nothing has failed at or below the minimum life.
double fraction_failed(const Life& life, double x);

/// 1 - fraction_failed, without the loss of digits where it is small.
double reliability(const Life& life, double x);

/// ln of the density at time x, per unit of time; -infinity where it is 0.
double ln_density(const Life& life, double x);

/// The time by which the fraction p (0 < p < 1) has failed. Nothing only where the life
/// never reaches p (a population that does not fail) or where it lies beyond all numbers.
std::optional<double> quantile(const Life& life, double p);

/// A random time to failure: infinite for a unit that never fails. `uniform` gives
/// independent numbers above 0 and below 1; it is called once for the population and once
/// for each risk that acts in it.
double draw(const Life& life, const std::function<double()>& uniform);

}  // namespace tavlo
