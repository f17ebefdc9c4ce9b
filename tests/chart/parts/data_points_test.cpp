#include "chart/parts/data_points.h"

#include <gtest/gtest.h>

#include "chart/chart_world.h"

namespace tavlo {
namespace {

using drawing::Place;

std::vector<Place> places(test::ChartWorld& here) {
  DrawingRecord drawing;
  Recorder recorder(drawing);
  Canvas canvas{recorder, here.chart(), here.measure, here.world.prompts, here.session.errors};
  std::vector<Place> found;
  for (const PlacedPoint& point :
       visible_points(canvas, here.chart().Markers(1), here.session.project.data(1)))
    found.push_back(point.place);
  return found;
}

// A point on the frame is seen; further out than half a symbol it is not.
TEST(DataPoints, OnTheFrameAreSeen) {
  test::ChartWorld here;
  DataSet data = test::make_data({{0.1}, {0.1}, {10}, {10}, {0.09}, {1}});
  const float fractions[] = {0.01f, 0.99f, 0.01f, 0.99f, 0.5f, 0.999f};
  for (std::size_t i = 0; i < 6; ++i) data.rows.edit(i).rank = fractions[i];
  data.own_ranks = true;
  UnheardReports reports;
  Make_Ranks(reports.errors, true, data);
  here.show(data);
  for (ChartAxis& axis : here.chart().Axes) axis.AutoMin = axis.AutoMax = false;
  here.chart().Axes(0).Min = 0.1;  // as a 32-bit time a little more
  here.chart().Axes(0).Max = 10;
  EXPECT_EQ(places(here),
            (std::vector<Place>{{1250, 5150}, {1250, 650}, {9250, 5150}, {9250, 650}}));
}

}  // namespace
}  // namespace tavlo
