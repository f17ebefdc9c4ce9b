// Mixture rows: the points of a sample as an objective of a mixture reads them, and a
// thinned choice of them for a quick search.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "fit/sample.h"

namespace tavlo {

/// Times with weights, padded with rows of weight 0 to a whole number of packs.
struct WeightedRows {
  std::vector<double> x;  ///< ln time, or what the user of the rows measures; inner units
  std::vector<double> y;  ///< Weibull ordinate of the rank; only of failures for a regression
  std::vector<double> w;
  std::size_t count = 0;  ///< without the padding
  double total = 0;       ///< of the weights

  void add(double log_time, double ordinate, double weight);
  void pad();
};

struct MixtureRows {
  std::int16_t method = 0;
  WeightedRows failures;
  WeightedRows suspensions;  ///< only where they take part
  double mean_x = 0, mean_y = 0;
  double spread_x = 0, spread_y = 0;  ///< weighted sums of squares about the means

  bool is_likelihood() const;
};

/// The rows for a method; suspensions where `censored` and the method is MLE.
MixtureRows mixture_rows(const Sample& sample, std::int16_t method, bool censored);

/// About `most` failures, each standing for an equal part of them, and suspensions alike.
MixtureRows thinned(const MixtureRows& rows, std::size_t most);

}  // namespace tavlo
