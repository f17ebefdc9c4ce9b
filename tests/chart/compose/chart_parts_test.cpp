#include "chart/compose/chart_parts.h"

#include <gtest/gtest.h>

#include "chart/compose/make_chart.h"
#include "support/test_world.h"

namespace tavlo {

namespace {

TEST(ChartParts, PlacesOfTheFactoryChart) {
  test::TestWorld world;
  Session& session = world.session;
  reset_project(session);
  Chart& chart = session.gChart(1);
  chart.Boxes(chart_item::legend).Mode = 2;
  DrawingRecord drawing = fl_Make_WMF(session, 1);
  drawing.areas.push_back({chart_item::parameter_box, {1300, 700, 2500, 1500}});
  const struct {
    drawing::Place place;
    ChartPart part;
  } expected[] = {{{5250, 300}, ChartPart::titles},  {{250, 2900}, ChartPart::titles},
                  {{5250, 5550}, ChartPart::titles}, {{5250, 5250}, ChartPart::x_axis},
                  {{1100, 2900}, ChartPart::y_axis}, {{9600, 5900}, ChartPart::notes},
                  {{400, 5900}, ChartPart::notes},   {{9600, 2900}, ChartPart::boxes},
                  {{5250, 2900}, ChartPart::boxes},  {{2000, 1000}, ChartPart::insets},
                  {{-50, -50}, ChartPart::titles}};
  for (const auto& [place, part] : expected)
    EXPECT_EQ(chart_part_at(session, chart, drawing, place, 50), part)
        << place.x << ", " << place.y;
}

}  // namespace

}  // namespace tavlo
