#include "analyses/planned_runs.h"

#include <gtest/gtest.h>

#include <cmath>

#include "fit/parallel.h"
#include "numerics/run_time_error.h"

namespace tavlo {
namespace {

struct NoChance : Entropy {
  std::uint32_t next() override { return 12345; }
};

RunsReport runs(const RunPlan& plan, std::int32_t stop_at = most_runs) {
  NoChance chance;
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

TEST(PlannedRuns, CountWhatIsRefusedAndOrderPopulations) {
  RunPlan plan = weibulls(2, 50);
  plan.sample.suspensions.right = 1;
  plan.sample.method = method_code::mle;
  const RunsOfFit refused = runs(plan).fits[0];
  EXPECT_EQ(refused.refused, 50) << "one failure has no line";
  EXPECT_FALSE(refused.parameters[0].spread);
  plan = weibulls(40, 6);
  plan.sample.life = {model_code::weibull4, {{0.001, 1, 3, 0, 1}, {1 / 600.0, 0, 0.8, 0, 1}}};
  plan.fits = {{model_code::weibull4, method_code::mle, {}, RankKind::benard, false, {}}};
  const RunsOfFit fit = runs(plan).fits[0];
  EXPECT_EQ(fit.fitted + fit.refused, 6);
  for (std::size_t i = 0; i < fit.parameters[0].values.size(); ++i)
    EXPECT_LE(fit.parameters[0].values[i], fit.parameters[2].values[i]);
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
               {{0.1}, 8.3f, 8.3f, true}};
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
