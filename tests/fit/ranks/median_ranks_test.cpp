#include "actions/median_ranks.h"

#include <gtest/gtest.h>

#include <boost/math/special_functions/beta.hpp>

#include "actions/random_sample.h"

namespace tavlo {
namespace {

/// In double: Boost's promotion to long double finds no root for rank 5 of 9.
double beta_quantile(int i, int n, double level) {
  using namespace boost::math::policies;
  return boost::math::ibeta_inv(double(i), double(n - i + 1), level,
                                policy<promote_double<false>>());
}

Slots<double> ranks(double level, int n) {
  Slots<double> table;
  fn_MedianRanks(false, table, level, n, 1e-12);
  return table;
}

TEST(MedianRanks, AreTheBetaQuantilesForEveryRankUpTo200) {
  for (const double level : {0.5, 0.95, 0.05})
    for (int n = 1; n <= 200; ++n) {
      const Slots<double> table = ranks(level, n);
      for (int i = 1; i <= n; ++i)
        ASSERT_NEAR(table(i), beta_quantile(i, n, level), 1e-10)
            << i << " of " << n << " " << level;
    }
}

// From n = 1075 on (1 - x)^n underflows in the middle of the table.
TEST(MedianRanks, AreTheBetaQuantilesUpTo5000) {
  test::RandomSample random(2);
  for (const double level : {0.5, 0.95})
    for (const int n : {999, 1030, 1074, 1076, 1200, 2500, 4999, 5000}) {
      const Slots<double> table = ranks(level, n);
      for (int sample = 0; sample < 60; ++sample) {
        const int i = sample == 0 ? 1 : sample == 1 ? n : random.whole(1, n);
        ASSERT_NEAR(table(i), beta_quantile(i, n, level), 1e-10)
            << i << " of " << n << " " << level;
      }
      for (int i = 1; i < n; ++i) ASSERT_LT(table(i), table(i + 1)) << i << " of " << n;
    }
}

TEST(MedianRanks, BenardStandsInOnlyAtTheMedian) {
  const auto benard = [](int i, int n) { return (i - 0.3) / (n + 0.4); };
  EXPECT_DOUBLE_EQ(ranks(0.5, 5001)(17), benard(17, 5001));
  EXPECT_NEAR(ranks(0.9, 5001)(17), beta_quantile(17, 5001, 0.9), 1e-10);
  Slots<double> table;
  fn_MedianRanks(true, table, 0.5, 7, 1e-12);
  EXPECT_DOUBLE_EQ(table(3), benard(3, 7));
  fn_MedianRanks(true, table, 0.6, 7, 1e-12);
  EXPECT_NEAR(table(3), beta_quantile(3, 7, 0.6), 1e-10);
}

TEST(MedianRanks, RefuseWhatHasNoRanks) {
  Slots<double> table(3, 7.0);
  fn_MedianRanks(false, table, 0.5, 0, 1e-12);
  EXPECT_EQ(table(1), 7.0);
  for (const double level : {0.0, 1.0, -1.0, std::nan("")})
    EXPECT_THROW(fn_MedianRanks(false, table, level, 3, 1e-12), RunTimeError);
}

TEST(RankProbability, IsTheIncompleteBetaFunction) {
  test::RandomSample random(3);
  for (int sample = 0; sample < 20000; ++sample) {
    const int n = static_cast<int>(random.log_uniform(3, 1e6));
    const int i = random.whole(2, n - 1);
    const double spread = std::sqrt(double(i) * (n - i + 1) / n) / n;
    const double near = double(i) / n + random.uniform(-6, 6) * spread;
    const double x = sample % 4 == 0 ? random.uniform(0, 1) : std::clamp(near, 1e-12, 1 - 1e-12);
    ASSERT_NEAR(RankProbability(i, n)(x), boost::math::ibeta(double(i), double(n - i + 1), x),
                2e-13)
        << i << " of " << n << " at " << x;
  }
  EXPECT_EQ(RankProbability(2, 5)(0), 0);
  EXPECT_EQ(RankProbability(2, 5)(1), 1);
}

}  // namespace
}  // namespace tavlo
