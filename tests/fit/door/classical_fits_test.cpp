#include "fit/door/classical_fits.h"

#include <gtest/gtest.h>

#include <boost/math/distributions/normal.hpp>

#include "fit/door/fits.h"
#include "fit/independent_line.h"

namespace tavlo {
namespace {

using test::Asked;
using test::fit_rows;
using test::Float;
using test::Rows;

/// What a fit is compared with: Scale and Shape as a Life keeps them, and the quality.
struct Answer {
  Float scale, shape, quality;
};

/// The paper of a model, independent of the program: quantiles of its distribution in
/// standard form.
Float ordinate(const Model& model, Float F) {
  if (model.code == model_code::gumbel_upper) return -std::log(-std::log(F));
  if (model.y_scale() == y_scale::normal)
    return boost::math::quantile(boost::math::normal_distribution<Float>(), F);
  return std::log(-std::log1p(-F));
}

/// The line of a regression in the person's unit, or with a slope the line of it.
Answer regression(const Sample& sample, const Model& model, bool y_on_x, Float given_slope = 0) {
  const bool log_time = model.x_scale() == x_scale::log;
  std::vector<test::PaperPoint> points;
  for (std::size_t i = 0; i < sample.size(); ++i) {
    const Float x = outer_time(sample, sample.time[i]);
    if (sample.failures[i] > 0)
      points.push_back({sample.failures[i], log_time ? std::log(x) : x,
                        ordinate(model, static_cast<Float>(sample.rank[i]))});
  }
  const test::LineSums sums(points);
  const Float slope = given_slope > 0 ? given_slope : sums.slope(y_on_x);
  const Float place = sums.x_mean - sums.y_mean / slope;
  const Float quality = given_slope > 0 ? sums.r_squared(given_slope, y_on_x) : sums.r_squared();
  switch (model.family) {
    case Family::normal: return {place, slope, quality};
    case Family::lognormal: return {std::exp(place), slope, quality};
    case Family::gumbel: return {1 / place, 1 / slope, quality};
    default: return {std::exp(-place), slope, quality};
  }
}

/// The likelihood of a Weibull: the sum of log densities and log survivals.
struct Likelihood {
  Rows rows;
  Float r = 0, logs = 0;

