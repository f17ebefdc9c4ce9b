// Mixture samples: life data of known Weibull mixtures, of the sizes and kinds
// that an engineer meets, with their median ranks.
#pragma once

#include <cstdint>

#include "project/records.h"

namespace tavlo::test {

/// Parameters of W4P (A, B), W5C (A, C, share) or W7P (all). A beta of 0: no such
/// population.
struct TrueMixture {
  int K = 4;
  double beta_a = 0, eta_a = 1;
  double beta_b = 0, eta_b = 1;
  double beta_c = 0, eta_c = 1;
  double share = 0;  ///< of the units that carry population C

  double reliability(double t) const;
  double density(double t) const;
  /// The time at which the fraction F has failed.
  double quantile(double F) const;
};

/// n failures exactly at their median ranks (i - 0.3) / (n + 0.4).
DataSet precise_sample(const TrueMixture& mixture, int n);

struct SampleKind {
  int n = 100;
  std::uint64_t seed = 1;
  double censored = 0;  ///< share of units with a time of suspension, itself a draw
                        ///< of the mixture: half of it are suspensions in the end
  int digits = 7;       ///< significant digits of a time; few make ties
};

/// Ranked (Benard on adjusted orders), in ascending time.
DataSet random_sample(const TrueMixture& mixture, const SampleKind& kind);

}  // namespace tavlo::test
