#include "solver/plot_pieces.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "solver/points_world.h"

namespace tavlo {
namespace {

/// Rows 1 to n of a plot.
struct Plot {
  explicit Plot(std::vector<PlotPoint> points) : x(1), y(1) {
    for (const PlotPoint& point : points) {
      x.push_back(point.x);
      y.push_back(point.y);
    }
  }
  int rows() const { return static_cast<int>(x.size()) - 1; }
  std::vector<double> x, y;
};

/// Points of a line that bends at the given rows, 0.1 apart in x.
Plot bent_line(int rows, int first, int second, double early, double middle, double late) {
  std::vector<PlotPoint> points = {{5, -4}};
  for (int i = 2; i <= rows; ++i) {
    const double slope = i <= first ? early : i <= second ? middle : late;
    points.push_back({points.back().x + 0.1, points.back().y + 0.1 * slope});
  }
  return Plot(points);
}

TEST(PlotPieces, BreaksAndSlopesOfABentLineAreFound) {
  for (const int first : {5, 10, 20})
    for (const int second : {25, 33}) {
      const Plot plot = bent_line(40, first, second, 2.5, 0.7, 3);
      const auto pairs = likely_breaks(plot.x.data(), plot.y.data(), plot.rows());
      ASSERT_EQ(pairs.size(), 6u);
      EXPECT_EQ(pairs[0].first, first);
      EXPECT_EQ(pairs[0].second, second);
      const PlotPieces pieces = pieces_of(plot.x.data(), plot.y.data(), plot.rows(), pairs[0]);
      EXPECT_NEAR(pieces.early_slope, 2.5, 1e-9);
      EXPECT_NEAR(pieces.middle_slope, 0.7, 1e-9);
      EXPECT_NEAR(pieces.late_slope, 3, 1e-9);
    }
}

TEST(PlotPieces, BreaksLeaveEachPieceItsPoints) {
  std::mt19937_64 random(4);
  std::uniform_real_distribution<double> step(0.001, 1);
  for (int round = 0; round < 3000; ++round) {
    const int rows = 7 + round % 60;
    std::vector<PlotPoint> points = {{1, -4}};
    while (static_cast<int>(points.size()) < rows)
      points.push_back({points.back().x + step(random), points.back().y + step(random)});
    const Plot plot(points);
    for (const PlotBreaks at : likely_breaks(plot.x.data(), plot.y.data(), rows)) {
      EXPECT_GE(at.first, 3);
      EXPECT_LE(at.first + 2, at.second);
      EXPECT_LE(at.second + 2, rows);
    }
  }
}

TEST(PlotPieces, NeighboursOfABreakHaveOtherTimes) {
  Plot plot = bent_line(20, 8, 14, 2, 0.5, 3);
  for (int i = 6; i <= 10; ++i) plot.x[static_cast<std::size_t>(i)] = plot.x[8];
  const PlotPieces pieces = pieces_of(plot.x.data(), plot.y.data(), 20, {8, 14});
  EXPECT_EQ(pieces.anchor[2].x, plot.x[5]);
  EXPECT_EQ(pieces.anchor[3].x, plot.x[11]);
  EXPECT_EQ(pieces.anchor[4].x, plot.x[11]);
  EXPECT_EQ(pieces.anchor[5].x, plot.x[13]);
}

TEST(PlotPieces, AFallingOrUprightChordHasNone) {
  EXPECT_TRUE(likely_breaks(std::vector<double>(9, 3).data(),
                            std::vector<double>{0, 1, 2, 3, 4, 5, 6, 7, 8}.data(), 8)
                  .empty());
  EXPECT_TRUE(likely_breaks(std::vector<double>{0, 8, 7, 6, 5, 4, 3, 2, 1}.data(),
                            std::vector<double>{0, 1, 2, 3, 4, 5, 6, 7, 8}.data(), 8)
                  .empty());
}

double ordinate(const test::PreciseMixture& m, double x) {
  return std::log(-std::log(m.reliability(std::exp(x))));
}

// On a plot that is exactly a mixture's, its parameters are what relaxation leaves
// alone; a wrong hazard of any population would move them.
TEST(PlotPieces, TheTruthIsAFixedPointOfRelaxation) {
  const std::vector<std::pair<int, test::PreciseMixture>> all = {
      {4, {4, 1000, 0.7, 3000}},
      {5, {3, 1000, 0, 0, 1, 50, 0.2}},
      {7, {5, 1000, 1, 3000, 0.8, 20, 0.1}},
  };
  for (const auto& [K, m] : all) {
    std::vector<PlotPoint> points;
    for (int i = 0; i < 30; ++i) points.push_back({1 + 0.2 * i, ordinate(m, 1 + 0.2 * i)});
    const Plot plot(points);
    const PlotPieces pieces = pieces_of(plot.x.data(), plot.y.data(), 30, {8, 24});
    MixtureStart truth;
    truth.A = {m.beta_a, std::log(m.eta_a), true};
    if (m.eta_b > 0) truth.B = {m.beta_b, std::log(m.eta_b), true};
    if (m.eta_c > 0) truth.C = {m.beta_c, std::log(m.eta_c), true};
    truth.p = m.p;
    const ParameterVector before = truth.to_x();
    const ParameterVector after = relaxed(truth, pieces, K).to_x();
    for (std::size_t slot = 1; slot <= 7; ++slot)
      EXPECT_NEAR(after[slot], before[slot], 1e-6 * before[slot]) << "K " << K;
  }
}

}  // namespace
}  // namespace tavlo
