#include "chart/scales/round_ticks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "life/models.h"
#include "numerics/number_text.h"
#include "numerics/unheard_reports.h"

namespace tavlo {
namespace {

double value_of(std::string text) {
  const bool is_percent = text.ends_with(" %");
  if (is_percent) text.resize(text.size() - 2);
  return parse_number(text).value_or(NAN) / (is_percent ? 100 : 1);
}

// Over limits as a zoom makes them, on every kind of scale.
TEST(RoundTicks, AreReadAsWhatTheyAreAndKeepTheirDistance) {
  constexpr double room = 0.06;
  std::mt19937_64 random(19);
  const auto uniform = [&](double low, double high) {
    return std::uniform_real_distribution(low, high)(random);
  };
  UnheardReports reports;
  ChartItem plot;
  plot.Width = plot.Height = 8000;
  for (int i = 0; i < 4000; ++i) {
    constexpr std::int16_t codes[] = {x_scale::linear, x_scale::log, y_scale::normal,
                                      y_scale::weibull, y_scale::gumbel};
    ChartAxis axis;
    axis.ScaleType = codes[i % 5];
    const bool is_x = !is_probability_scale(axis.ScaleType);
    axis.Min = std::pow(10, is_x ? uniform(-9, 9) : uniform(-7, -0.1));
    axis.Max = is_x ? axis.Min * (1 + std::pow(10, uniform(-4, 9)))
                    : axis.Min + (1 - axis.Min) * uniform(0.01, 0.9999);
    const AxisMap map =
        is_x ? AxisMap::x(reports.errors, plot, axis) : AxisMap::y(reports.errors, plot, axis);
    auto labels = round_labels(axis, map.code(), round_ticks(map, room));
    std::ranges::sort(labels, {}, &AxisLabel::value);
    SCOPED_TRACE(number_text(axis.Min) + " to " + number_text(axis.Max) + " on " +
                 std::to_string(axis.ScaleType));
    ASSERT_GE(labels.size(), 2u);
    ASSERT_LE(labels.size(), 1 / room + 1);
    for (std::size_t k = 0; k < labels.size(); ++k) {
      const double value = labels[k].value, grain = 1e-9 * (axis.Max - axis.Min);
      ASSERT_NEAR(value_of(labels[k].text), value, 1e-9 * std::fabs(value));
      ASSERT_TRUE(value >= axis.Min - grain && value <= axis.Max + grain) << value;
      if (k == 0 || labels.size() <= 3) continue;
      ASSERT_GE((map(value) - map(labels[k - 1].value)) * (is_x ? 1 : -1), 8000 * room - 1);
    }
  }
}

}  // namespace
}  // namespace tavlo
