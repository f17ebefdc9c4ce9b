// Critical r squared samples: the simulation behind the table of critical r squared, repeated
// from its definition and sharing nothing with the program: complete samples of a model, on
// its paper at Benard's ranks.
#pragma once

#include <cstdint>
#include <vector>

namespace tavlo::test {

struct SimulatedNode {
  bool lognormal = false;
  bool three_parameters = false;  ///< t0 for the highest r squared; slope 2, or sigma 1
  int failures = 0;
};

/// r squared of so many samples, ascending.
std::vector<double> simulated_r_squared(const SimulatedNode& node, int samples, std::uint64_t seed);

/// How far samples agree with fd_Ccc2, in standard errors of the simulation.
struct Agreement {
  double critical = 0;    ///< of the share below the critical value, of 10 %
  double percentile = 0;  ///< largest of the share up to a percentile, of that percentile
};
Agreement agreement(const SimulatedNode& node, const std::vector<double>& r_squared);

}  // namespace tavlo::test
