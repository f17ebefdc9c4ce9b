#include "chart/parts/crowding.h"

#include <gtest/gtest.h>

#include "chart/chart_world.h"

namespace tavlo {
namespace {

using namespace drawing;

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
