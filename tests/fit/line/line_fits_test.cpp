#include "actions/line_fits.h"

#include <gtest/gtest.h>

#include <boost/math/distributions/normal.hpp>

#include "actions/independent_line.h"
#include "actions/random_sample.h"
#include "actions/ranking.h"
#include "life/models.h"
#include "solver/mixture_functions.h"

namespace tavlo {
namespace {

using test::Float;
using test::relative_difference;
using test::TestWorld;

FitResult request(std::int16_t code, std::int16_t method) {
  FitResult fit;
  fit.ModelCode = code;
  fit.Method = method;
  fit.nRows = 1;
  fit.Rows.resize(1);
  return fit;
}

FitResult fitted(TestWorld& world, DataSet& data, FitResult fit) {
  const bool normal = find_model(fit.ModelCode)->family != Family::gumbel;
  (normal ? Fit_Norm : Fit_Gumbel)(world.session.errors, world.prompts, data, fit);
  return fit;
}

bool has_log_time(int code) { return code == model_code::lognormal; }

/// The paper of a model, independent of the program: quantiles of its
/// distribution in standard form.
Float ordinate(int code, const DataPoint& row) {
  const Float F = static_cast<Float>(row.Y);
  if (code == model_code::gumbel_lower) return std::log(-std::log1p(-F));
  if (code == model_code::gumbel_upper) return -std::log(-std::log(F));
  return boost::math::quantile(boost::math::normal_distribution<Float>(), F);
}

Float abscissa(int code, const DataPoint& row) {
  const Float x = static_cast<Float>(row.X);
  return has_log_time(code) ? std::log(std::fabs(x)) : x;
}

/// Location and spread of the line: mu and sigma, or Xi and Del.
void expect_line(const FitResult& fit, const DataSet& data, double tolerance,
                 const std::string& what) {
  const int code = fit.ModelCode;
  const test::LineSums sums(test::paper_points(
      data, [code](const DataPoint& row) { return abscissa(code, row); },
      [code](const DataPoint& row) { return ordinate(code, row); }));
  const Float slope = sums.slope(fit.Method == method_code::y_on_x);
  const Float place = sums.x_mean - sums.y_mean / slope;
  const bool gumbel = find_model(code)->family == Family::gumbel;
  const Float scale = gumbel ? 1 / place : has_log_time(code) ? std::exp(place) : place;
  ASSERT_EQ(fit.Status, FitStatus::calculated) << what;
  EXPECT_LT(relative_difference(fit.Rows(1).Shape, double(gumbel ? 1 / slope : slope)), tolerance)
      << what;
  EXPECT_LT(relative_difference(fit.Rows(1).Scale, double(scale)), tolerance) << what;
  EXPECT_NEAR(fit.Quality, double(sums.r_squared()), tolerance) << what;
}

const std::vector<std::int16_t> codes = {model_code::normal, model_code::lognormal,
                                         model_code::gumbel_lower, model_code::gumbel_upper};

bool can_be_fitted(const DataSet& data) {
  return data.XMin < data.XMax &&
         std::none_of(data.Points.begin() + 1, data.Points.end(), [](const DataPoint& row) {
           return row.Fails > 0 && !(row.Y > 1e-8F && row.Y < 1);
         });
}

// Suspensions, ties, fractions of units, narrow and wide data, both rankings.
TEST(LineFits, AgreeWithIndependentLines) {
  TestWorld world;
  test::RandomSample random(31);
  int compared = 0;
  for (int round = 0; round < 500; ++round) {
    DataSet data = random.weibull(random.whole(3, 60), random.log_uniform(0.3, 60),
                                  random.log_uniform(1e-3, 1e6), random.whole(2, 7),
                                  round % 3 == 0 ? 0.0 : 0.4, round % 2 == 0);
    Make_Ranks(world.session.errors, round % 5 != 0, data);
    if (!can_be_fitted(data)) continue;
    ++compared;
    for (const std::int16_t code : codes)
      for (const std::int16_t method : {method_code::x_on_y, method_code::y_on_x})
        expect_line(fitted(world, data, request(code, method)), data, 1e-9,
                    "round " + std::to_string(round) + " code " + std::to_string(code));
  }
  EXPECT_GT(compared, 450);
}

// A small spread far from zero is where raw moments would lose their digits.
TEST(LineFits, KeepTheirDigitsFarFromZero) {
  TestWorld world;
  for (const double place : {-1e4, 1e3, 1e5, 1e6}) {
    std::vector<test::Point> points;
    for (int i = 0; i < 20; ++i) points.push_back({place + 0.125 * i * (1 + i % 3)});
    std::sort(points.begin(), points.end(), [](auto& a, auto& b) { return a.x < b.x; });
    DataSet data = test::make_data(points);
    Make_Ranks(world.session.errors, true, data);
    for (const std::int16_t code : {model_code::normal, model_code::gumbel_upper})
      for (const std::int16_t method : {method_code::x_on_y, method_code::y_on_x})
        expect_line(fitted(world, data, request(code, method)), data, 1e-9,
                    "place " + std::to_string(place));
  }
}

// Points on a line of the paper give the line back by both methods.
TEST(LineFits, ExactPointsGiveTheirDistributionBack) {
  TestWorld world;
  for (const std::int16_t code : codes) {
    FitResult truth = request(code, 0);
    const bool gumbel = find_model(code)->family == Family::gumbel;
    truth.Rows(1) = {gumbel ? 1 / 250.0 : 250.0, 1, gumbel ? 30.0 : 1 / 0.4, 0, 1};
    DataSet data = test::make_data({{100}, {150}, {220}, {250}, {300}, {340}});
    for (int i = 1; i <= data.Count; ++i) {
      const double x = 240.0 + 3 * i;
      data.Points(i).X = static_cast<float>(x);
      data.Points(i).Y = static_cast<float>(Fd_YofX(world.session.errors, truth, x));
    }
    if (code == model_code::normal) truth.Rows(1).Shape = 1 / 8.0;
    if (code == model_code::normal)
      for (int i = 1; i <= data.Count; ++i)
        data.Points(i).Y = static_cast<float>(
            Fd_YofX(world.session.errors, truth, static_cast<double>(data.Points(i).X)));
    for (const std::int16_t method : {method_code::x_on_y, method_code::y_on_x}) {
      const FitResult fit = fitted(world, data, request(code, method));
      // The stored ranks have 24 bits.
      EXPECT_LT(relative_difference(fit.Rows(1).Scale, truth.Rows(1).Scale), 1e-5) << code;
      EXPECT_LT(relative_difference(fit.Rows(1).Shape, truth.Rows(1).Shape), 1e-5) << code;
      EXPECT_GT(fit.Quality, 1 - 1e-9) << code;
    }
  }
}

TEST(LineFits, WhatCannotBeFittedIsReportedAndStoresNothing) {
  struct Case {
    std::int16_t code;
    std::vector<test::Point> points;
    const char* box;
  };
  const char* const equal = "All times, or all ranks, are equal";
  const char* const no_rank = "Row 1: the rank -0.04166667 has no place on probability paper.";
  const Case cases[] = {
      {model_code::normal, {{100}, {100}}, equal},
      {model_code::gumbel_lower, {{100}, {100}}, equal},
      {model_code::normal, {{1, 0, 3}, {2, 0, 1}}, "Insufficient data points"},
      {model_code::lognormal,
       {{0}, {1}, {2}},
       "(Log)Normal Fit: \nRow 1: Data X is 0, and a time of 0 has no place"},
      {model_code::normal, {{1, 0.2}, {2, 1.8}}, no_rank},
      {model_code::gumbel_upper, {{-2}, {-1}, {0}, {1}, {2}}, nullptr},
      {model_code::lognormal3, {{1}, {2}}, "Fit_Norm Min Life model not programmed yet"},
      {model_code::weibull2, {{1}, {2}}, "This Gumbel model has not been programmed."},
  };
  for (const Case& c : cases) {
    TestWorld world;
    DataSet data = test::make_data(c.points);
    world.prompts.accept_all();
    Make_Ranks(world.session.errors, true, data);
    const std::size_t before = world.prompts.shown().size();
    FitResult fit = request(c.code, method_code::x_on_y);
    if (c.code == model_code::weibull2)
      Fit_Gumbel(world.session.errors, world.prompts, data, fit);
    else
      fit = fitted(world, data, fit);
    if (!c.box) {
      EXPECT_EQ(fit.Status, FitStatus::calculated) << "times below 0 are times like others";
      continue;
    }
    ASSERT_EQ(world.prompts.shown().size(), before + 1) << c.code;
    EXPECT_NE(world.prompts.shown().back().text.find(c.box), std::string::npos)
        << world.prompts.shown().back().text;
    EXPECT_EQ(fit.Status, FitStatus::not_calculated);
    EXPECT_EQ(fit.Rows(1).Scale, 0);
    EXPECT_EQ(fit.Quality, 0);
  }
}

TEST(LineFits, MaximumLikelihoodIsNotTheirs) {
  TestWorld world;
  DataSet data = test::make_data({{100}, {200}});
  Make_Ranks(world.session.errors, true, data);
  const FitResult normal = fitted(world, data, request(model_code::normal, method_code::mle));
  EXPECT_EQ(normal.Status, FitStatus::not_calculated);
  const FitResult gumbel = fitted(world, data, request(model_code::gumbel_upper, method_code::mle));
  EXPECT_EQ(gumbel.Status, FitStatus::calculated);
  EXPECT_EQ(gumbel.Rows(1).Scale, 0);
}

}  // namespace
}  // namespace tavlo
