// Work shared between cores. The preset tsan runs the tests of fits whose names
// hold the word Parallel, these among them.
#include "fit/parallel.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace tavlo {
namespace {

std::vector<double> sines(std::size_t count) {
  std::vector<double> results(count);
  for_each_index(count, [&](std::size_t i) { results[i] = std::sin(static_cast<double>(i)); });
  return results;
}

std::vector<double> nested_sums(std::size_t count) {
  std::vector<double> sums(count);
  for_each_index(count, [&](std::size_t i) {
    for (const double part : sines(i)) sums[i] += part;
  });
  return sums;
}

TEST(Parallel, AnyNumberOfThreadsGivesTheSameBits) {
  set_threads(1);
  const auto sines_alone = sines(1000), sums_alone = nested_sums(100);
  for (const int threads : {0, 2, 5}) {
    set_threads(threads);
    EXPECT_EQ(sines(1000), sines_alone) << threads;
    EXPECT_EQ(nested_sums(100), sums_alone) << threads;
    EXPECT_TRUE(sines(0).empty());
  }
  set_threads(0);
}

}  // namespace
}  // namespace tavlo