  explicit Likelihood(Rows from) : rows(std::move(from)) {
    for (const SampleRow& row : rows) {
      r += row.failures;
      logs += row.failures * ln(row);
    }
  }
  static Float ln(const SampleRow& row) { return std::log(static_cast<Float>(row.time)); }
  Float at(Float scale, Float beta) const {
    Float sum = r * (std::log(beta) + beta * std::log(scale)) + (beta - 1) * logs;
    for (const SampleRow& row : rows)
      sum -= (row.failures + row.suspensions) * std::pow(row.time * scale, beta);
    return sum;
  }
  Float best_scale(Float beta) const {
    Float powers = 0;
    for (const SampleRow& row : rows)
      powers += (row.failures + row.suspensions) * std::exp(beta * (ln(row) - ln(rows.back())));
    return std::pow(r / powers, 1 / beta) / rows.back().time;
  }
  /// At the best scale it falls on both sides of its maximum.
  Float profile(Float beta) const { return at(best_scale(beta), beta); }
  Answer fixed(Float beta) const { return {best_scale(beta), beta, profile(beta)}; }
};

void expect_answer(const FitAnswer& answer, const Answer& expected, double tolerance,
                   const std::string& what) {
  ASSERT_TRUE(answer.fit()) << what << " refused " << int(answer.refusal()->code);
  const FitParam& row = answer.fit()->life.rows.at(0);
  EXPECT_LT(test::relative_difference(row.Scale, double(expected.scale)), tolerance) << what;
  EXPECT_LT(test::relative_difference(row.Shape, double(expected.shape)), tolerance) << what;
  EXPECT_EQ(row.Fraction, 1) << what;
  EXPECT_NEAR(answer.fit()->quality, double(expected.quality),
              tolerance * std::max(1.0, std::fabs(double(expected.quality))))
      << what;
}

/// Every failure has a rank that is a probability, and two times or more fail.
bool has_lines(const Sample& sample) {
  double first = -1, last = -1;
  for (std::size_t i = 0; i < sample.size(); ++i) {
    if (!(sample.failures[i] > 0)) continue;
    if (!(sample.rank[i] > 1e-8F && sample.rank[i] < 1)) return false;
    last = sample.time[i];
    if (first < 0) first = last;
  }
  return first < last;
}

void expect_all_lines(const Rows& rows, RankKind ranks, double slope, const std::string& what) {
  const Sample sample = make_sample(rows, ranks);
  for (const std::int16_t method : test::regressions) {
    const bool y_on_x = method == method_code::y_on_x;
    for (const std::int16_t code :
         {model_code::weibull2, model_code::weibull_12_month, model_code::weibull_360_day,
          model_code::normal, model_code::lognormal, model_code::gumbel_lower,
          model_code::gumbel_upper})
      expect_answer(fit_rows(rows, {code, method, {}, ranks}),
                    regression(sample, *find_model(code), y_on_x), 1e-9,
                    what + " code " + std::to_string(code));
    expect_answer(fit_rows(rows, {model_code::weibayes, method, slope, ranks}),
                  regression(sample, *find_model(model_code::weibull2), y_on_x, slope), 1e-9,
                  what + " of given slope");
  }
}

void expect_likelihoods(const Rows& rows, double slope, const std::string& what) {
  const Likelihood likelihood(rows);
  expect_answer(fit_rows(rows, {model_code::weibayes, method_code::mle, slope}),
                likelihood.fixed(slope), 1e-9, what + " of given slope");
  const FitAnswer mle = fit_rows(rows, {model_code::weibull2, method_code::mle});
  ASSERT_TRUE(mle.fit()) << what;
  const double beta = mle.fit()->life.rows[0].Shape;
  expect_answer(mle, likelihood.fixed(beta), 1e-9, what + " mle");
  // Central differences of the profile: its slope is nothing against its curvature.
  const Float step = 1e-4L * beta;
  const Float rise = likelihood.profile(beta + step) - likelihood.profile(beta - step);
  const Float bend = 2 * likelihood.profile(beta) - likelihood.profile(beta + step) -
                     likelihood.profile(beta - step);
  EXPECT_GT(bend, 0) << what;
  EXPECT_LT(double(std::fabs(rise / bend)), 1e-3) << what;
}

// Suspensions, ties, fractions of units, narrow and wide data, both rankings.
TEST(ClassicalFits, AgreeWithIndependentAnswers) {
  test::RandomRows random(8);
  int compared = 0;
  for (int round = 0; round < 300; ++round) {
    const double beta = random.log_uniform(0.3, 50);
    const Rows rows = random.weibull(random.whole(4, 80), beta, random.log_uniform(1e-3, 1e6),
                                     {.digits = random.whole(2, 6),
                                      .share_suspended = round % 4 == 0 ? 0.0 : 0.4,
                                      .fractions = round % 2 == 0});
    const RankKind ranks = round % 3 == 0 ? RankKind::exact : RankKind::benard;
    if (!has_lines(make_sample(rows, ranks))) continue;
    ++compared;
    const std::string what = "round " + std::to_string(round);
    expect_all_lines(rows, ranks, beta, what);
    expect_likelihoods(rows, beta, what);
  }
  EXPECT_GT(compared, 250);
}

TEST(ClassicalFits, AgreeWithIndependentAnswersOnManyPoints) {
  test::RandomRows random(9);
  for (const double beta : {0.7, 40.0}) {
    const Rows rows = random.weibull(20003, beta, 5000, {.digits = 7, .share_suspended = 0.3});
    expect_all_lines(rows, RankKind::benard, beta, "beta " + std::to_string(beta));
    expect_likelihoods(rows, beta, "beta " + std::to_string(beta));
  }
}

// NIST/SEMATECH e-Handbook of Statistical Methods, 8.4.1.2: twenty units, ten of them
// running at the end of the test.
TEST(ClassicalFits, PublishedCensoredTest) {
  Rows rows = test::failures_at({54, 187, 216, 240, 244, 335, 361, 373, 375, 386});
  rows.push_back({500, 0, 10, 0});
  const FitAnswer answer = fit_rows(rows, {model_code::weibull2, method_code::mle});
  EXPECT_NEAR(answer.fit()->life.rows[0].Shape, 1.7208, 5e-5);
  EXPECT_NEAR(1 / answer.fit()->life.rows[0].Scale, 606.5280, 5e-4);
  EXPECT_NEAR(answer.fit()->quality, -75.1346, 5e-5);
}

// The closed form: beta ln(t2 / t1) is the root of (1 + y) exp(y) = -y.
TEST(ClassicalFits, OneFailureAndOneSuspension) {
  const Rows pair = {{100, 1}, {200, 0, 1}};
  const FitAnswer answer = fit_rows(pair, {model_code::weibull2, method_code::mle});
  const double beta = 1.27846454276108 / std::log(2.0);
  expect_answer(answer, Likelihood(pair).fixed(beta), 1e-12, "pair");
}

TEST(ClassicalFits, SlopesOfTheModels) {
  struct Case {
    std::int16_t asked;
    std::optional<double> slope;
    std::int16_t answered;
    double used;
  };
  const Case cases[] = {
      {model_code::exponential, std::nullopt, model_code::exponential, 1},
      {model_code::exponential, 7, model_code::exponential, 1},
      {model_code::rayleigh, std::nullopt, model_code::rayleigh, 2},
      {model_code::weibayes, 1, model_code::exponential, 1},
      {model_code::weibayes, 2, model_code::rayleigh, 2},
      {model_code::weibayes, 2.3456789012345, model_code::weibayes, 2.3456789012345},
      {model_code::weibayes, 0.02, model_code::weibayes, 0.02},
  };
  const Rows one = {{100, 1}, {150, 0, 3}};  // one failure is enough for a given slope
  for (const Case& c : cases)
    for (const std::int16_t method : test::all_methods) {
      const FitAnswer answer = fit_rows(one, {c.asked, method, c.slope});
      ASSERT_TRUE(answer.fit());
      EXPECT_EQ(answer.fit()->life.model, c.answered);
      EXPECT_EQ(answer.fit()->life.rows[0].Shape, c.used);
      if (method != method_code::mle) {
        EXPECT_EQ(answer.fit()->quality, 1);
      }
    }
}

// Rounding is no spread: the quality of a line through equal times is -1, in any unit, and
// that of a line far off is below.
TEST(ClassicalFits, LinesOfGivenSlopeThatFitBadly) {
  for (const double x : {8660499.0, 123.4, 0.1, 7.7e-5, 1e-30}) {
    Rows rows = test::failures_at({x, x, x});
    rows.push_back({static_cast<float>(2 * x), 0, 2, 0});
    EXPECT_EQ(fit_rows(rows, {model_code::exponential}).fit()->quality, -1) << x;
  }
  const Rows narrow = test::failures_at({90, 95, 100, 105, 110});
  EXPECT_LT(fit_rows(narrow, {model_code::weibayes, method_code::x_on_y, 0.5}).fit()->quality, -1);
}

// A small spread far from zero is where raw moments would lose their digits, and where r
// squared once read exactly 1.
TEST(ClassicalFits, KeepTheirDigitsFarFromZeroAndInSmallUnits) {
  for (const double place : {-1e4, 1e3, 1e6})
    for (const double unit : {1.0, 1.0 / (1 << 30)}) {
      std::vector<double> times;
      for (int i = 0; i < 20; ++i) times.push_back((place + 0.125 * i * (1 + i % 3)) * unit);
      const Rows rows = test::failures_at(times);
      const Sample sample = make_sample(rows, RankKind::benard);
      for (const std::int16_t code : {model_code::normal, model_code::gumbel_upper})
        for (const std::int16_t method : test::regressions) {
          const FitAnswer answer = fit_rows(rows, {code, method});
          expect_answer(answer, regression(sample, *find_model(code), method == 2), 1e-9,
                        "place " + std::to_string(place));
          EXPECT_LT(answer.fit()->quality, 0.99);
        }
    }
}

}  // namespace
}  // namespace tavlo
