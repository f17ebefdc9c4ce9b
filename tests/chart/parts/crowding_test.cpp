#include "chart/parts/crowding.h"

#include <gtest/gtest.h>

#include "chart/chart_world.h"
#include "life/models.h"

namespace tavlo {
namespace {

using namespace drawing;

TEST(Crowding, CountsWhatReachesIntoAnArea) {
  const Rectangle area{100, 100, 200, 200};
  struct Case {
    Record record;
    int count;
  };
  const Case cases[] = {
      {Ellipse{90, 90, 99, 99}, 0},
      {Ellipse{90, 90, 101, 101}, 1},
      {Rectangle{0, 0, 1000, 1000}, 1},
      {Polyline{{{0, 0}, {300, 300}}}, 1},
      {Polyline{{{0, 150}, {300, 150}, {300, 120}, {0, 120}}}, 2},
      {Polyline{{{0, 190}, {90, 300}}}, 0},
      {Polyline{{{90, 150}, {150, 90}}}, 1},
      {Polyline{{{50, 140}, {140, 50}}}, 0},
      {Polyline{{{150, 150}}}, 0},
      {Polygon{{{150, 150}, {150, 150}}}, 1},
      {Text{{150, 150}, "text"}, 0},
  };
  for (const Case& c : cases) {
    DrawingRecord drawing;
    drawing.records = {c.record};
    EXPECT_EQ(shapes_touching(drawing, area), c.count);
  }
}

TEST(Crowding, TheParameterBoxKeepsOffPointsAndLine) {
  const std::vector<std::vector<test::Point>> sets = {
      test::published_times(), {{100}, {200}, {300}}, {{10}, {900}}, {{100}, {100.5}, {101}}};
  for (const auto& points : sets) {
    test::ChartWorld here;
    here.show(test::ranked(points));
    here.show(test::fit_of(model_code::weibull2, {{1 / 300.0, 1, 1.5, 0, 1}}));
    const DrawingRecord drawing = here.draw();
    const auto boxes = test::all<Rectangle>(drawing);
    const Rectangle box = boxes.back();
    ASSERT_GT(box.left, 1250) << "inside the plot, not the plot itself";
    for (const Ellipse& point : test::all<Ellipse>(drawing)) {
      DrawingRecord alone;
      alone.records = {point};
      EXPECT_EQ(shapes_touching(alone, box), 0) << points.size() << " points";
    }
  }
}

}  // namespace
}  // namespace tavlo
