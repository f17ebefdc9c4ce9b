#include "fit/ranks/tie_order.h"

#include <gtest/gtest.h>

#include <numeric>
#include <utility>

#include "fit/random_rows.h"

namespace tavlo {
namespace {

/// The rule as it is told: passes of exchanges until one makes none.
void bubble(const test::Rows& rows, std::vector<std::int32_t>& entries) {
  for (bool exchanged = true; exchanged;) {
    exchanged = false;
    for (std::size_t i = 0; i + 1 < entries.size(); ++i) {
      const SampleRow& a = rows[static_cast<std::size_t>(entries[i]) - 1];
      const SampleRow& b = rows[static_cast<std::size_t>(entries[i + 1]) - 1];
      const bool all_above =
          a.failures > 0 && a.suspensions > 0 && b.failures > 0 && b.suspensions > 0;
      if (!(a.suspensions >= 1 && b.failures > 0 && !all_above)) continue;
      std::swap(entries[i], entries[i + 1]);
      exchanged = true;
    }
  }
}

TEST(TieOrder, EqualsTheRepeatedPasses) {
  constexpr double some[] = {0, 0, 0.5, 1, 1, 2};
  test::RandomRows random(1);
  for (int round = 0; round < 20000; ++round) {
    test::Rows rows(static_cast<std::size_t>(random.whole(1, round % 100 ? 12 : 80)));
    for (SampleRow& row : rows) row = {1, some[random.whole(0, 5)], some[random.whole(0, 5)], 0};
    std::vector<std::int32_t> found(rows.size());
    std::iota(found.begin(), found.end(), 1);
    std::vector<std::int32_t> expected = found;
    bubble(rows, expected);
    order_tied_rows(rows, found);
    ASSERT_EQ(found, expected) << "round " << round;
  }
}

}  // namespace
}  // namespace tavlo
