#include "analyses/wichmann_hill.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tavlo {
namespace {

struct Counted : Entropy {
  std::uint32_t next() override { return value; }
  std::uint32_t value = 0;
};

// In integers of any length, without the decomposition.
TEST(WichmannHill, GivesTheNumbersOfExactArithmetic) {
  Counted chance;
  WichmannHill random({1, 2, 3, 4});
  std::array<std::int64_t, 4> s = {1, 2, 3, 4};
  constexpr std::array<std::int64_t, 4> factors = {11600, 47003, 23000, 33000};
  for (int i = 0; i < 20000; ++i) {
    long double sum = 0;
    for (std::size_t k = 0; k < 4; ++k) {
      s[k] = s[k] * factors[k] % WichmannHill::moduli[k];
      sum += static_cast<long double>(s[k]) / WichmannHill::moduli[k];
    }
    const double u = random.next(chance);
    ASSERT_NEAR(u, static_cast<double>(sum - std::floor(sum)), 4e-15);
    for (std::size_t k = 0; k < 4; ++k) ASSERT_EQ(random.states()[k], s[k]);
  }
  WichmannHill again({1, 2, 3, 4});
  for (const double u : {0.00014277456536368, 0.887639297900619, 0.0735842271882553})
    EXPECT_NEAR(again.next(chance), u, 1e-14);
}

TEST(WichmannHill, TakesItsSeedsAsStated) {
  Counted chance;
  const auto seeded = [&](WichmannHill::Seeds seeds) {
    WichmannHill random;
    random.seed(seeds, chance);
    return random.states();
  };
  using States = WichmannHill::States;
  EXPECT_EQ(seeded({2147483600, -1, -1, -1}), (States{21, 1, 1, 1}));
  EXPECT_EQ(seeded({100, 0, -1, 0}), (States{100, 2147483443, 2147483323, 2147483023}));
  EXPECT_EQ(seeded({5, 6, 2147483423, 8.5}), (States{5, 6, 0, 8}));
  EXPECT_EQ(seeded({-1, NAN, 1e300, 0.4}), (States{1, 1, 1, 1})) << "by chance";
  chance.value = 0xFFFFFFFF;
  EXPECT_EQ(seeded({-1, -1, -1, -1}), (States{2147483577, 2147483541, 2147483421, 2147483577}));
  WichmannHill random({7, 7, 7, 7});
  for (const double kept : {0.0, 2147483646.0, -3e9}) random.enter(0, kept);
  random.enter(1, 2147483543);
  random.enter(2, -12);
  EXPECT_EQ(random.states(), (States{7, 0, 12, 7}));
  WichmannHill at_rest;
  EXPECT_GT(at_rest.next(chance), 0);
  WichmannHill nearly({1, 0, 0, 0});
  nearly.next(chance);
  EXPECT_EQ(nearly.states()[0], 11600) << "one stream is enough";
}

}  // namespace
}  // namespace tavlo
