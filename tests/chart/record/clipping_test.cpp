#include "chart/record/clipping.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace tavlo {
namespace {

using drawing::Place;
using Places = std::vector<Place>;

constexpr ClipFrame frame{-30000, -30000, 30000, 30000};

/// Distance of a place from the line between two others.
double distance(Place p, Place a, Place b) {
  const double dx = static_cast<double>(b.x) - a.x, dy = static_cast<double>(b.y) - a.y;
  const double px = static_cast<double>(p.x) - a.x, py = static_cast<double>(p.y) - a.y;
  const double length2 = dx * dx + dy * dy;
  const double t = length2 == 0 ? 0 : std::clamp((px * dx + py * dy) / length2, 0.0, 1.0);
  return std::hypot(px - t * dx, py - t * dy);
}

double distance(Place p, const std::vector<Places>& runs) {
  double nearest = std::numeric_limits<double>::infinity();
  for (const Places& run : runs)
    for (std::size_t i = 1; i < run.size(); ++i)
      nearest = std::min(nearest, distance(p, run[i - 1], run[i]));
  return nearest;
}

/// Places near the frame, far from it and at the ends of 32 bits.
Place random_place(std::mt19937_64& random) {
  const auto coordinate = [&random] {
    constexpr double reaches[] = {2e4, 3.2e4, 1e5, 2147483647.0};
    std::uniform_real_distribution<double> any(-1, 1);
    return static_cast<std::int32_t>(any(random) * reaches[random() % 4]);
  };
  return {coordinate(), coordinate()};
}

// What is left lies in the frame and on the line, and nothing inside is missing.
TEST(Clipping, ALineKeepsExactlyItsPartsInside) {
  std::mt19937_64 random(7);
  for (int round = 0; round < 3000; ++round) {
    Places line;
    for (unsigned i = 0; i < 2 + random() % 4; ++i) line.push_back(random_place(random));
    const auto runs = clipped_polyline(line, frame);
    for (const Places& run : runs) {
      ASSERT_GE(run.size(), 2U);
      ASSERT_TRUE(frame.holds(run));
      for (const Place& place : run) ASSERT_LE(distance(place, {line}), 0.8);
    }
    for (std::size_t i = 1; i < line.size(); ++i)
      for (double t = 0; t <= 1; t += 1.0 / 256) {
        const auto along = [t](std::int32_t a, std::int32_t b) {
          return static_cast<std::int32_t>(std::lround(a + t * (static_cast<double>(b) - a)));
        };
        const Place place{along(line[i - 1].x, line[i].x), along(line[i - 1].y, line[i].y)};
        if (frame.holds(place)) {
          ASSERT_LE(distance(place, runs), 1.6) << round;
        }
      }
  }
}

bool contains(const Places& polygon, double x, double y) {
  bool inside = false;
  for (std::size_t i = 0, k = polygon.size() - 1; i < polygon.size(); k = i++) {
    const double yi = polygon[i].y, yk = polygon[k].y, xi = polygon[i].x, xk = polygon[k].x;
    if ((yi > y) != (yk > y) && x < xi + (y - yi) / (yk - yi) * (xk - xi)) inside = !inside;
  }
  return inside;
}

TEST(Clipping, APolygonCoversTheSamePlacesOfTheFrame) {
  std::mt19937_64 random(11);
  std::uniform_real_distribution<double> within(-29999, 29999);
  int covered = 0;
  for (int round = 0; round < 2000; ++round) {
    Places polygon;
    for (unsigned i = 0; i < 3 + random() % 4; ++i) polygon.push_back(random_place(random));
    const Places kept = clipped_polygon(polygon, frame);
    ASSERT_TRUE(frame.holds(kept));
    Places closed = polygon;
    closed.push_back(polygon.front());
    for (int i = 0; i < 20; ++i) {
      const double x = within(random), y = within(random);
      const Place place{static_cast<std::int32_t>(x), static_cast<std::int32_t>(y)};
      if (distance(place, {closed}) < 3) continue;
      ASSERT_EQ(contains(kept, x, y), contains(polygon, x, y)) << round;
      covered += contains(polygon, x, y);
    }
  }
  EXPECT_GT(covered, 5000);
}

}  // namespace
}  // namespace tavlo
