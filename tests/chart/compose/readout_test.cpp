#include "chart/compose/readout.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "chart/chart_world.h"

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

}  // namespace
}  // namespace tavlo
