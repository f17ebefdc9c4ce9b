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
  for (const auto& [text, width] : {std::pair{"0", 556}, {"%", 889}, {"W", 944}, {"i", 222}})
    EXPECT_NEAR(ems(text, false), width / 1000.0, 1e-3) << text;
  EXPECT_NEAR(ems("i", true), 0.278, 1e-3);
  EXPECT_NEAR(ems("\xC3\xA4", false), ems("a", false), 1e-9);  // a with diaeresis
  EXPECT_NEAR(ems("\xE6\x97\xA5", false), 1.0, 1e-9);          // outside the table
  EXPECT_NEAR(ems("ab", false), ems("a", false) + ems("b", false), 1e-12);
  EXPECT_NEAR(measure.measure("x", {.size_points = 14}).height, 16.1, 0.02);
}

}  // namespace
}  // namespace tavlo
