#include "fit/ranks/median_ranks.h"

#include <gtest/gtest.h>

#include <boost/math/special_functions/beta.hpp>

#include "numerics/run_time_error.h"
#include "support/random_samples.h"

namespace tavlo {
namespace {

/// In double: Boost's promotion to long double finds no root for rank 5 of 9.
double beta_quantile(int i, int n, double level) {
  using namespace boost::math::policies;
  return boost::math::ibeta_inv(double(i), double(n - i + 1), level,
                                policy<promote_double<false>>());
}

std::vector<double> ranks(double level, int n) { return fn_MedianRanks(false, level, n, 1e-12); }

// Every rank of small samples, some of large ones: from n = 1075 on (1 - x)^n underflows in
// the middle of the table.
TEST(MedianRanks, AreTheBetaQuantiles) {
  test::RandomNumbers random(2);
  for (const double level : {0.5, 0.95, 0.05})
    for (const int n : {1, 2, 3, 5, 9, 10, 30, 77, 120, 999, 1074, 1076, 2500, 5000}) {
      const std::vector<double> table = ranks(level, n);
      EXPECT_TRUE(std::is_sorted(table.begin(), table.end()));
      for (int sample = 0; sample < std::min(n, 121); ++sample) {
        const int i = n < 121 ? sample + 1 : random.whole(1, n);
        ASSERT_NEAR(table[std::size_t(i)], beta_quantile(i, n, level), 1e-10)
            << i << " of " << n << " " << level;
      }
    }
}

TEST(MedianRanks, BenardStandsInOnlyAtTheMedian) {
  EXPECT_DOUBLE_EQ(ranks(0.5, 5001)[17], 16.7 / 5001.4);
  EXPECT_NEAR(ranks(0.9, 5001)[17], beta_quantile(17, 5001, 0.9), 1e-10);
  EXPECT_NEAR(fn_MedianRanks(true, 0.6, 7, 1e-12)[3], beta_quantile(3, 7, 0.6), 1e-10);
  for (const double level : {0.0, 1.0, -1.0, std::nan("")})
    EXPECT_THROW(ranks(level, 3), RunTimeError);
}

}  // namespace
}  // namespace tavlo
