#include "chart/compose/reading_text.h"

#include <gtest/gtest.h>

#include "life/models.h"

namespace tavlo {
namespace {

TEST(ReadingText, SaysPlaceAndFitWithTheDigitsAskedFor) {
  ChartAxis weibull = fuStandard_Chart().Axes(1);
  Reading reading;
  reading.x = 200.06;
  reading.y = 0.300249;
  reading.fraction = 0.1382345678;
  reading.time = 333.2222222;
  EXPECT_EQ(reading_text(reading, weibull, 4),
            "X = 200.1   Y = 30.02%   Fit:  F = 13.82% at X, X = 333.2 at Y");
  reading.snapped = SnappedTo::point;
  EXPECT_EQ(reading_text(reading, weibull, 7),
            "Point:  X = 200.06   Y = 30.0249%   Fit:  F = 13.82346% at X, X = 333.2222 at Y");
  reading.point = DataPoint{1, 7, 3, 1, "Seal", "Pumps"};
  EXPECT_NE(reading_text(reading, weibull, 4)
                .find("3 failures of mode Seal, 1 suspension, row 7 of Pumps   Fit:"),
            std::string::npos);
  reading.point.reset();
  reading.y = 0.999999;  // nearly all is not all
  EXPECT_NE(reading_text(reading, weibull, 4).find("Y = 99.9999%"), std::string::npos);
  reading.y = 0.300249;
  reading.fraction.reset();
  reading.snapped = SnappedTo::line;
  weibull.Label.Text2 = "0.00";
  EXPECT_EQ(reading_text(reading, weibull, 4),
            "Line:  X = 200.1   Y = 0.3002   Fit:  X = 333.2 at Y");
}

}  // namespace
}  // namespace tavlo
