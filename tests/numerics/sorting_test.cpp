#include "numerics/sorting.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "support/reporter_test.h"

namespace tavlo {
namespace {

using SortArrayTest = test::ReporterTest;

TEST_F(SortArrayTest, sorts_the_first_slots_and_leaves_the_others) {
  std::mt19937_64 random(4);
  for (int bound = 0; bound <= 60; ++bound) {
    for (const int count : {-1, 0, 1, bound / 2, bound, bound + 1}) {
      Slots<double> list(bound);
      for (int i = 1; i <= bound; ++i) list(i) = static_cast<double>(random() % 20);
      std::vector<double> expected(list.begin() + 1, list.end());
      const int sorted = count < 1 || count > bound ? bound : count;
      std::sort(expected.begin(), expected.begin() + sorted);
      Sort_Array(reporter, list, count);
      EXPECT_EQ(std::vector<double>(list.begin() + 1, list.end()), expected) << bound << count;
    }
  }
}

}  // namespace
}  // namespace tavlo
