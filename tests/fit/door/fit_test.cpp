#include "actions/classical_fits.h"

#include <gtest/gtest.h>

#include "actions/independent_line.h"
#include "actions/random_sample.h"
#include "actions/ranking.h"
#include "life/models.h"
#include "solver/mixture_functions.h"

namespace tavlo {
namespace {

using test::Float;
using test::make_data;
using test::Point;
using test::relative_difference;
using test::TestWorld;

FitResult request(std::int16_t method, std::int16_t code = model_code::weibull2,
                  double slope = -1) {
  FitResult fit;
  fit.ModelCode = code;
  fit.Method = method;
  fit.nRows = 1;
  fit.Rows.resize(1);
  fit.Rows(1).Shape = slope;
  return fit;
}

DataSet ranked(TestWorld& world, DataSet data, bool benard = true) {
  Make_Ranks(world.session.errors, benard, data);
  return data;
}

FitResult fitted(TestWorld& world, DataSet& data, FitResult fit) {
  Fit_Wb123(world.session.errors, world.prompts, data, fit, 1);
  return fit;
}

/// What a fit is compared with, computed from the stored X and Y in long double.
struct Answer {
  Float eta;
  Float beta;
  Float quality;
};

Float ln_time(const DataPoint& row) { return std::log(std::fabs(static_cast<Float>(row.X))); }

Float ordinate(const DataPoint& row) {
  const Float F = std::fabs(static_cast<Float>(row.Y));
  return F > 1e-8L ? std::log(-std::log1p(-F)) : std::log(F);
}

/// The line of a regression, or with a slope the line of it, through the means.
Answer regression(const DataSet& data, bool y_on_x, Float slope = 0) {
  const test::LineSums sums(test::paper_points(data, ln_time, ordinate));
  const Float beta = slope > 0 ? slope : sums.slope(y_on_x);
  return {std::exp(sums.x_mean - sums.y_mean / beta), beta, sums.r_squared(beta, y_on_x)};
}

struct Likelihood {
  const DataSet& data;
  Float largest = 0, r = 0, logs = 0;

