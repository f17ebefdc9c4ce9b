#include "chart/parts/movable_boxes.h"

#include <gtest/gtest.h>

#include "chart/chart_world.h"
#include "chart/parts/legend.h"

namespace tavlo {
namespace {

TEST(MovableBoxes, StandWhereTheyAreDraggedUntilTheyAreFreed) {
  test::ChartWorld here;
  here.show_published();
  here.chart().Boxes(chart_item::legend).Mode = legend_mode::always;
  const DrawingRecord first = here.draw();
  const Chart unmoved = here.chart();
  ASSERT_EQ(first.areas.size(), 2u);
  for (const auto& [item, area] : first.areas) {
    EXPECT_EQ(movable_box_at(first, {area.left + 5, area.top + 5}), item);
    EXPECT_EQ(movable_box_at(first, {area.left - 5, area.top + 5}), 0);
    move_box(here.chart(), first, item, -120, -90);
    EXPECT_TRUE(has_own_place(here.chart(), item));
    for (const auto& [other, moved] : here.draw().areas) {
      if (other != item) continue;
      EXPECT_EQ(moved, (drawing::Rectangle{area.left - 120, area.top - 90, area.right - 120,
                                           area.bottom - 90}));
    }
    free_box(here.chart(), item);
    EXPECT_EQ(here.chart(), unmoved);
  }
  const drawing::Rectangle legend = first.areas[1].area;
  move_box(here.chart(), first, chart_item::legend, -legend.left, -legend.top);
  EXPECT_TRUE(has_own_place(here.chart(), chart_item::legend)) << "even in the upper left corner";
}

}  // namespace
}  // namespace tavlo
