#include "chart/parts/crowding.h"

#include <gtest/gtest.h>

#include "chart/chart_world.h"

namespace tavlo {
namespace {

using namespace drawing;

// Few points and many, three populations, each with a line of its own, at many places: the
// box is drawn above them all, and hides no point where the plot has room for it.
TEST(Crowding, NoLineRunsThroughTheParameters) {
  int free = 0;
  constexpr int charts = 40;
  for (int i = 0; i < charts; ++i) {
    test::ChartWorld here;
    const double late = 200.0 + 40 * i;
    std::vector<test::Point> points;
    for (int k = 1; k <= 2 + i; ++k)
      points.push_back({k % 3 == 0 ? late + 9 * k : 2.0 + i + 3 * k});
    here.show(test::ranked(points));
    here.show(test::fit_of(
        model_code::weibull7,
        {{1 / 40.0, 0.5, 1.5, 0, 1}, {1 / late, 0.3, 4, 0, 1}, {1 / (2 * late), 0.2, 2, 0, 1}}));
    here.chart().SubPopulations = true;
    const DrawingRecord drawing = here.draw();
    ASSERT_EQ(drawing.areas.size(), 1u);
    const Rectangle box = drawing.areas[0].area;
    const Rectangle frame = test::all<Rectangle>(drawing).back();  // drawn inside its pen
    ASSERT_TRUE(std::abs(frame.left - box.left) < 50 && std::abs(frame.bottom - box.bottom) < 50);
    DrawingRecord points_seen;
    bool is_above = false;
    for (const Record& record : drawing.records) {
      const auto* line = std::get_if<Polyline>(&record);
      const bool is_point = std::holds_alternative<Ellipse>(record);
      is_above = is_above || record == Record(frame);
      EXPECT_FALSE(is_above && is_point);
      EXPECT_TRUE(!is_above || !line || line->places.front().y == line->places.back().y)
          << "no rule of the table";
      if (is_point) points_seen.records.push_back(record);
    }
    free += Obstacles({&points_seen}).hidden_by(box) == 0;
  }
  EXPECT_EQ(free, charts);
}

}  // namespace
}  // namespace tavlo
