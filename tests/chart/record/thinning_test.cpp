#include "chart/record/thinning.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace tavlo {
namespace {

using drawing::Place;
using Line = std::vector<Place>;

/// The farthest of the line's points from the thinned line, measured as the
/// thinning does: across the longer extent of each chord.
double farthest(const Line& line, const Line& thinned) {
  double worst = 0;
  std::size_t at = 0;
  for (std::size_t k = 1; k < thinned.size(); ++k) {
    const Place a = thinned[k - 1], b = thinned[k];
    const double dx = b.x - a.x, dy = b.y - a.y;
    for (; at < line.size() && line[at] != b; ++at) {
      const double x = line[at].x - a.x, y = line[at].y - a.y;
      if (dx == 0 && dy == 0) continue;
      worst = std::max(
          worst, std::fabs(std::fabs(dy) > std::fabs(dx) ? x - y * dx / dy : y - x * dy / dx));
    }
  }
  return worst;
}

TEST(Thinning, CurvesStayWithinTheTolerance) {
  std::mt19937_64 generator(23);
  std::uniform_real_distribution<double> bend(-3, 3), phase(0, 6);
  for (int round = 0; round < 500; ++round) {
    const double a = bend(generator), b = phase(generator), c = bend(generator);
    Line line;
    for (int i = 0; i <= 1000; ++i)
      line.push_back({1250 + 8 * i, static_cast<std::int32_t>(
                                        2900 + 700 * a * std::sin(b + i / 200.0) + 1.2 * c * i)});
    const Line thinned = thin_line(line, 3);
    ASSERT_EQ(thinned.front(), line.front());
    ASSERT_EQ(thinned.back(), line.back());
    ASSERT_LE(farthest(line, thinned), 3.5);
    ASSERT_LT(thinned.size(), 130u);
  }
}

}  // namespace
}  // namespace tavlo
