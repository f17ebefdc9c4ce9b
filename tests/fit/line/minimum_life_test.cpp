#include "fit/line/minimum_life.h"

#include <gtest/gtest.h>

#include <boost/math/tools/minima.hpp>

#include "fit/independent_line.h"
#include "fit/random_rows.h"

namespace tavlo {
namespace {

using test::Float;

/// The line through (ln(t - t0), Weibull ordinate) of a sample's failures, in inner units.
test::LineSums line_at(const Sample& sample, Float t0) {
  std::vector<test::PaperPoint> points;
  for (std::size_t i = 0; i < sample.size(); ++i) {
    const Float F = static_cast<Float>(sample.rank[i]);
    if (sample.failures[i] > 0)
      points.push_back(
          {sample.failures[i], std::log(sample.time[i] - t0), std::log(-std::log1p(-F))});
  }
  return test::LineSums(points);
}

double first_failure(const Sample& sample) {
  std::size_t i = 0;
  while (!(sample.failures[i] > 0)) ++i;
  return sample.time[i];
}

struct Optimum {
  double t0 = 0;
  double r_squared = 0;
  bool is_inside = true;
};

/// The best r squared over t0: a fine grid of ln(first - t0), then Brent's method.
Optimum global_optimum(const Sample& sample) {
  const double first = first_failure(sample);
  const auto loss = [&](double s) {
    return static_cast<double>(
        1 - line_at(sample, first - std::exp(static_cast<Float>(s))).r_squared());
  };
  constexpr int cells = 150;
  const double low = std::log(first) - 18, width = 36.0 / cells;
  int best = 0;
  for (int i = 1; i <= cells; ++i)
    if (loss(low + i * width) < loss(low + best * width)) best = i;
  const double at = low + best * width;
  const auto [s, value] = boost::math::tools::brent_find_minima(loss, at - width, at + width, 40);
  return {first - std::exp(s), 1 - value, best > 0 && best < cells};
}

// A slope below 1 has its best t0 close to the first time, a large t0 leaves few digits for
// the differences of the times, and 0 may send t0 far below it. Counts are weights.
TEST(MinimumLife, IsTheGlobalOptimumOfTheCorrelationAndItsLine) {
  test::RandomRows random(41);
  Companion companion;
  int inside = 0;
  for (const int n : {21, 50, 200})
    for (const double beta : {0.8, 1.2, 2.0, 3.5})
      for (const double t0 : {0.0, 300.0, 5e4})
        for (int round = 0; round < 4; ++round) {
          test::Rows rows = random.weibull(
              n, beta, 1000, {.digits = 7, .share_suspended = round * 0.1, .fractions = false});
          for (SampleRow& row : rows) row.time += static_cast<float>(t0);
          const Sample sample = make_sample(rows, RankKind::benard);
          const Optimum best = global_optimum(sample);
          if (!best.is_inside) continue;
          ++inside;
          const bool x_on_y = round % 2 == 0;
          const RowAnswer answer = fit_minimum_life_line(sample, x_on_y, companion);
          ASSERT_TRUE(std::holds_alternative<RowFit>(answer));
          const auto& [row, r_squared] = std::get<RowFit>(answer);
          EXPECT_NEAR(r_squared, best.r_squared, 1e-12) << "n " << n << " beta " << beta;
          const test::LineSums line = line_at(sample, row.T0);
          const Float slope = line.slope(!x_on_y);
          EXPECT_NEAR(row.Shape, double(slope), 1e-9 * row.Shape);
          EXPECT_NEAR(row.Scale * double(std::exp(line.x_mean - line.y_mean / slope)), 1, 1e-9);
          // r squared can't tell t0 to more than the root of its digits; its slope can.
          const Float step = 1e-6L * (first_failure(sample) - row.T0);
          const Float rise = line_at(sample, row.T0 + step).r_squared() -
                             line_at(sample, row.T0 - step).r_squared();
          const Float bend = 2 * line.r_squared() - line_at(sample, row.T0 + step).r_squared() -
                             line_at(sample, row.T0 - step).r_squared();
          EXPECT_LT(double(std::fabs(rise / bend)), 1) << "t0 is off by a part of 1e-6";
        }
  EXPECT_GT(inside, 130);
}

TEST(MinimumLife, AStopEndsTheSearch) {
  struct Impatient : Companion {
    int turns = 0;
    void turn() override { ++turns; }
    bool stop_wanted() override { return turns > 2; }
  } impatient;
  test::RandomRows random(6);
  const Sample sample = make_sample(random.weibull(30, 2, 500), RankKind::benard);
  const RowAnswer answer = fit_minimum_life_line(sample, true, impatient);
  EXPECT_EQ(std::get<Refusal>(answer).code, RefusalCode::stopped);
  EXPECT_EQ(impatient.turns, 3);
}

}  // namespace
}  // namespace tavlo
