#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "chart/scales/axis_labels.h"
#include "chart/scales/limit_rules.h"
#include "chart/scales/round_ticks.h"
#include "life/models.h"
#include "numerics/number_text.h"
#include "support/test_world.h"

namespace tavlo {
namespace {

/// In ascending order of the values.
std::vector<std::string> texts_of(std::vector<AxisLabel> labels) {
  std::ranges::sort(labels, {}, &AxisLabel::value);
  std::vector<std::string> texts;
  for (const AxisLabel& label : labels) texts.push_back(label.text);
  return texts;
}

std::vector<std::string> label_texts(int code, Limits limits, const ScalePoints& points) {
  return texts_of(axis_labels({}, code, points, limits));
}

/// What stands at the ticks of a report's axis.
std::vector<std::string> round_texts(ErrorReporter& errors, int code, Limits limits) {
  ChartAxis axis;
  axis.Min = limits.low;
  axis.Max = limits.high;
  axis.ScaleType = static_cast<std::int16_t>(code);
  ChartItem plot;
  plot.Width = plot.Height = 8000;
  const bool is_x = (code & x_scale_mask) != 0;
  const AxisMap map = is_x ? AxisMap::x(errors, plot, axis) : AxisMap::y(errors, plot, axis);
  return texts_of(round_labels(axis, code, round_ticks(map, 0.06)));
}

ScalePoints points_of(int code, Limits limits) {
  test::TestWorld world;
  const int kind = code == y_scale::normal                        ? scale_kind::normal
                   : is_probability_scale(code)                   ? scale_kind::weibull
                   : code == x_scale::log || code == y_scale::log ? scale_kind::log
                                                                  : scale_kind::linear;
  return GetScalePoints(world.session.errors, kind, limits.low, limits.high);
}

/// Scale and limits; what stands at an axis of these, and the limits for such data.
std::string axis_line(int code, Limits limits) {
  test::TestWorld world;
  const auto text = [](double value) { return " " + number_text(value, 9); };
  const ScalePoints points = points_of(code, limits);
  std::string line = std::to_string(code) + text(limits.low) + text(limits.high) + " |";
  for (const std::string& label : label_texts(code, limits, points)) line += " " + label;
  for (const auto* list : {&points.major, &points.medium, &points.minor}) {
    line += " |";
    for (int i = 1; i <= list->bound(); ++i) line += text((*list)(i));
  }
  const Limits round = round_limits(world.session.errors, code, limits, 0.02);
  line += " |" + text(round.low) + text(round.high) + " |";
  for (const auto& label : round_texts(world.session.errors, code, limits)) line += " " + label;
  return line;
}

// Narrow and wide axes of every scale.
TEST(LabelText, AxesShowWhatTheyShowed) {
  std::ifstream file(TAVLO_TEST_DATA "/axes.txt");
  int axes = 0;
  for (std::string line; std::getline(file, line); ++axes) {
    std::istringstream words(line);
    int code = 0;
    Limits limits{0, 0};
    words >> code >> limits.low >> limits.high;
    EXPECT_EQ(axis_line(code, limits), line);
  }
  EXPECT_GE(axes, 100);
}

TEST(LabelText, AwkwardLimitsKeepShortLabels) {
  test::TestWorld world;
  EXPECT_LE(round_texts(world.session.errors, x_scale::linear, {1e15, 1e15 + 0.25}).size(), 12u);
}

}  // namespace
}  // namespace tavlo
