#include "analyses/planned_runs.h"

#include <gtest/gtest.h>

#include <cmath>

#include "analyses/sample_text.h"
#include "fit/door/fit.h"
#include "fit/parallel.h"
#include "numerics/run_time_error.h"
#include "support/no_chance.h"

namespace tavlo {
namespace {

RunsReport runs(const RunPlan& plan, std::int32_t stop_at = most_runs) {
  test::NoChance chance;
  WichmannHill random({1, 2, 3, 4});
  return make_runs(plan, random, chance, [stop_at](std::int32_t made) { return made < stop_at; });
}

RunPlan weibulls(std::int32_t size, std::int32_t count) {
  RunPlan plan;
  plan.sample.life = {model_code::weibull2, {{0.001, 1, 2, 0, 1}}};
  plan.sample.size = size;
  plan.runs = count;
  for (const std::int16_t method : {method_code::x_on_y, method_code::mle})
    plan.fits.push_back({model_code::weibull2, method, {}, RankKind::benard, false, {}});
  return plan;
}

// Fisher's information of a complete Weibull sample: var(ln eta) = 1.109 / (n beta^2) and
// var(beta) = 0.608 beta^2 / n.
TEST(PlannedRuns, SpreadAsTheTheoryOfLargeSamplesSays) {
  constexpr int n = 400, count = 3000;
  const RunsReport report = runs(weibulls(n, count));
  for (const RunsOfFit& fit : report.fits) {
    EXPECT_EQ(fit.fitted, count);
    const Spread eta = *fit.parameters[0].spread, beta = *fit.parameters[1].spread;
    EXPECT_NEAR(eta.mean / 1000, 1, 0.005);
    EXPECT_NEAR(beta.mean / 2, 1, 0.02);
    EXPECT_NEAR(fit.b_lives[1].spread->p50 / (1000 * std::sqrt(-std::log(0.9))), 1, 0.02);
    EXPECT_EQ(fit.r_squared.has_value(), fit.request.method != method_code::mle);
    if (fit.request.method != method_code::mle) continue;
    const double sd_eta = 1000 * std::sqrt(1.109 / n) / 2, sd_beta = 2 * std::sqrt(0.608 / n);
    EXPECT_NEAR(eta.sd / sd_eta, 1, 0.06);
    EXPECT_NEAR(beta.sd / sd_beta, 1, 0.06);
    EXPECT_NEAR((eta.p95 - eta.p5) / (2 * 1.645 * sd_eta), 1, 0.08);
  }
}

TEST(PlannedRuns, AreTheSameByAnyThreadsAndUpToAStop) {
  RunPlan plan = weibulls(12, 300);
  plan.sample.suspensions.random = 4;
  const RunsReport all = runs(plan);
  set_threads(1);
  const RunsReport one = runs(plan), part = runs(plan, 100);
  set_threads(0);
  EXPECT_GE(part.runs, 100);
  EXPECT_LT(part.runs, 300);
  for (std::size_t k = 0; k < all.fits.size(); ++k) {
    const auto& values = all.fits[k].parameters[0].values;
    EXPECT_EQ(values, one.fits[k].parameters[0].values);
    const auto& first = part.fits[k].parameters[0].values;
    EXPECT_TRUE(std::equal(first.begin(), first.end(), values.begin()));
  }
}

TEST(PlannedRuns, CountWhatIsRefused) {
  RunPlan plan = weibulls(2, 50);
  plan.sample.suspensions.right = 1;
  plan.sample.method = method_code::mle;
  const RunsOfFit refused = runs(plan).fits[0];
  EXPECT_EQ(refused.refused, 50) << "one failure has no line";
  EXPECT_FALSE(refused.parameters[0].spread);
}

// Sample after sample as it is written, each fitted by itself: every answer counts, by its
// populations in the order of eta, whatever else it leaves undetermined.
TEST(PlannedRuns, AreTheSamplesOneAfterTheOther) {
  for (const bool censored : {false, true}) {
    RunPlan plan = weibulls(24, 20);
    plan.sample.life = {model_code::weibull5c, {{0.002, 0.3, 3, 0, 1}, {0.001, 0.7, 2, 0, 3}}};
    plan.sample.suspensions.random = 3;
    plan.fits.clear();
    for (const std::int16_t model : {model_code::weibull5c, model_code::weibull4})
      plan.fits.push_back({model, method_code::mle, {}, RankKind::benard, censored, {}});
    const RunsReport report = runs(plan);
    test::NoChance chance;
    WichmannHill random({1, 2, 3, 4});
    std::vector<std::vector<std::vector<double>>> wanted(2, std::vector<std::vector<double>>(7));
    for (int run = 0; run < plan.runs; ++run) {
      std::vector<SampleRow> rows = draw_points(plan.sample, random, chance).rows();
      for (SampleRow& row : rows) row.time = written_time(row.time);
      for (std::size_t k = 0; k < 2; ++k) {
        Companion nobody;
        const FitAnswer answer = fit(make_sample(rows, RankKind::benard), plan.fits[k], nobody);
        std::vector<FitParam> populations = answer.fit()->life.rows;
        if (populations[0].Scale < populations[1].Scale) std::swap(populations[0], populations[1]);
        std::vector<double> numbers;
        for (const FitParam& each : populations)
          for (const double number : {1 / each.Scale, each.Shape})
            numbers.push_back(is_unreached(each) ? NAN : number);
        for (const FitParam& each : populations) numbers.push_back(each.Fraction);
        numbers.push_back(*quantile(answer.fit()->life, 0.1));
        for (std::size_t i = 0; i < 7; ++i)
          if (!std::isnan(numbers[i])) wanted[k][i].push_back(numbers[i]);
      }
    }
    for (std::size_t k = 0; k < 2; ++k) {
      const RunsOfFit& fit = report.fits[k];
      EXPECT_EQ(fit.fitted, plan.runs);
      EXPECT_EQ(fit.leaves_suspensions_out, !censored);
      for (std::size_t i = 0; i < fit.parameters.size(); ++i)
        EXPECT_EQ(fit.parameters[i].values, wanted[k][i]) << k << " " << i;
      EXPECT_EQ(*fit.b_lives[1].spread, *spread_of(wanted[k][6]));
    }
    EXPECT_LT(wanted[1][2].size(), wanted[1][0].size()) << "some have one population only";
  }
}

TEST(Inspections, FindFailuresAtTheNextLook) {
  const struct {
    std::vector<double> numbers;
    float time;
    float found;
    bool fails;
  } cases[] = {{{250}, 1, 250, true},
               {{250}, 250, 250, true},
               {{250}, 250.1f, 500, true},
               {{400, 100, 200}, 100, 100, true},
               {{100, 200, 400}, 101, 200, true},
               {{100, 200, 400}, 401, 400, false},
               {{}, 7, 7, true},
               {{0.1}, 0.3f, 0.3f, true},
               {{0.1}, 8.3f, 8.3f, true},
               {{1}, 829390.75f, 829391, true}};
  for (const auto& each : cases) {
    std::vector<SampleRow> rows = {{each.time, 1, 0}, {each.time, 0, 2}};
    find_at(inspections_of(each.numbers), rows);
    EXPECT_FLOAT_EQ(rows[0].time, each.found);
    EXPECT_EQ(rows[0].failures, each.fails ? 1 : 0);
    EXPECT_EQ(rows[0].failures + rows[0].suspensions, 1);
    EXPECT_EQ(rows[1].suspensions, 2);
    EXPECT_LE(rows[1].time, each.time) << "nobody knows that a unit taken out lived longer";
  }
  for (const double wrong : {0.0, -5.0, 1e39, 5e-324, double{NAN}, double{INFINITY}})
    EXPECT_THROW(inspections_of({wrong}), RunTimeError);
}

}  // namespace
}  // namespace tavlo
