// Repeats sizes of the table of critical r squared by simulation: the critical value of table and
// simulation, and by how many standard errors of the simulation percentiles differ at most.
//
//     repeat_critical_r_squared [SAMPLES [SEED [N...]]]
//
// Ends with 1 where a difference is above four standard errors and what the interpolation
// between the sizes of the table, and the table's own simulation, may add: 0.002 of a share.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "tools/critical_r_squared_samples.h"

using namespace tavlo::test;

static bool repeat(const SimulatedNode& node, std::size_t samples, std::uint64_t seed) {
  const std::vector<double> r_squared = simulated_r_squared(node, samples, seed);
  const double difference = largest_difference(node, r_squared);
  const bool good = difference < 4 + 0.002 / std::sqrt(0.09 / static_cast<double>(samples));
  std::printf("%-9s %d parameters  N %4d  table %.5f  simulated %.5f  difference %5.2f%s\n",
              node.lognormal ? "lognormal" : "Weibull", node.three_parameters ? 3 : 2,
              node.failures, table_value(node, 0.5).critical, r_squared[samples / 10], difference,
              good ? "" : "  too much");
  return good;
}

int main(int count, char** words) {
  const std::size_t samples = count > 1 ? std::strtoull(words[1], nullptr, 10) : 100000;
  const std::uint64_t seed = count > 2 ? std::strtoull(words[2], nullptr, 10) : 1;
  std::vector<int> sizes = {4, 5, 10, 13, 30, 100, 175};
  if (count > 3) sizes.clear();
  for (int i = 3; i < count; ++i) sizes.push_back(std::atoi(words[i]));
  if (samples < 100 || *std::min_element(sizes.begin(), sizes.end()) < 3) {
    std::puts("usage: repeat_critical_r_squared [SAMPLES from 100 on [SEED [N from 3 on...]]]");
    return 2;
  }
  bool good = true;
  for (const bool lognormal : {false, true})
    for (const bool three : {false, true})
      for (const int n : sizes) good = repeat({lognormal, three, n}, samples, seed) && good;
  return good ? 0 : 1;
}
