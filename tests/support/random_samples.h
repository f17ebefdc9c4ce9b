// Random samples: life data of known lives, of the sizes and kinds that an engineer meets.
// Seeded, with uniform numbers of their own, so that every machine draws the same.
#pragma once

#include <cstdint>
#include <random>
#include <vector>

#include "fit/sample.h"
#include "life/life.h"

namespace tavlo::test {

using Rows = std::vector<SampleRow>;

class RandomNumbers {
 public:
  explicit RandomNumbers(std::uint64_t seed) : random_(seed) {}

  double uniform(double low = 0, double high = 1);  ///< open at both ends
  double log_uniform(double low, double high);
  int whole(int low, int high);  ///< both included
  bool chance(double probability) { return uniform() < probability; }
  double weibull(double beta, double eta);
  /// A time of a Weibull life of one or more populations.
  double time_of(const Life& life);

 private:
  std::mt19937_64 random_;
};

/// The lives by their parameters. W5C: A the main population, C the early one of share p.
Life weibull(double beta, double eta, double t0 = 0);
Life weibull4(double beta_a, double eta_a, double beta_b, double eta_b);
Life weibull5c(double beta_a, double eta_a, double beta_c, double eta_c, double p);
Life weibull7(double beta_a, double eta_a, double beta_b, double eta_b, double beta_c, double eta_c,
              double p);

/// A random life of the model: populations near and far, shares 5 to 50 %.
Life random_life(RandomNumbers& random, std::int16_t model);

/// A sample with the life that it was drawn from.
struct DrawnSample {
  Life truth;
  Rows rows;  ///< ascending, equal rows as one with a count where `ties` made them
};

struct RowKinds {
  int digits = 4;  ///< significant digits of the times: few make ties
  double share_suspended = 0;
  bool fractions = false;  ///< of units
  int modes = 0;
};

/// Rows of a Weibull in ascending order: suspensions before, between and behind the
/// failures, some counts above 1.
Rows weibull_rows(RandomNumbers& random, int count, double beta, double eta,
                  const RowKinds& kinds = {});

/// Failures of one unit each.
Rows failures_at(const std::vector<double>& times);

void shuffle(RandomNumbers& random, Rows& rows);

/// The same rows in a unit of time 2^exponent smaller, and as `factor` times as many units.
Rows in_unit(Rows rows, int exponent);
Rows weighted(Rows rows, double factor);

/// n times of a life to 7 digits; by chance `suspended` each unit is stopped at a draw of
/// its own from the same life.
Rows draws(RandomNumbers& random, const Life& life, int n, double suspended = 0);

/// 15 to `most` units of a random life of the model: some with ties (two digits), some by
/// inspections every 250, up to 60 % suspended.
DrawnSample mixture_sample(std::uint64_t seed, std::int16_t model, int most = 400);

/// A time to so many digits; rows in ascending order, failures first; and all units that are
/// still alive at the quantile `share` stopped there.
float to_digits(double time, int digits);
void sort_rows(Rows& rows);
void stop_at(Rows& rows, double share);

}  // namespace tavlo::test
