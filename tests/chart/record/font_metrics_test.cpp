#include "chart/record/font_metrics.h"

#include <gtest/gtest.h>

namespace tavlo {
namespace {

TEST(FontMetrics, WidthsOfArial) {
  MetricTextMeasure measure;
  const auto ems = [&](const char* text, bool bold) {
    return measure.measure(text, {"Arial", 10, bold, false}).width / 10;
  };
  // Advance widths published for Arial and Helvetica, in thousandths of an em.
  EXPECT_NEAR(ems("0", false), 0.556, 1e-3);
  EXPECT_NEAR(ems("%", false), 0.889, 1e-3);
  EXPECT_NEAR(ems("W", false), 0.944, 1e-3);
  EXPECT_NEAR(ems("i", false), 0.222, 1e-3);
  EXPECT_NEAR(ems("i", true), 0.278, 1e-3);
  EXPECT_NEAR(ems("\xC3\xA4", false), ems("a", false), 1e-9);  // a with diaeresis
  EXPECT_NEAR(ems("\xE2\x82\xAC", false), 0.556, 1e-3);        // euro
  EXPECT_NEAR(ems("\xE6\x97\xA5", false), 1.0, 1e-9);          // outside the table
  EXPECT_NEAR(ems("ab", false), ems("a", false) + ems("b", false), 1e-12);
  EXPECT_EQ(ems("", false), 0);
  EXPECT_NEAR(measure.measure("x", {.size_points = 14}).height, 16.1, 0.02);
}

}  // namespace
}  // namespace tavlo
