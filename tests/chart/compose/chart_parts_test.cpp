#include "chart/compose/chart_parts.h"

#include <gtest/gtest.h>

#include "chart/chart_world.h"

namespace tavlo {
namespace {

TEST(ChartParts, EachPlaceBelongsToWhatIsSeenThere) {
  test::ChartWorld here;
  here.show_published();
  const DrawingRecord drawing = here.draw();
  using Case = std::pair<drawing::Place, ChartPart>;
  for (const auto& [place, part] : {Case{{5000, 300}, ChartPart::titles},
                                    {{5000, 5250}, ChartPart::x_axis},
                                    {{5000, 5700}, ChartPart::titles},
                                    {{2000, 5900}, ChartPart::notes},
                                    {{8000, 5900}, ChartPart::notes},
                                    {{5000, 5900}, ChartPart::titles},
                                    {{2000, 5650}, ChartPart::titles},
                                    {{420, 3000}, ChartPart::titles},
                                    {{440, 3000}, ChartPart::y_axis},
                                    {{9500, 3000}, ChartPart::boxes},
                                    {{2000, 4800}, ChartPart::boxes},
                                    {{test::all<drawing::Ellipse>(drawing)[2].left,
                                      test::all<drawing::Ellipse>(drawing)[2].top},
                                     ChartPart::plot_sets}})
    EXPECT_EQ(chart_part_at(here.session, here.chart(), drawing, place, 150), part)
        << place.x << " " << place.y;
  for (const ItemArea& area : drawing.areas)
    EXPECT_EQ(chart_part_at(here.session, here.chart(), drawing,
                            {area.area.left + 9, area.area.top + 9}, 40),
              ChartPart::insets);
}

}  // namespace
}  // namespace tavlo
