#include "chart/compose/asked_value.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "chart/chart_world.h"

namespace tavlo {
namespace {

TEST(AskedValue, ReadsPercentagesAndTimesInTheSystemsNumbers) {
  const NumberPunctuation comma{',', ';'};
  const struct {
    const char* typed;
    bool has_comma;
    double wanted;  // below 0: a share
  } readable[] = {{"10%", false, -0.1},    {" 10 % ", false, -0.1},   {"B10", false, -0.1},
                  {"b0.5", false, -0.005}, {"500", false, 500},       {"1e3", false, 1000},
                  {"0,5%", true, -0.005},  {"1.234,5", true, 1234.5}, {"0", false, 0}};
  for (const auto& each : readable) {
    const auto read = read_question(each.typed, each.has_comma ? comma : NumberPunctuation{});
    ASSERT_TRUE(read.asked) << each.typed << ": " << read.refusal;
    EXPECT_EQ(read.asked->kind == Asked::share, each.wanted < 0) << each.typed;
    EXPECT_DOUBLE_EQ(read.asked->value, std::abs(each.wanted)) << each.typed;
  }
  for (const char* typed : {"", " ", "%", "B", "abc", "5 hours", "100%", "0%", "-3%", "120%",
                            "1e-9%", "99.999999999%", "1,5", "nan", "inf", "1e999", "5%%", "10x"}) {
    const auto read = read_question(typed, {});
    EXPECT_FALSE(read.asked) << typed;
    EXPECT_FALSE(read.refusal.empty()) << typed;
  }
}

TEST(AskedValue, EveryFitOnTheChartAnswersExactly) {
  test::SetsWorld here(2);  // Weibull, eta 100 and 200, beta 2
  here.draw();
  const Readout readout(here.session, here.chart());
  const auto ask = [&](AskedValue asked) {
    return sayings(here.session, here.chart(), readout, asked);
  };
  const auto b10 = ask({Asked::share, 0.1});
  ASSERT_EQ(b10.size(), 2u);
  for (const int i : {0, 1}) {
    const double eta = 100.0 * (i + 1);
    const auto at = static_cast<std::size_t>(i);
    EXPECT_NEAR(b10[at].answer.value(), eta * std::sqrt(-std::log(0.9)), 1e-11 * eta);
    const FitSaying failed = ask({Asked::time, 150})[at];
    EXPECT_NEAR(failed.answer.value(), -std::expm1(-std::pow(150 / eta, 2)), 1e-14);
    EXPECT_NEAR(failed.left, std::exp(-std::pow(150 / eta, 2)), 1e-14);
    EXPECT_EQ(failed.fit.substr(0, 8), "Rig " + std::to_string(i + 1) + ", W");
  }
  EXPECT_TRUE(b10[0].place);
  EXPECT_FALSE(ask({Asked::time, 1e9})[0].place) << "far outside the plot";
  EXPECT_EQ(saying_text({Asked::share, 0.1}, b10[0], 5), "B10 = 32.459");
  here.session.project.fits(1).Fits(1) =
      test::fit_of(model_code::weibull4, {{0.01, 0.05, 2, 0, 1}, {unreached_scale, 0.95, 2, 0, 2}});
  EXPECT_EQ(saying_text({Asked::share, 0.1}, ask({Asked::share, 0.1})[0], 5), "B10 = never");
}

}  // namespace
}  // namespace tavlo
