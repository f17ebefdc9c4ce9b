#include "actions/tie_order.h"

#include <gtest/gtest.h>

#include <utility>

#include "actions/random_sample.h"

namespace tavlo {
namespace {

/// The rule as it is told: passes of exchanges until one makes none.
void bubble(std::vector<DataPoint>& rows) {
  for (bool exchanged = true; exchanged;) {
    exchanged = false;
    for (std::size_t i = 0; i + 1 < rows.size(); ++i) {
      const DataPoint& a = rows[i];
      const DataPoint& b = rows[i + 1];
      const bool all_above = a.Fails > 0 && a.Susps > 0 && b.Fails > 0 && b.Susps > 0;
      if (!(a.Susps >= 1 && a.X == b.X && b.Fails > 0 && !all_above)) continue;
      std::swap(rows[i], rows[i + 1]);
      exchanged = true;
    }
  }
}

std::vector<int> orders(const std::vector<DataPoint>& rows) {
  std::vector<int> found;
  for (const DataPoint& row : rows) found.push_back(row.Order);
  return found;
}

TEST(TieOrder, EqualsTheRepeatedPasses) {
  constexpr double some[] = {0, 0, 0.5, 1, 1, 2, -1};
  test::RandomSample random(1);
  for (int round = 0; round < 50000; ++round) {
    std::vector<DataPoint> rows(static_cast<std::size_t>(random.whole(1, round % 100 ? 12 : 80)));
    for (std::size_t i = 0; i < rows.size(); ++i) {
      rows[i].Fails = some[random.whole(0, 6)];
      rows[i].Susps = some[random.whole(0, 6)];
      rows[i].Order = static_cast<int>(i) + 1;
    }
    std::vector<DataPoint> expected = rows;
    bubble(expected);
    order_tied_rows(rows);
    ASSERT_EQ(orders(rows), orders(expected)) << "round " << round;
  }
}

}  // namespace
}  // namespace tavlo
