#include "actions/polynomial_fit.h"

#include <gtest/gtest.h>

#include "actions/random_sample.h"

namespace tavlo {
namespace {

using test::TestWorld;

struct PaperPoint {
  double x;
  double y;
  double fails = 1;
  int mode = 0;
};

DataSet on_paper(const std::vector<PaperPoint>& points, std::size_t index = 1) {
  std::vector<test::Point> rows;
  for (const PaperPoint& point : points) rows.push_back({1, point.fails, 0, point.mode});
  DataSet data = test::make_data(rows);
  for (int i = 1; i <= data.Count; ++i) {
    data.Points(i).XT[index] = points[static_cast<std::size_t>(i) - 1].x;
    data.Points(i).YT[index] = points[static_cast<std::size_t>(i) - 1].y;
  }
  return data;
}

struct Fitted {
  bool solved = false;
  Slots<double> c;
  double r_squared = 0;
};

Fitted fitted(TestWorld& world, DataSet& data, const PolynomialRequest& request, double asked = 0) {
  Fitted result;
  result.r_squared = asked;
  result.solved = PolyFitD(world.session.errors, data, request, result.c, result.r_squared);
  return result;
}

TEST(PolyFitD, PassesThroughExactPolynomials) {
  TestWorld world;
  test::RandomSample random(6);
  for (int degree = 1; degree <= 4; ++degree) {
    std::vector<double> c;
    for (int j = 0; j <= degree; ++j) c.push_back(random.uniform(-2, 2));
    std::vector<PaperPoint> points;
    for (int i = 0; i < 12; ++i) {
      PaperPoint point{.x = random.uniform(-1.5, 1.5), .y = 0, .fails = random.uniform(0.2, 4)};
      for (int j = degree; j >= 0; --j) point.y = point.y * point.x + c[std::size_t(j)];
      points.push_back(point);
    }
    DataSet data = on_paper(points);
    const Fitted fit = fitted(world, data, {.order = degree});
    for (int j = 0; j <= degree; ++j) EXPECT_NEAR(fit.c(j), c[std::size_t(j)], 1e-10) << degree;
    EXPECT_NEAR(fit.r_squared, 1, 1e-12);
    for (PaperPoint& point : points) std::swap(point.x, point.y);
    DataSet turned = on_paper(points);
    EXPECT_NEAR(fitted(world, turned, {.order = -degree}).c(1), c[1], 1e-10);
  }
}

TEST(PolyFitD, WeighsRowsByTheirFailures) {
  TestWorld world;
  DataSet weighted = on_paper({{1, 2, 3}, {2, 5}, {3, 4, 0.5}, {9, 9, 0}});
  DataSet repeated = on_paper({{1, 2}, {1, 2}, {1, 2}, {2, 5}, {3, 4, 0.25}, {3, 4, 0.25}});
  const Fitted a = fitted(world, weighted, {});
  const Fitted b = fitted(world, repeated, {});
  EXPECT_NEAR(a.c(0), b.c(0), 1e-13);
  EXPECT_NEAR(a.c(1), b.c(1), 1e-13);
  EXPECT_NEAR(a.r_squared, b.r_squared, 1e-13);
  EXPECT_DOUBLE_EQ(weighted.Points(0).XT[1], 6.5 / 4.5);
  EXPECT_DOUBLE_EQ(weighted.Points(0).YT[1], 13 / 4.5);
}

TEST(PolyFitD, TakesTheRowsItIsAskedFor) {
  TestWorld world;
  DataSet data = on_paper({{0, 1}, {1, 3}, {2, 9, 0}, {3, 0}});
  EXPECT_DOUBLE_EQ(fitted(world, data, {.row_limit = 2}).c(1), 2);
  EXPECT_DOUBLE_EQ(fitted(world, data, {.row_limit = 3, .all_rows = true}).c(1), 4);
  EXPECT_DOUBLE_EQ(fitted(world, data, {.row_limit = 9}).c(1), fitted(world, data, {}).c(1));
  EXPECT_EQ(fitted(world, data, {}, -1).r_squared, 0);
  DataSet modes = on_paper({{0, 1, 1, 2}, {1, 7, 1, 1}, {2, 5, 1, 2}}, 2);
  modes.Points(0).Mode = 2;
  EXPECT_DOUBLE_EQ(fitted(world, modes, {.index = 2}).c(1), 2);
  EXPECT_DOUBLE_EQ(modes.Points(0).YT[2], 3);
}

TEST(PolyFitD, EveryFaultHasItsStageAndWords) {
  struct Case {
    std::vector<PaperPoint> points;
    PolynomialRequest request;
    double stage;
    const char* title;
    const char* text;
  };
  const double nan = std::nan("");
  const char* const all_equal =
      "Matrix solution error\nAll times, or all ranks, are equal: no line goes through them.\n";
  const std::vector<Case> cases = {
      {{{1, 1}}, {.order = 0}, 1.0, "Error: 5 ", "Order must be > 0\nOrder: 0\n"},
      {{{1, 1}, {2, nan}},
       {},
       2.0,
       "Error: 5 ",
       "Error building vector\nArray size: 2 Points: 2\n"},
      {{{1e308, 1}, {2, 1}},
       {},
       2.0,
       "Error: 6 ",
       "Error building vector\nArray size: 2 Points: 2\n"},
      {{{1, 1, 0}, {2, 2, 0}},
       {},
       3.0,
       "Error: 5 ",
       "Insufficient data points\nOrder: 1 Points: 0\n"},
      {{{1, 1}, {2, 2, .5}},
       {.order = -2},
       3.0,
       "Error: 5 ",
       "Insufficient data points\nOrder: 2 Points: 1.5\n"},
      {{{1.1, 1}, {1.1, 2}, {1.1, 7}}, {}, 4.05, "Singular Matrix", all_equal},
      {{{1, 2.3}, {2, 2.3}, {3, 2.3}}, {}, 4.05, "Singular Matrix", all_equal},
      {{{0, 0}}, {.order = -1}, 4.05, "Singular Matrix", all_equal},
  };
  for (const Case& c : cases) {
    TestWorld world;
    world.prompts.expect_box(
        c.title, std::string("Polynomial Fit Subroutine: \n") + c.text + "PolyFitD routine:\n");
    DataSet data = on_paper(c.points);
    const Fitted fit = fitted(world, data, c.request);
    EXPECT_FALSE(fit.solved);
    EXPECT_DOUBLE_EQ(fit.r_squared, -c.stage) << c.text;
  }
}

// Three points on two distinct x leave a parabola open; the elimination says so.
TEST(PolyFitD, TheFaultOfTheMatrixComesInTwoBoxes) {
  TestWorld world;
  world.prompts.expect_box("Singular Matrix", "MatSolve routine:");
  world.prompts.expect_box("Singular Matrix", "Matrix solution error\nPolyFitD routine:\n");
  DataSet data = on_paper({{0, 1}, {1, 2}, {0, 3}, {1, 5}});
  EXPECT_DOUBLE_EQ(fitted(world, data, {.order = 2}).r_squared, -4.05);
}

TEST(PolyFitD, MeansComeWithoutASolutionWhereTheySuffice) {
  TestWorld world;
  DataSet data = on_paper({{3, 4}});
  EXPECT_FALSE(fitted(world, data, {.means_suffice = true}).solved);
  EXPECT_EQ(data.Points(0).XT[1], 3);
  EXPECT_EQ(data.Points(0).YT[1], 4);
  EXPECT_EQ(world.session.errors.gErrCode, 0);
}

}  // namespace
}  // namespace tavlo
