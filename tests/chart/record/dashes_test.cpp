#include "chart/record/dashes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace tavlo {
namespace {

using drawing::Place;

double length_of(const std::vector<Place>& line) {
  double length = 0;
  for (std::size_t i = 1; i < line.size(); ++i)
    length += std::hypot(line[i].x - line[i - 1].x, line[i].y - line[i - 1].y);
  return length;
}

// Over bends too: the share of ink is that of the pattern, no gap is lost, and dashes
// follow the line.
TEST(Dashes, FollowAnyLine) {
  std::mt19937 random(7);
  const auto step = [&] { return static_cast<std::int32_t>(random() % 400) - 100; };
  for (int run = 0; run < 200; ++run) {
    std::vector<Place> line = {{1000, 1000}};
    for (int i = 0; i < 30; ++i) line.push_back({line.back().x + step(), line.back().y + step()});
    const int style = 1 + run % 4;
    const double width = 5 + run % 40;
    EXPECT_EQ(dashes_of(line, 0, width), (std::vector<std::vector<Place>>{line}));
    double ink = 0;
    for (const auto& dash : dashes_of(line, style, width)) {
      EXPECT_LE(length_of(dash), 5 * width + 3.0 * static_cast<double>(dash.size()));
      ink += length_of(dash);
    }
    const double shares[] = {5 / 8.0, 0.2 / 3.2, 5.2 / 11.2, 5.4 / 14.4};
    EXPECT_NEAR(ink / length_of(line), shares[style - 1], 0.05 + 15 * width / length_of(line));
  }
}

}  // namespace
}  // namespace tavlo
