#include "actions/likelihood.h"

#include <gtest/gtest.h>

#include "actions/random_sample.h"
#include "actions/ranking.h"
#include "life/models.h"

namespace tavlo {
namespace {

using test::make_data;
using test::TestWorld;

FitResult weibull(double scale, double shape, std::int16_t code = model_code::weibull2) {
  FitResult fit;
  fit.ModelCode = code;
  fit.Rows.resize(3);
  for (int row = 1; row <= 3; ++row) {
    fit.Rows(row).Scale = scale;
    fit.Rows(row).Shape = shape;
  }
  return fit;
}

/// Sum of log densities and log survivals; with a mode, its failures only.
long double ln_likelihood(const DataSet& data, long double scale, long double beta, int mode = 0) {
  long double sum = 0;
  for (int i = 1; i <= data.Count; ++i) {
    const DataPoint& row = data.Points(i);
    const long double x = static_cast<long double>(row.X) * scale;
    if (mode == 0 || row.Mode == mode)
      sum += row.Fails * (std::log(beta * scale) + (beta - 1) * std::log(x));
    sum -= (row.Fails + row.Susps) * std::pow(x, beta);
  }
  return sum;
}

struct Evaluated {
  double ln_likelihood = 0;
  double score = 0;
};

Evaluated evaluate(TestWorld& world, DataSet& data, FitResult& fit, bool solve, int mode_flag = 0) {
  Evaluated value;
  Calc_Likelihood(world.prompts, value.ln_likelihood, value.score, data, fit, solve, mode_flag);
  return value;
}

DataSet ranked(TestWorld& world, const std::vector<test::Point>& points) {
  DataSet data = make_data(points);
  Make_Ranks(world.session.errors, true, data);
  return data;
}

TEST(Likelihood, IsTheSumOfLogDensitiesAndItsSlope) {
  TestWorld world;
  test::RandomSample random(7);
  for (int round = 0; round < 300; ++round) {
    const double beta = random.log_uniform(0.3, 20);
    const double eta = random.log_uniform(0.1, 1e5);
    const int mode = round % 3;  // within a mode, a fraction below 1 may have no rank
    DataSet data =
        random.weibull(random.whole(4, 50), beta, eta, 3, 0.3, mode == 0, mode == 0 ? 0 : 2);
    Make_Ranks(world.session.errors, true, data);
    data.Points(0).Mode = static_cast<std::int16_t>(mode);
    const int flag = mode == 0 ? 0 : one_failure_mode;
    double r = 0;
    for (int i = 1; i <= data.Count; ++i)
      if (mode == 0 || data.Points(i).Mode == mode) r += data.Points(i).Fails;
    if (r < 2) continue;

    FitResult fit = weibull(1.1 / eta, beta);
    const long double expected = ln_likelihood(data, 1.1 / eta, beta, mode);
    EXPECT_NEAR(evaluate(world, data, fit, false, flag).ln_likelihood, double(expected),
                1e-12 * double(std::fabs(expected)) + 1e-12);
    EXPECT_EQ(fit.Rows(1).Scale, 1.1 / eta);

    const Evaluated best = evaluate(world, data, fit, true, flag);
    const double scale = fit.Rows(mode == 0 ? 1 : mode).Scale;
    EXPECT_NEAR(best.ln_likelihood, double(ln_likelihood(data, scale, beta, mode)),
                1e-12 * std::fabs(best.ln_likelihood) + 1e-12);
    EXPECT_GE(best.ln_likelihood, double(ln_likelihood(data, scale * 1.01, beta, mode)));
    EXPECT_GE(best.ln_likelihood, double(ln_likelihood(data, scale * 0.99, beta, mode)));
    // At the best scale the score is -1/r of the slope of ln L in beta.
    const long double h = 1e-6L * beta;
    const long double slope =
        (ln_likelihood(data, scale, beta + h, mode) - ln_likelihood(data, scale, beta - h, mode)) /
        (2 * h);
    EXPECT_NEAR(best.score, double(-slope / r), 1e-6 * (1 + std::fabs(best.score)));
  }
}

TEST(Likelihood, OneFailureBeforeOneSuspensionHasAClosedForm) {
  TestWorld world;
  DataSet data = ranked(world, {{100}, {200, 0, 1}});
  FitResult fit = weibull(0, -1);
  const Evaluated value = evaluate(world, data, fit, true);
  EXPECT_NEAR(fit.Rows(1).Shape, 1.27846454276108 / std::log(2.0), 1e-12);
  EXPECT_EQ(value.score, 0);
  const double scale = fit.Rows(1).Scale;
  const double beta = fit.Rows(1).Shape;
  EXPECT_NEAR(value.ln_likelihood, double(ln_likelihood(data, scale, beta)), 1e-12);
  for (const double off : {0.99, 1.01}) {
    EXPECT_GT(value.ln_likelihood, double(ln_likelihood(data, scale * off, beta)));
    EXPECT_GT(value.ln_likelihood, double(ln_likelihood(data, scale, beta * off)));
  }
  // A fixed slope stays.
  FitResult fixed = weibull(0, 3, model_code::weibayes);
  evaluate(world, data, fixed, true);
  EXPECT_EQ(fixed.Rows(1).Shape, 3);
  EXPECT_NEAR(fixed.Rows(1).Scale, std::cbrt(1 / 9e6), 1e-15);
}

TEST(Likelihood, ClosedFormOnlyForThatPair) {
  const std::vector<std::vector<test::Point>> others = {{{100, 1, 1, 1}, {200, 1, 0, 2}},
                                                        {{100}},
                                                        {{100, 0, 1}, {200}},
                                                        {{100}, {100, 0, 1}},
                                                        {{100}, {200, 0, 1.5}},
                                                        {{100, 1, 1}, {200}}};
  for (const auto& points : others) {
    TestWorld world;
    const DataSet data = ranked(world, points);
    EXPECT_FALSE(one_failure_one_suspension(data, 1));
    EXPECT_FALSE(one_failure_one_suspension(data, data.Points(0).Fails));
  }
}

TEST(Likelihood, ShapeOfZeroCountsAsOne) {
  TestWorld world;
  DataSet data = ranked(world, {{10}, {30}, {80, 0, 2}});
  FitResult fit = weibull(0, 0);
  evaluate(world, data, fit, true);
  EXPECT_EQ(fit.Rows(1).Shape, 1);
  EXPECT_NEAR(fit.Rows(1).Scale, 2.0 / 200, 1e-16);
}

TEST(Likelihood, OtherModelsAreRefusedAndChangeNothing) {
  TestWorld world;
  DataSet data = make_data({{10}, {30}});
  for (const Model& model : models()) {
    if (model.routine == FitRoutine::weibull) continue;
    FitResult fit = weibull(5, 6, model.code);
    world.prompts.expect_box("", " not programmed in Calc_Likelihood");
    evaluate(world, data, fit, true);
    EXPECT_EQ(fit.Quality, 0);
    EXPECT_EQ(fit.Rows(1).Scale, 5);
  }
  FitResult w4 = weibull(1, 1, model_code::weibull4);
  world.prompts.expect_box("", "3.6 4 Parameter Weibull not programmed in Calc_Likelihood");
  evaluate(world, data, w4, true);
  FitResult unknown = weibull(1, 1, 5);
  evaluate(world, data, unknown, true);
}

TEST(Likelihood, TimesOfZeroAndNoFailuresRaise) {
  TestWorld world;
  DataSet zero = make_data({{0, 0, 1}, {30}});
  DataSet none = make_data({{10, 0, 1}, {30, 0, 1}});
  for (DataSet* data : {&zero, &none}) {
    FitResult fit = weibull(0, 1);
    EXPECT_THROW(evaluate(world, *data, fit, true), RunTimeError);
    EXPECT_EQ(fit.Quality, 0);
  }
}

}  // namespace
}  // namespace tavlo
