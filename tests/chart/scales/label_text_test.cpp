#include <gtest/gtest.h>

#include "chart/scales/axis_labels.h"
#include "life/models.h"
#include "support/test_world.h"

namespace tavlo {
namespace {

/// The texts in ascending order of the values, limits at the ends.
std::vector<std::string> label_texts(int code, Limits limits, const std::string& format = "") {
  test::TestWorld world;
  ChartAxis axis;
  axis.Label.Text2 = format;
  const int kind = is_probability_scale(code)                     ? scale_kind::weibull
                   : code == x_scale::log || code == y_scale::log ? scale_kind::log
                                                                  : scale_kind::linear;
  const ScalePoints points = GetScalePoints(world.session.errors, kind, limits.low, limits.high);
  std::vector<AxisLabel> labels = axis_labels(axis, code, points, limits);
  std::sort(labels.begin(), labels.end(),
            [](const AxisLabel& a, const AxisLabel& b) { return a.value < b.value; });
  std::vector<std::string> texts;
  for (const AxisLabel& label : labels) texts.push_back(label.text);
  return texts;
}

TEST(LabelText, FormsByScale) {
  using Texts = std::vector<std::string>;
  struct Case {
    int code;
    Limits limits;
    const char* format;
    Texts expected;
  };
  const Case cases[] = {
      {y_scale::weibull,
       {0.001, 0.99},
       "",
       {"0.1%", "1%", "2%", "5%", "10%", "30%", "50%", "70%", "90%", "95%", "99%"}},
      {y_scale::weibull, {0.11, 0.13}, "", {"11.0%", "11.5%", "12.0%", "12.5%", "13.0%"}},
      {x_scale::log, {0.1, 1000}, "", {"0.1", "1", "10", "100", "1000"}},
      {x_scale::log, {1e-10, 1e-6}, "", {"1E-10", "1E-9", "1E-8", "1E-7", "1E-6"}},
      {x_scale::log, {0.8000012345, 20}, "0", {"1", "2", "4", "6", "8", "10", "20"}},
      {x_scale::linear, {0, 2}, "", {"0.0", "0.5", "1.0", "1.5", "2.0"}},
      {x_scale::linear, {-0.3, 0.3}, "", {"-0.3", "-0.2", "-0.1", "0.0", "0.1", "0.2", "0.3"}},
      {x_scale::linear, {0, 0.04}, "0", {"0.00", "0.01", "0.02", "0.03", "0.04"}}};
  for (const Case& c : cases) {
    Texts found = label_texts(c.code, c.limits, c.format);
    if (c.limits.low == 0.8000012345) found.erase(found.begin());  // has its own decimals
    EXPECT_EQ(found, c.expected) << c.code << ": " << c.limits.low << " to " << c.limits.high;
  }
}

TEST(LabelText, AwkwardLimitsKeepShortLabels) {
  for (const double low : {1e-12, 1e-3, 1.0, 1e6, 1e15}) {
    for (const std::string& text : label_texts(x_scale::linear, {low, low * 1.0001}))
      EXPECT_LE(text.size(), 16u) << text;
    for (const std::string& text : label_texts(x_scale::log, {low, low * 1e5}))
      EXPECT_LE(text.size(), 7u) << text;
  }
}

}  // namespace
}  // namespace tavlo
