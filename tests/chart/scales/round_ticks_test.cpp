#include "chart/scales/round_ticks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "chart/compose/unheard_reports.h"
#include "life/models.h"
#include "numerics/number_text.h"

namespace tavlo {
namespace {

constexpr double room = 0.06;

struct Axis {
  Axis(int code, Limits limits) {
    record.Min = limits.low;
    record.Max = limits.high;
    record.ScaleType = static_cast<std::int16_t>(code);
    plot.Width = plot.Height = 8000;
  }
  bool is_x() const { return (record.ScaleType & x_scale_mask) != 0; }
  AxisMap map() {
    return is_x() ? AxisMap::x(reports.errors, plot, record)
                  : AxisMap::y(reports.errors, plot, record);
  }
  /// In ascending order.
  std::vector<AxisLabel> labels() {
    const AxisMap along = map();
    auto list = round_labels(record, along.code(), round_ticks(along, room));
    std::sort(list.begin(), list.end(),
              [](const AxisLabel& a, const AxisLabel& b) { return a.value < b.value; });
    return list;
  }
  std::string texts() {
    std::string joined;
    for (const AxisLabel& label : labels()) joined += (joined.empty() ? "" : " ") + label.text;
    return joined;
  }

  UnheardReports reports;
  ChartAxis record;
  ChartItem plot;
};

TEST(RoundTicks, StandAtOneTwoFiveAndAtRoundPercentages) {
  struct Case {
    int code;
    Limits limits;
    std::string texts;
  };
  const Case cases[] = {
      {x_scale::log, {1, 1000}, "1 2 5 10 20 50 100 200 500 1000"},
      {x_scale::log, {2, 3000}, "2 5 10 20 50 100 200 500 1000 2000"},
      {x_scale::log, {0.001, 1}, "0.001 0.002 0.005 0.01 0.02 0.05 0.1 0.2 0.5 1"},
      {x_scale::log, {1, 1e8}, "1 10 100 1000 10000 100000 1000000 1E+7 1E+8"},
      {x_scale::log, {1e-300, 1e300}, "1E-256 1E-192 1E-128 1E-64 1 1E+64 1E+128 1E+192 1E+256"},
      {x_scale::log, {54, 386}, "100 150 200 250 300 350"},
      {x_scale::log,
       {1000, 1002},
       "1000.0 1000.2 1000.4 1000.6 1000.8 1001.0 1001.2 1001.4 "
       "1001.6 1001.8 1002.0"},
      {x_scale::linear, {-0.3, 0.7}, "-0.3 -0.2 -0.1 0.0 0.1 0.2 0.3 0.4 0.5 0.6 0.7"},
      {x_scale::linear, {0, 1500}, "0 200 400 600 800 1000 1200 1400"},
      {y_scale::weibull, {0.002, 0.97}, "0.2 % 0.5 % 1 % 2 % 5 % 10 % 20 % 30 % 63.2 % 90 %"},
      {y_scale::weibull, {0.01, 0.5}, "1 % 2 % 5 % 10 % 20 % 30 % 50 %"},
      {y_scale::weibull, {0.4, 0.5}, "40 % 41 % 42 % 43 % 44 % 45 % 46 % 47 % 48 % 49 % 50 %"},
      {y_scale::normal, {0.01, 0.99}, "1 % 5 % 10 % 20 % 30 % 50 % 70 % 80 % 90 % 95 % 99 %"},
      {y_scale::gumbel, {0.001, 0.9}, "0.1 % 1 % 5 % 10 % 20 % 30 % 50 % 70 % 80 % 90 %"},
  };
  for (const Case& row : cases) {
    Axis axis(row.code, row.limits);
    EXPECT_EQ(axis.texts(), row.texts) << row.code << " from " << row.limits.low;
  }
}

double value_of(std::string text) {
  const bool is_percent = text.ends_with(" %");
  if (is_percent) text.resize(text.size() - 2);
  return parse_number(text).value_or(NAN) / (is_percent ? 100 : 1);
}

// Over limits as a zoom makes them, on every kind of scale.
TEST(RoundTicks, AreReadAsWhatTheyAreAndKeepTheirDistance) {
  std::mt19937_64 random(19);
  const auto uniform = [&](double low, double high) {
    return std::uniform_real_distribution(low, high)(random);
  };
  constexpr int codes[] = {x_scale::linear, x_scale::log, y_scale::normal, y_scale::weibull,
                           y_scale::gumbel};
  for (int i = 0; i < 4000; ++i) {
    const int code = codes[i % 5];
    Limits limits;
    if (is_probability_scale(code)) {
      limits.low = std::pow(10, uniform(-7, -0.1));
      limits.high = limits.low + (1 - limits.low) * uniform(0.01, 0.9999);
    } else {
      limits.low = std::pow(10, uniform(-9, 9));
      limits.high = limits.low * (1 + std::pow(10, uniform(-4, 9)));
    }
    Axis axis(code, limits);
    const AxisMap map = axis.map();
    const auto labels = axis.labels();
    const std::string where = number_text(limits.low) + " to " + number_text(limits.high) + " on " +
                              std::to_string(code) + ": " + axis.texts();
    ASSERT_GE(labels.size(), 2u) << where;
    ASSERT_LE(labels.size(), 1 / room + 1) << where;
    for (std::size_t k = 0; k < labels.size(); ++k) {
      const double value = labels[k].value;
      ASSERT_NEAR(value_of(labels[k].text), value, 1e-9 * std::fabs(value)) << where;
      ASSERT_GE(value, limits.low - 1e-9 * (limits.high - limits.low)) << where;
      ASSERT_LE(value, limits.high + 1e-9 * (limits.high - limits.low)) << where;
      if (k == 0 || labels.size() <= 3) continue;
      const int along = axis.is_x() ? 1 : -1;
      ASSERT_GE((map(value) - map(labels[k - 1].value)) * along, 8000 * room - 1) << where;
    }
  }
}

TEST(RoundTicks, ANumberFormatOfTheAxisComesFirst) {
  Axis axis(y_scale::weibull, {0.01, 0.9});
  axis.record.Label.Text2 = "0.000";
  EXPECT_TRUE(axis.texts().starts_with("0.010 0.020 0.050 0.100")) << axis.texts();
  Axis nothing(x_scale::linear, {1e15, 1e15 + 0.25});
  EXPECT_LE(nothing.labels().size(), 12u) << "ends";
}

}  // namespace
}  // namespace tavlo
