#include "chart/scales/plot_coordinates.h"

#include <gtest/gtest.h>

#include <boost/math/distributions/normal.hpp>
#include <cmath>
#include <random>

#include "life/models.h"
#include "support/test_world.h"

namespace tavlo {
namespace {

using drawing::Place;

class PlotCoordinatesTest : public ::testing::Test {
 protected:
  std::vector<Place> map(std::vector<DataPair> pairs) {
    std::vector<Place> places(pairs.size(), Place{-7, -7});
    xy2Long(world.session.errors, world.prompts, chart.Boxes(1), chart.Axes(0), chart.Axes(1),
            places, pairs);
    return places;
  }
  test::TestWorld world;
  Chart chart = fuStandard_Chart();
};

// Every scale against its definition, computed on its own.
TEST_F(PlotCoordinatesTest, TransformsAndTheirInverses) {
  const boost::math::normal standard;
  std::mt19937_64 generator(3);
  std::uniform_real_distribution<double> fraction(1e-7, 1 - 1e-7);
  ErrorReporter& errors = world.session.errors;
  for (int i = 0; i < 2000; ++i) {
    const double p = fraction(generator);
    EXPECT_NEAR(scale_transform(errors, y_scale::weibull, p), std::log(-std::log1p(-p)), 1e-8);
    EXPECT_NEAR(scale_transform(errors, y_scale::gumbel, p), -std::log(-std::log(p)), 1e-12);
    EXPECT_NEAR(scale_transform(errors, y_scale::normal, p), boost::math::quantile(standard, p),
                1e-12);
    for (const int code : {x_scale::linear, x_scale::log, y_scale::linear, y_scale::log,
                           y_scale::normal, y_scale::weibull, y_scale::gumbel})
      EXPECT_NEAR(scale_inverse(errors, code, scale_transform(errors, code, p)), p, 1e-9) << code;
  }
}

TEST_F(PlotCoordinatesTest, LimitsThatAScaleCanNotBearAreReplaced) {
  ChartAxis axis;
  const double cases[][5] = {
      {x_scale::log, -5, -2, 1e-6, 1000},     {x_scale::log, 1000, 1, 1, 1000},
      {x_scale::linear, -10, -10, -9.5, -10}, {y_scale::weibull, 0, 0.005, 0.005, 0.01},
      {y_scale::gumbel, -1, 7, 0.01, 0.99},   {y_scale::normal, 0, 0.5, 1e-6, 0.5}};
  for (const auto& [code, min, max, low, high] : cases) {
    axis.Min = min;
    axis.Max = max;
    const Limits limits = GuardedLimits(axis, static_cast<int>(code));
    EXPECT_EQ(std::pair(limits.low, limits.high), std::pair(low, high)) << code << " " << min;
  }
}

TEST_F(PlotCoordinatesTest, PlacesAreHeldWithin32Bits) {
  chart.Axes(0).ScaleType = x_scale::linear;
  const std::vector<Place> places = map({{-1e300, 1e-9}, {1e300, 0.99}});
  EXPECT_EQ(places[0].x, 0);
  EXPECT_EQ(places[1].x, 2147483645);
  EXPECT_EQ(places[0].y, 16991);
}

TEST_F(PlotCoordinatesTest, WhatCannotBeMappedIsSaidOnce) {
  world.prompts.expect_box("", "Error calculating Plot Scale values: \nxy2Long routine:");
  EXPECT_EQ(map({{1, 0.5}, {-1, 0.5}, {10, 0.5}})[2].x, -7);
  world.prompts.verify();
}

}  // namespace
}  // namespace tavlo
