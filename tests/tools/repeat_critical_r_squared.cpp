// Repeats sizes of the table of critical r squared by simulation, and says by how many standard
// errors of the simulation the program differs.
//
//     repeat_critical_r_squared [SAMPLES [SEED [N...]]]
//
// Ends with 1 where a difference is above four standard errors of the simulation and what the
// interpolation between the sizes of the table, and the table's own simulation, may add.
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "tools/critical_r_squared_samples.h"

namespace {

using namespace tavlo::test;

bool repeat(const SimulatedNode& node, int samples, std::uint64_t seed) {
  const Agreement agreed = agreement(node, simulated_r_squared(node, samples, seed));
  // A share that is off by 0.002, in standard errors of a share of 10 %.
  const double interpolation = 0.002 / std::sqrt(0.09 / samples);
  const bool good = std::fabs(agreed.critical) < 4 + interpolation &&
                    std::fabs(agreed.percentile) < 4 + interpolation;
  std::printf("%-9s %d parameters  N %4d  critical %+6.2f  percentiles %+6.2f %s\n",
              node.lognormal ? "lognormal" : "Weibull", node.three_parameters ? 3 : 2,
              node.failures, agreed.critical, agreed.percentile, good ? "" : "  differs");
  return good;
}

}  // namespace

int main(int count, char** words) {
  const int samples = count > 1 ? std::atoi(words[1]) : 100000;
  const std::uint64_t seed = count > 2 ? std::strtoull(words[2], nullptr, 10) : 1;
  std::vector<int> sizes = {4, 5, 10, 13, 30, 100, 175};
  if (count > 3) sizes.clear();
  for (int i = 3; i < count; ++i) sizes.push_back(std::atoi(words[i]));
  bool good = true;
  for (const bool lognormal : {false, true})
    for (const bool three : {false, true})
      for (const int n : sizes) good = repeat({lognormal, three, n}, samples, seed) && good;
  return good ? 0 : 1;
}