  explicit Likelihood(const DataSet& set) : data(set) {
    for (int i = 1; i <= data.Count; ++i) {
      const DataPoint& row = data.Points(i);
      largest = std::max(largest, std::fabs(static_cast<Float>(row.X)));
      r += row.Fails;
      logs += row.Fails * ln_time(row);
    }
  }
  /// Sums of weight times (x / largest)^beta, and of that times ln x.
  std::pair<Float, Float> sums(Float beta) const {
    Float powers = 0, by_ln = 0;
    for (int i = 1; i <= data.Count; ++i) {
      const DataPoint& row = data.Points(i);
      const Float power =
          (row.Fails + row.Susps) * std::exp(beta * (ln_time(row) - std::log(largest)));
      powers += power;
      by_ln += power * ln_time(row);
    }
    return {powers, by_ln};
  }
  Float score(Float beta) const {
    const auto [powers, by_ln] = sums(beta);
    return by_ln / powers - logs / r - 1 / beta;
  }
  Answer at(Float beta) const {
    const Float eta = largest * std::pow(sums(beta).first / r, 1 / beta);
    return {eta, beta, r * (std::log(beta) - beta * std::log(eta)) + (beta - 1) * logs - r};
  }
  Answer maximum(Float low, Float high, int halvings) const {
    for (int step = 0; step < halvings; ++step) {
      const Float middle = (low + high) / 2;
      (score(middle) < 0 ? low : high) = middle;
    }
    return at((low + high) / 2);
  }
};

void expect_answer(const FitResult& fit, const Answer& expected, const std::string& what) {
  ASSERT_EQ(fit.Status, FitStatus::calculated) << what;
  EXPECT_LT(relative_difference(1 / fit.Rows(1).Scale, double(expected.eta)), 1e-9) << what;
  EXPECT_LT(relative_difference(fit.Rows(1).Shape, double(expected.beta)), 1e-9) << what;
  EXPECT_NEAR(fit.Quality, double(expected.quality),
              1e-9 * std::max(1.0, std::fabs(double(expected.quality))))
      << what;
}

void expect_all_methods(TestWorld& world, DataSet& data, double beta, const std::string& what) {
  for (const bool y_on_x : {false, true}) {
    const std::int16_t method = y_on_x ? method_code::y_on_x : method_code::x_on_y;
    expect_answer(fitted(world, data, request(method)), regression(data, y_on_x), what + " rr");
    expect_answer(fitted(world, data, request(method, model_code::weibayes, beta)),
                  regression(data, y_on_x, beta), what + " fixed rr");
  }
  const Likelihood likelihood(data);
  const FitResult mle = fitted(world, data, request(method_code::mle));
  ASSERT_EQ(mle.Status, FitStatus::calculated) << what;
  const double near = mle.Rows(1).Shape;
  ASSERT_LT(likelihood.score(near * 0.9999), 0) << what;
  ASSERT_GT(likelihood.score(near * 1.0001), 0) << what;
  expect_answer(mle, likelihood.maximum(near * 0.9999L, near * 1.0001L, 30), what + " mle");
  expect_answer(fitted(world, data, request(method_code::mle, model_code::weibayes, beta)),
                likelihood.at(beta), what + " fixed mle");
}

/// Failures at two times or more, all of them with a rank (a fraction of a
/// failure may have rank 0, which has no place on the paper).
bool can_be_fitted(const DataSet& data) {
  return data.XMin < data.XMax &&
         std::none_of(data.Points.begin() + 1, data.Points.end(),
                      [](const DataPoint& row) { return row.Fails > 0 && row.Y == 0; });
}

TEST(WeibullFit, AgreesWithIndependentAnswers) {
  TestWorld world;
  test::RandomSample random(8);
  int compared = 0;
  for (int round = 0; round < 600; ++round) {
    const double beta = random.log_uniform(0.3, 50);
    const double share_suspended = round % 4 == 0 ? 0.0 : 0.4;
    DataSet data = random.weibull(random.whole(4, 80), beta, random.log_uniform(10, 1e5),
                                  random.whole(2, 5), share_suspended, round % 2 == 0);
    data = ranked(world, data, round % 3 == 0);
    if (!can_be_fitted(data)) continue;
    expect_all_methods(world, data, beta, "round " + std::to_string(round));
    ++compared;
  }
  EXPECT_GT(compared, 550);
}

TEST(WeibullFit, AgreesWithIndependentAnswersOn100000Points) {
  TestWorld world;
  test::RandomSample random(9);
  for (const double beta : {0.7, 3.0, 40.0}) {
    DataSet data = random.weibull(100000, beta, 5000, 7, 0.3, false);
    Make_Ranks(world.session.errors, true, data);
    expect_all_methods(world, data, beta, "beta " + std::to_string(beta));
  }
}

// NIST/SEMATECH e-Handbook of Statistical Methods, 8.4.1.2: twenty units, ten of
// them running at the end of the test.
TEST(WeibullFit, PublishedCensoredTest) {
  TestWorld world;
  std::vector<Point> points;
  for (const double x : {54, 187, 216, 240, 244, 335, 361, 373, 375, 386}) points.push_back({x});
  points.push_back({500, 0, 10});
  DataSet data = ranked(world, make_data(points));
  const FitResult fit = fitted(world, data, request(method_code::mle));
  EXPECT_NEAR(fit.Rows(1).Shape, 1.7208, 5e-5);
  EXPECT_NEAR(1 / fit.Rows(1).Scale, 606.5280, 5e-4);
  EXPECT_NEAR(fit.Quality, -75.1346, 5e-5);
}

TEST(WeibullFit, OneFailureAndOneSuspension) {
  TestWorld world;
  DataSet data = ranked(world, make_data({{100}, {200, 0, 1}}));
  const FitResult fit = fitted(world, data, request(method_code::mle));
  EXPECT_NEAR(fit.Rows(1).Shape, 1.8444, 5e-5);
  expect_answer(fit, Likelihood(data).maximum(1, 3, 60), "pair");
}

TEST(WeibullFit, FixedSlopesOfTheModels) {
  TestWorld world;
  DataSet one = ranked(world, make_data({{100}, {150, 0, 3}}));
  struct Case {
    std::int16_t code;
    double slope;
    double used;
  };
  for (const Case& c : std::vector<Case>{{model_code::exponential, 7, 1},
                                         {model_code::rayleigh, 7, 2},
                                         {model_code::weibayes, 0, 1},
                                         {model_code::weibayes, 3, 3}}) {
    const FitResult mle = fitted(world, one, request(method_code::mle, c.code, c.slope));
    EXPECT_EQ(mle.Rows(1).Shape, c.used);
    const double powers = std::pow(100, c.used) + 3 * std::pow(150, c.used);
    EXPECT_NEAR(1 / mle.Rows(1).Scale, std::pow(powers, 1 / c.used), 1e-9);
    // One failure is enough for a line of a given slope; no box comes.
    for (const std::int16_t method : {method_code::x_on_y, method_code::y_on_x}) {
      const FitResult line = fitted(world, one, request(method, c.code, c.slope));
      EXPECT_EQ(line.Status, FitStatus::calculated);
      EXPECT_EQ(line.Quality, 1);
      const double y = fd_WblY(static_cast<double>(one.Points(1).Y));
      EXPECT_NEAR(1 / line.Rows(1).Scale, 100 * std::exp(-y / c.used), 1e-9);
    }
  }
}

TEST(WeibullFit, ASlopeFarOffHasANegativeQuality) {
  TestWorld world;
  DataSet data = ranked(world, make_data({{90}, {95}, {100}, {105}, {110}}));
  EXPECT_LT(fitted(world, data, request(method_code::x_on_y, model_code::weibayes, 0.5)).Quality,
            -1);
}

// Rounding is no spread: the quality of a line through equal times is 1 or -1,
// never a ratio of two noises.
TEST(WeibullFit, ALineOfGivenSlopeThroughEqualTimes) {
  TestWorld world;
  for (const double x : {8660499.0, 123.4, 0.1, 7.7e-5}) {
    DataSet data = ranked(world, make_data({{x}, {x}, {x}, {x * 1.1, 0, 1}, {x * 2, 0, 1}}));
    const double quality =
        fitted(world, data, request(method_code::x_on_y, model_code::exponential, 1)).Quality;
    EXPECT_EQ(std::fabs(quality), 1) << x;
  }
}

TEST(WeibullFit, ByFailureModeReadsItsRowAndRanks) {
  TestWorld world;
  DataSet data =
      make_data({{10, 1, 0, 1}, {14, 1, 0, 2}, {21, 1, 0, 1}, {33, 1, 0, 2}, {50, 1, 0, 2}});
  Make_Ranks(world.session.errors, true, data);
  data.Points(0).Mode = 2;
  DataSet alone = ranked(world, make_data({{10, 0, 1}, {14}, {21, 0, 1}, {33}, {50}}));
  for (const std::int16_t method : {method_code::x_on_y, method_code::mle, method_code::y_on_x}) {
    FitResult by_mode = request(method);
    by_mode.Rows.resize(2);
    by_mode.Rows(2).Shape = -1;
    Fit_Wb123(world.session.errors, world.prompts, data, by_mode, 2);
    const FitResult expected = fitted(world, alone, request(method));
    EXPECT_LT(relative_difference(by_mode.Rows(2).Shape, expected.Rows(1).Shape), 1e-6);
    EXPECT_LT(relative_difference(by_mode.Rows(2).Scale, expected.Rows(1).Scale), 1e-6);
    EXPECT_LT(relative_difference(by_mode.Quality, expected.Quality), 1e-6);
    EXPECT_EQ(by_mode.Rows(1).Shape, -1);
  }
}

// Two points have one line, whichever way it is sought and whatever the unit.
TEST(WeibullFit, NarrowDataKeepTheirDigits) {
  for (const double unit : {1.0, 1.0 / 1024, 1024.0, 1048576.0}) {
    for (const double step : {1.0001, 1.01, 2.0}) {
      TestWorld world;
      DataSet data = ranked(world, make_data({{1000 * unit}, {1000 * step * unit}}));
      const FitResult x_on_y = fitted(world, data, request(method_code::x_on_y));
      const FitResult y_on_x = fitted(world, data, request(method_code::y_on_x));
      EXPECT_LT(relative_difference(x_on_y.Rows(1).Shape, y_on_x.Rows(1).Shape), 1e-10) << step;
      EXPECT_LT(relative_difference(x_on_y.Rows(1).Scale, y_on_x.Rows(1).Scale), 1e-10) << step;
    }
  }
}

TEST(WeibullFit, WhatCannotBeFittedIsReportedAndStoresNothing) {
  const char* const no_line = "Matrix solution error\nAll times, or all ranks, are equal";
  const char* const no_points = "Insufficient data points\nOrder: 1 Points: 0\n";
  const char* const no_fit = "Weibull 123Par Fit: \nFit_Wb123 routine:\nDivision by zero";
  const char* const no_limit = "the slope has no limit.\nFit_Wb123 routine:\n";
  const char* const no_life = "a characteristic life beyond all numbers.\nFit_Wb123 routine:\n";
  const std::vector<Point> tied = {{100}, {100}, {100}};
  const std::vector<Point> none = {{100, 0, 1}, {120, 0, 1}};
  const std::vector<Point> zero = {{0, 0, 1}, {20}, {30}};
  struct Case {
    std::vector<Point> points;
    FitResult fit;
    std::vector<const char*> boxes;
  };
  const std::vector<Case> cases = {
      {tied, request(method_code::x_on_y), {no_line, no_fit}},
      {tied, request(method_code::y_on_x), {no_line, no_fit}},
      {tied, request(method_code::mle), {no_limit}},
      {{{100, 0, 1}, {200}}, request(method_code::mle), {no_limit}},
      {none, request(method_code::x_on_y), {no_points, no_fit}},
      {none, request(method_code::y_on_x, model_code::weibayes, 2), {no_points}},
      {none, request(method_code::mle), {"There is no failure among the data."}},
      {{{1, 50}, {1000}, {2000, 0, 950}}, request(method_code::x_on_y), {no_life}},
      {{{1, 50}, {1000}, {2000, 0, 950}}, request(method_code::y_on_x), {no_life}},
      // Y on X takes a slope of 0 as given; X on Y as free.
      {{{1}, {2}}, request(method_code::y_on_x, model_code::weibull2, 0), {no_fit}},
      {zero, request(method_code::mle), {"Median Rank Error: ", "Weibull 123Par Fit: "}},
      {zero, request(method_code::x_on_y), {"Median Rank Error: ", "Weibull 123Par Fit: "}},
      {tied,
       request(method_code::mle, model_code::weibull3),
       {"Model not programmed in Fit_wb123"}},
      {tied,
       request(method_code::y_on_x, model_code::weibull3),
       {"Fit_WB123 Min Life model not programmed yet"}},
  };
  for (const Case& c : cases) {
    TestWorld world;
    for (const char* box : c.boxes) world.prompts.expect_box("", box);
    DataSet data = ranked(world, make_data(c.points));
    const FitResult fit = fitted(world, data, c.fit);
    EXPECT_EQ(fit.Status, FitStatus::not_calculated);
    EXPECT_EQ(fit.Rows(1).Shape, c.fit.Rows(1).Shape);
    EXPECT_EQ(fit.Rows(1).Scale, 0);
    EXPECT_EQ(fit.Quality, 0);
  }
}

}  // namespace
}  // namespace tavlo
