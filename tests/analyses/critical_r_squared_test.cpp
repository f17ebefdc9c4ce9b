#include "analyses/critical_r_squared.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "analyses/comparison.h"
#include "fit/door/fit.h"
#include "numerics/number_text.h"
#include "support/case_list.h"
#include "support/error_number.h"
#include "support/random_samples.h"
#include "tools/critical_r_squared_samples.h"

namespace tavlo {
namespace {

TEST(CriticalRSquared, HasThePublishedValues) {
  for (const auto& row : test::case_list("critical_r_squared.txt")) {
    std::istringstream words(row[0]);
    std::string paper;
    double parameters = 0, n = 0;
    words >> paper >> parameters >> n;
    const PaperKind kind = paper == "W" ? PaperKind::weibull : PaperKind::lognormal;
    const double critical = fd_Ccc2(kind, n, parameters == 3, 0.5).critical;
    EXPECT_NEAR(critical, parse_number(row[1]).value(), parse_number(row[2]).value()) << row[0];
  }
}

struct AnyFamily : ::testing::TestWithParam<std::tuple<PaperKind, bool>> {
  PaperKind kind = std::get<0>(GetParam());
  bool three = std::get<1>(GetParam());
  double critical(double n) const { return fd_Ccc2(kind, n, three, 0.5).critical; }
  double pve(double n, double r) const { return fd_Ccc2(kind, n, three, r).pve; }
};
INSTANTIATE_TEST_SUITE_P(CriticalRSquared, AnyFamily,
                         ::testing::Combine(::testing::Values(PaperKind::weibull,
                                                              PaperKind::lognormal),
                                            ::testing::Bool()));

// The fewest points with a minimum life are the exception: one more parameter fits them all.
TEST_P(AnyFamily, RisesWithTheNumberOfFailures) {
  for (double n = three ? 5 : 3; n < 1e9; n *= 1.013) {
    EXPECT_LT(critical(n), critical(1.013 * n)) << n;
    for (const double r : {0.85, 0.9, 0.95, 0.98})
      EXPECT_TRUE(n < 12 || pve(n, r) > pve(1.013 * n, r) - 1e-6) << n << " " << r;
  }
}

TEST_P(AnyFamily, PercentileRisesWithRSquaredFromZeroToOne) {
  for (double n = 3; n < 1e15; n *= 1.37) {
    double former = 0;
    for (double v = 0.01; v < 36; v += 0.01) {
      const double p = pve(n, -std::expm1(-v));
      ASSERT_TRUE(p >= former && p <= 1) << n << " " << v;
      former = p;
    }
    EXPECT_NEAR(pve(n, critical(n)), 0.1, 2.5e-3) << n;
    for (const double r : {0.0, -1.0, -1e300}) EXPECT_EQ(pve(n, r), 0);
    for (const double r : {1.0, 1.5, 1e300}) EXPECT_EQ(pve(n, r), 1);
  }
  EXPECT_EQ(pve(-7, 0.95), pve(3, 0.95));
  for (const double bad : {HUGE_VAL, -HUGE_VAL, std::nan("")})
    EXPECT_EQ(test::error_of([&] { pve(bad, 0.9); }) + test::error_of([&] { pve(9, bad); }), 10);
}

TEST_P(AnyFamily, AgreesWithAFreshSimulation) {
  for (const int n : {3, 10, 45}) {
    const test::SimulatedNode node{kind == PaperKind::lognormal, three, n};
    EXPECT_LT(test::largest_difference(node, test::simulated_r_squared(node, 4000, 11)), 4.5) << n;
  }
}

// The whole way: drawn, ranked, fitted and judged.
TEST(CriticalRSquared, NineSamplesInTenOfTheRightModelPass) {
  test::RandomNumbers random(5);
  Companion companion;
  constexpr int samples = 3000;
  for (const Life& truth : {test::weibull(1.3, 800), test::weibull(2, 1000, 400),
                            Life{model_code::lognormal, {{50, 1, 1.6, 0, 1}}}}) {
    ComparedFit fitted;
    fitted.request.model = truth.rows[0].T0 > 0 ? model_code::weibull3 : truth.model;
    int passed = 0;
    for (int k = 0; k < samples; ++k) {
      std::vector<double> times(17);
      for (double& t : times) t = draw(truth, [&] { return random.uniform(); });
      const Sample sample = make_sample(test::failures_at(times), fitted.request.ranks);
      fitted.quality = fit(sample, fitted.request, companion).fit()->quality;
      const auto found = compare(sample, {&fitted, 1}).rows[0].straightness;
      passed += found && *fitted.quality >= found->critical ? 1 : 0;
    }
    EXPECT_NEAR(passed, 0.9 * samples, 4 * std::sqrt(0.09 * samples)) << fitted.request.model;
  }
}

}  // namespace
}  // namespace tavlo
