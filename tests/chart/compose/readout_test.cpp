#include "chart/compose/readout.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "chart/chart_world.h"
#include "project/fit_records.h"

namespace tavlo {
namespace {

using drawing::Place;

class ReadoutTest : public ::testing::Test {
 protected:
  ReadoutTest() {
    here.show_published();
    here.draw();
  }
  Place place_of(double x, double y) {
    const ChartItem& plot = here.chart().Boxes(chart_item::plot_box);
    return {AxisMap::x(here.session.errors, plot, here.chart().Axes(0))(x),
            AxisMap::y(here.session.errors, plot, here.chart().Axes(1))(y)};
  }
  test::ChartWorld here;
};

// Reading is the inverse of drawing: a reading is drawn at the place it was read at.
TEST_F(ReadoutTest, AReadingIsDrawnWhereItWasRead) {
  std::mt19937_64 generator(9);
  std::uniform_int_distribution<std::int32_t> x(1250, 9250), y(650, 5150);
  for (const int code : {98, 857, 922, 1057, 1137, 9}) {
    here.chart().Axes(0).ScaleType = static_cast<std::int16_t>(code & 7);
    here.chart().Axes(1).ScaleType = static_cast<std::int16_t>(code & 56);
    Readout readout(here.session, here.chart());
    for (int i = 0; i < 100; ++i) {
      const Place at{x(generator), y(generator)};
      const Reading reading = readout.at(at).value();
      EXPECT_EQ(place_of(reading.x, reading.y), at) << code;
      EXPECT_EQ(reading.place, at);
    }
  }
}

TEST_F(ReadoutTest, SaysWhatTheFitSaysOfThePlace) {
  Readout readout(here.session, here.chart());
  const Reading reading = readout.at(place_of(200, 0.3)).value();
  EXPECT_NEAR(reading.x, 200, 0.1);
  EXPECT_NEAR(reading.fraction.value(), -std::expm1(-std::pow(reading.x / 606.5, 1.72)), 1e-12);
  EXPECT_NEAR(reading.time.value(), 606.5 * std::pow(-std::log1p(-reading.y), 1 / 1.72), 1e-9);
  const Sample& sample = here.session.project.data(1).sample();
  const double time = outer_time(sample, sample.time[2]);
  const auto rank = static_cast<double>(sample.rank[2]);
  const Place point = place_of(time, rank);
  const Reading snapped = readout.precise_at({point.x + 20, point.y - 20}, 40).value();
  EXPECT_EQ(snapped.snapped, SnappedTo::point);
  EXPECT_EQ(std::pair(snapped.x, snapped.y), std::pair(time, rank));
  const Reading outside = readout.at({-500, 90000}).value();
  EXPECT_EQ(outside.x, here.chart().Axes(0).Min);
  EXPECT_EQ(outside.y, here.chart().Axes(1).Min);
  here.session.project.fits(1).Fits(1).Rows(1).Scale =
      1e-9;  // reaches no such fraction on this axis
  EXPECT_FALSE(Readout(here.session, here.chart()).at({4000, 3000})->time.has_value());
}

// Whatever the order of entry, and with other data beside them, a point tells its own row,
// and the row its point.
TEST(ReadoutOfRows, PointsAndRowsFindEachOther) {
  test::SetsWorld here(2);
  for (const int set : {1, 2}) {
    const double f = 1 + 0.7 * set;
    DataSet data = test::ranked(
        {{500 * f}, {40 * f}, {0, 0}, {300 * f, 0, 4}, {90 * f, 3}, {200 * f, 1, 2}, {90 * f}});
    data.UniqueId = here.session.project.data(set).UniqueId;
    data.Title = set == 1 ? "A" : "B";
    here.session.project.data(set) = std::move(data);
  }
  here.draw();
  Readout readout(here.session, here.chart());
  for (const int set : {1, 2}) {
    const DataSet& shown = here.session.project.data(set);
    for (int row = 1; row <= 7; ++row) {
      const SheetRow& typed = shown.rows[static_cast<std::size_t>(row) - 1];
      const auto place = readout.place_of_row(shown.UniqueId, row);
      ASSERT_EQ(place.has_value(), typed.failures > 0) << row;
      EXPECT_EQ(is_as_read(shown, row), typed.failures > 0);
      if (!place) continue;
      const Reading reading = readout.near_at(*place, 1).value();
      ASSERT_TRUE(reading.point);
      EXPECT_EQ(reading.point->data_id, shown.UniqueId);
      EXPECT_EQ(reading.point->row, row);
      EXPECT_EQ(static_cast<float>(reading.x), typed.time);
      EXPECT_EQ(reading.point->failures, typed.failures);
      EXPECT_EQ(reading.point->suspensions, typed.suspensions);
      EXPECT_EQ(reading.point->title, shown.Title);
    }
  }
  DataSet& moved = here.session.project.data(1);
  std::swap(moved.rows.edit(0), moved.rows.edit(1));
  mark_changed(moved);
  EXPECT_FALSE(is_as_read(moved, 1));
  EXPECT_TRUE(is_as_read(moved, 5)) << "nobody has touched it";
}

TEST_F(ReadoutTest, LinesOfTheGridHoldThePointerAtTheirExactValue) {
  here.session.project.data(1) = fuStandardData();  // nothing else holds it
  Readout readout(here.session, here.chart());
  for (const double time : {20.0, 100.0, 200.0}) {
    const Place line = place_of(time, 0.33);
    const Reading near = readout.near_at({line.x + 30, line.y}, 40).value();
    EXPECT_TRUE(near.on_x_line && !near.on_y_line);
    EXPECT_EQ(near.snapped, SnappedTo::grid);
    EXPECT_EQ(near.x, time);
    EXPECT_EQ(near.place.x, line.x);
    EXPECT_FALSE(readout.near_at({line.x + 30, line.y}, 20)->on_x_line);
  }
  const Place corner = place_of(100, 0.1);
  const Reading both = readout.near_at({corner.x - 9, corner.y + 9}, 10).value();
  EXPECT_EQ(std::pair(both.x, both.y), std::pair(100.0, 0.1));
  EXPECT_EQ(both.place, corner);
}

}  // namespace
}  // namespace tavlo
