#include <boost/math/tools/minima.hpp>

#include "fit/door/fits.h"
#include "support/reference_book.h"

namespace tavlo {
namespace {

using test::Asked;
using test::Number;

test::PaperLine line_at(const Sample& sample, Number t0,
                        std::int16_t method = method_code::x_on_y) {
  return test::line_of(sample, *find_model(model_code::weibull3), method, t0);
}

double first_failure(const Sample& sample) {
  std::size_t i = 0;
  while (!(sample.failures[i] > 0)) ++i;
  return outer_time(sample, sample.time[i]);
}

/// The best r squared over t0: a fine grid of ln(first - t0), then Brent's method; nothing
/// where it is at an end of the grid, or behind a valley from t0 = 0: the search goes uphill.
std::optional<double> global_optimum(const Sample& sample) {
  const double first = first_failure(sample);
  const auto loss = [&](double s) {
    return static_cast<double>(1 - line_at(sample, first - std::exp(Number(s))).r_squared);
  };
  constexpr int cells = 150;
  const double low = std::log(first) - 18, width = 36.0 / cells;
  int best = 0;
  for (int i = 1; i <= cells; ++i)
    if (loss(low + i * width) < loss(low + best * width)) best = i;
  if (best == 0 || best == cells) return std::nullopt;
  for (int i = cells / 2, step = best < i ? -1 : 1; i != best; i += step)
    if (loss(low + (i + step) * width) > loss(low + i * width)) return std::nullopt;
  const double at = low + best * width;
  return 1 - boost::math::tools::brent_find_minima(loss, at - width, at + width, 40).second;
}

void expect_best(const Sample& sample, double r_squared, std::int16_t method) {
  const Fit fit = test::fit_of(test::fit_sample(sample, {model_code::weibull3, method}));
  ASSERT_FALSE(fit.life.rows.empty());
  const FitParam row = fit.life.rows[0];
  EXPECT_NEAR(fit.quality, r_squared, 1e-12);
  const test::PaperLine line = line_at(sample, row.T0, method);
  EXPECT_LT(test::relative_difference(row.Shape, double(line.shape)), 1e-9);
  EXPECT_LT(test::relative_difference(row.Scale, double(line.scale)), 1e-9);
  // r squared can't tell t0 to more than the root of its digits; its slope can.
  const Number step = 1e-6L * (first_failure(sample) - row.T0);
  const Number later = line_at(sample, row.T0 + step).r_squared,
               earlier = line_at(sample, row.T0 - step).r_squared,
               bend = 2 * line.r_squared - later - earlier;
  EXPECT_LT(double(std::fabs((later - earlier) / bend)), 1) << "t0 is off by a part of 1e-6";
}

// A slope below 1 has its best t0 close to the first time, a large t0 leaves few digits for
// the differences of the times, and 0 may send t0 far below it. Counts are weights.
TEST(MinimumLife, IsTheOptimumOfTheCorrelationAndItsLine) {
  test::RandomNumbers random(41);
  int inside = 0;
  for (const int n : {21, 50, 200})
    for (const double beta : {0.8, 1.2, 2.0, 3.5})
      for (const double t0 : {0.0, 300.0, 5e4})
        for (int round = 0; round < 4; ++round) {
          SCOPED_TRACE(std::to_string(n) + ", slope " + std::to_string(beta));
          test::Rows rows = test::weibull_rows(random, n, beta, 1000,
                                               {.digits = 7, .share_suspended = round * 0.1});
          for (SampleRow& row : rows) row.time += static_cast<float>(t0);
          const Sample sample = make_sample(rows, RankKind::benard);
          const auto best = global_optimum(sample);
          if (!best) continue;
          ++inside;
          expect_best(sample, *best, test::regressions[round % 2]);
        }
  EXPECT_GT(inside, 120);
}

TEST(MinimumLife, ThatRunsOffIsTold) {
  for (const auto& [last, runs_off] : {std::pair(1341.7F, true), std::pair(4000.0F, false)}) {
    test::Rows rows;
    for (const float time : {260.55F, 260.83F, 901.48F, 981.93F, last}) rows.push_back({time, 1});
    const FitAnswer answer = test::fit_rows(rows, {model_code::weibull3, method_code::x_on_y});
    const bool told = std::any_of(answer.notes.begin(), answer.notes.end(), [](const Note& note) {
      return note.code == NoteCode::no_interior_maximum;
    });
    EXPECT_EQ(told, runs_off) << last << " t0 " << test::fit_of(answer).life.rows[0].T0;
  }
}

}  // namespace
}  // namespace tavlo
