// Critical r squared samples: the simulation behind the table of critical r squared, repeated
// from its definition and sharing nothing with the program: complete samples of a model, on
// its paper at Benard's ranks.
#pragma once

#include <cstdint>
#include <vector>

#include "analyses/critical_r_squared.h"

namespace tavlo::test {

struct SimulatedNode {
  bool lognormal = false;
  bool three_parameters = false;  ///< t0 for the highest r squared; slope 2, or sigma 1
  int failures = 0;
};

/// r squared of so many samples, ascending.
std::vector<double> simulated_r_squared(const SimulatedNode& node, std::size_t samples,
                                        std::uint64_t seed);

/// The program's answer for a sample of the node.
CriticalRSquared table_value(const SimulatedNode& node, double r_squared);

/// By how many standard errors of the simulation the share of samples up to a percentile of the
/// program differs from it at most, over percentiles from 1 to 99 %.
double largest_difference(const SimulatedNode& node, const std::vector<double>& r_squared);

}  // namespace tavlo::test
