#include "solver/regular_maximum.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace tavlo {
namespace {

RegressBlock block_of(std::vector<double> failures, std::vector<double> suspensions = {}) {
  std::sort(failures.begin(), failures.end());
  RegressBlock block;
  block.N = static_cast<std::int32_t>(failures.size());
  block.S = static_cast<std::int32_t>(suspensions.size());
  block.T = Slots<double>(0);
  for (const double t : failures) block.T.push_back(t);
  for (const double t : suspensions) block.T.push_back(t);
  return block;
}

std::vector<double> sample(std::uint64_t seed, int n, double beta, double eta, double t0) {
  std::mt19937_64 random(seed);
  std::weibull_distribution<double> weibull(beta, eta);
  std::vector<double> times(static_cast<std::size_t>(n));
  for (double& t : times) t = t0 + weibull(random);
  return times;
}

double ln_likelihood(const RegressBlock& block, double beta, double eta, double t0) {
  double sum = 0;
  for (int i = 1; i <= block.N + block.S; ++i) {
    const double z = (block.T(i) - t0) / eta;
    sum -= std::pow(z, beta);
    if (i <= block.N) sum += std::log(beta / eta) + (beta - 1) * std::log(z);
  }
  return sum;
}

TEST(RegularMaximum, IsStationaryAndHighestAround) {
  for (std::uint64_t seed = 1; seed <= 20; ++seed) {
    const RegressBlock block = block_of(sample(seed, 60, 2.5, 100, 300),
                                        sample(seed + 100, seed % 2 ? 20 : 0, 3, 80, 320));
    const auto found = regular_maximum(block, block.N + block.S);
    ASSERT_TRUE(found) << seed;
    EXPECT_LT(found->t0, *std::min_element(block.T.begin() + 1, block.T.end()));
    EXPECT_NEAR(found->ln_likelihood, ln_likelihood(block, found->beta, found->eta, found->t0),
                1e-8);
    // No neighbour in any direction is higher.
    for (const double step : {1e-4, 1e-2})
      for (int direction = 0; direction < 27; ++direction) {
        const double b = found->beta * (1 + step * (direction % 3 - 1));
        const double e = found->eta * (1 + step * (direction / 3 % 3 - 1));
        const double t = found->t0 + step * 0.05 * found->eta * (direction / 9 - 1);
        EXPECT_LE(ln_likelihood(block, b, e, t), found->ln_likelihood + 1e-9);
      }
  }
}

TEST(RegularMaximum, FollowsShiftAndUnitOfTime) {
  const auto times = sample(3, 80, 2, 50, 10);
  auto moved = times;
  for (double& t : moved) t = 1000 + 8 * t;
  const auto plain = regular_maximum(block_of(times), 80);
  const auto other = regular_maximum(block_of(moved), 80);
  ASSERT_TRUE(plain && other);
  EXPECT_NEAR(other->beta, plain->beta, 1e-5);
  EXPECT_NEAR(other->t0, 1000 + 8 * plain->t0, 1e-4);
  EXPECT_NEAR(other->ln_likelihood, plain->ln_likelihood - 80 * std::log(8.0), 1e-6);
}

// With a slope of 1 or less the likelihood rises to the first time without limit.
TEST(RegularMaximum, ThereIsNoneWhereTheSlopeIsBelowOne) {
  for (std::uint64_t seed = 1; seed <= 20; ++seed)
    EXPECT_FALSE(regular_maximum(block_of(sample(seed, 200, 0.6, 100, 50)), 200)) << seed;
  EXPECT_FALSE(regular_maximum(block_of({5, 5, 5, 5}), 4));
  EXPECT_FALSE(regular_maximum(block_of({5}), 1));
  EXPECT_FALSE(regular_maximum(block_of({}), 0));
}

TEST(RegularMaximum, ManyRowsAreScannedOnFewAndSolvedOnAll) {
  const RegressBlock block = block_of(sample(9, 20000, 1.8, 100, 40));
  const auto found = regular_maximum(block, block.N);
  ASSERT_TRUE(found);
  EXPECT_NEAR(found->t0, 40, 0.5);
  EXPECT_NEAR(found->beta, 1.8, 0.05);
  const double higher = ln_likelihood(block, found->beta, found->eta, found->t0 + 1e-3);
  const double lower = ln_likelihood(block, found->beta, found->eta, found->t0 - 1e-3);
  EXPECT_LT(std::max(higher, lower), found->ln_likelihood);
}

}  // namespace
}  // namespace tavlo
