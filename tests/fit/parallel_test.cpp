// Work shared between cores. The preset tsan runs the tests of fits whose names
// hold the word Parallel, these among them.
#include "fit/parallel.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace tavlo {
namespace {

/// Sums within sums.
std::vector<double> nested_sums(std::size_t count) {
  std::vector<double> sums(count);
  for_each_index(count, [&](std::size_t i) {
    std::vector<double> parts(i);
    for_each_index(i, [&](std::size_t k) { parts[k] = std::sin(static_cast<double>(k)); });
    for (const double part : parts) sums[i] += part;
  });
  return sums;
}

TEST(Parallel, AnyNumberOfThreadsGivesTheSameBits) {
  set_threads(1);
  const auto alone = nested_sums(200);
  for (const int threads : {0, 2, 5}) {
    set_threads(threads);
    EXPECT_EQ(nested_sums(200), alone) << threads;
  }
  set_threads(0);
}

}  // namespace
}  // namespace tavlo
