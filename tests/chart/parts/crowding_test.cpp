#include "chart/parts/crowding.h"

#include <gtest/gtest.h>

#include "chart/chart_world.h"

namespace tavlo {
namespace {

using namespace drawing;

/// The chart's parts in the order of drawing, up to its parameter box and from there.
std::pair<DrawingRecord, DrawingRecord> before_and_after(const DrawingRecord& drawing,
                                                         const Rectangle& box) {
  const auto is_box = [&](const Record& record) {
    const auto* found = std::get_if<Rectangle>(&record);
    return found && *found == box;
  };
  const auto at = std::find_if(drawing.records.begin(), drawing.records.end(), is_box);
  std::pair<DrawingRecord, DrawingRecord> parts;
  parts.first.records.assign(drawing.records.begin(), at);
  parts.second.records.assign(at, drawing.records.end());
  return parts;
}

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
    const auto [before, after] = before_and_after(drawing, box);
    EXPECT_EQ(test::all<Ellipse>(after).size(), 0u);
    for (const Polyline& line : test::all<Polyline>(after))
      EXPECT_EQ(line.places.front().y, line.places.back().y) << "a rule of the table";
    DrawingRecord content;
    for (const Ellipse& point : test::all<Ellipse>(before)) content.records.push_back(point);
    free += Obstacles({&content}).hidden_by(box) == 0;
  }
  EXPECT_EQ(free, charts);
}

}  // namespace
}  // namespace tavlo
