#include "actions/dispatch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <optional>

#include "actions/ranking.h"
#include "numerics/number_text.h"
#include "support/test_world.h"

namespace tavlo {
namespace {

using test::TestWorld;

/// A world whose first data set holds the points, ranked.
struct FitWorld : TestWorld {
  explicit FitWorld(const std::vector<test::Point>& points) {
    DataSet data = test::make_data(points);
    data.UniqueId = session.gData(1).UniqueId;
    data.Title = "Data1";
    Make_Ranks(session.errors, true, data);
    session.gData(1) = data;
    views.said.clear();
  }

  void fit(std::int16_t model = 98, std::int16_t method = 0) {
    Fit_Distribution(session, 1, 1, model, method, true, true);
  }

  const FitSet& fits() const { return session.gFit(1); }
  std::string log() const { return session.log.plain(); }
};

const std::vector<test::Point> five = {{100}, {200}, {300}, {400}, {500}};

TEST(Dispatch, AFitIsStoredShownAndLogged) {
  FitWorld world(five);
  world.fit();
  ASSERT_EQ(world.fits().nFits, 1);
  const FitResult& fit = world.fits().Fits(1);
  EXPECT_EQ(fit.Status, FitStatus::calculated);
  EXPECT_EQ(fit.Label, "W/rr");
  EXPECT_EQ(fit.Rows(1).Fraction, 1.0);
  EXPECT_EQ(fit.Rows(1).Applies, 1);
  EXPECT_EQ(world.session.gChart(1).Markers(1).FitNumber, 1);
  EXPECT_EQ(world.session.gChart(1).Axes(1).ScaleType, 32);
  EXPECT_EQ(world.views.said,
            (std::vector<std::string>{"busy", "grid 1", "chart 1", "log", "ready"}));

  const Grid& grid = world.session.gFitForm(1)->grd_Fit;
  ASSERT_EQ(grid.rows(), 2);
  EXPECT_EQ(grid.text(0, fit_column::quality), "r²");
  EXPECT_EQ(grid.text(0, fit_column::scale), "eta");
  EXPECT_EQ(grid.text(1, fit_column::model), "W/rr");
  EXPECT_EQ(grid.text(1, fit_column::fraction), "100");
  EXPECT_NE(world.log().find("********** Tavlo Fit **********     02:05 pm\nW/rr\tN= 5 /S= 0\n"
                             "r^2= \t0."),
            std::string::npos)
      << world.log();
}

TEST(Dispatch, MethodsStandSideBySideAndTheHeadingSaysSo) {
  FitWorld world(five);
  world.fit(98, 0);
  world.fit(98, 1);
  world.fit(610, 2);
  EXPECT_EQ(world.fits().nFits, 3);
  const Grid& grid = world.session.gFitForm(1)->grd_Fit;
  EXPECT_EQ(grid.text(0, fit_column::quality), "r², Ln(L)");
  EXPECT_EQ(grid.text(2, fit_column::model), "W/MLE");
  EXPECT_NE(world.log().find("Ln(L)= \t-"), std::string::npos);
  EXPECT_EQ(world.session.gChart(1).Markers(1).FitNumber, 3);
}

TEST(Dispatch, ASecondRequestShowsTheOldFitWithoutAnEntry) {
  FitWorld world(five);
  world.fit();
  const std::string log = world.log();
  world.views.said.clear();
  world.fit();
  EXPECT_EQ(world.fits().nFits, 1);
  EXPECT_EQ(world.log(), log);
  EXPECT_EQ(world.views.count("chart 1"), 1);
}

TEST(Dispatch, AStaleFitForgetsItsOldSlope) {
  FitWorld world(five);
  world.fit();
  const double fresh_shape = world.fits().Fits(1).Rows(1).Shape;
  world.session.gFit(1).Fits(1).Rows(1).Shape = 9.0;
  world.session.gFit(1).Fits(1).Status = FitStatus::stale;
  world.fit();
  EXPECT_EQ(world.fits().Fits(1).Rows(1).Shape, fresh_shape);
}

TEST(Dispatch, TooFewFailuresChangeNothing) {
  FitWorld world(std::vector<test::Point>{{100}});
  world.prompts.expect_box("Insufficient points for Fit", "At least 2 points");
  world.fit();
  EXPECT_EQ(world.fits().nFits, 0);
  EXPECT_EQ(world.fits().Fits.bound(), 0);
  EXPECT_TRUE(world.views.said.empty());
  EXPECT_EQ(world.log(), "");
}

TEST(Dispatch, AFailedNewFitLeavesNoTrace) {
  FitWorld world(std::vector<test::Point>{{100}, {200}});
  world.session.gData(1).Points(1).X = 0;  // has no logarithm
  world.prompts.accept_all();
  world.fit();
  EXPECT_FALSE(world.prompts.shown().empty()) << "the failure is told";
  EXPECT_EQ(world.fits().nFits, 0);
  EXPECT_EQ(world.fits().Fits.bound(), 0);
  EXPECT_EQ(world.session.gFitForm(1)->grd_Fit.rows(), 1);
  EXPECT_EQ(world.log(), "");
  EXPECT_EQ(world.views.said.back(), "ready") << "the hourglass goes in any case";
}

TEST(Dispatch, AnOldFitThatFailsOnNewDataShowsNoNumbers) {
  FitWorld world(five);
  world.fit(98, 0);
  world.fit(98, 2);
  const double old_shape = world.fits().Fits(1).Rows(1).Shape;
  world.session.gFit(1).Fits(1).Status = FitStatus::stale;
  world.session.gData(1).Points(1).X = 0;  // has no logarithm
  world.prompts.accept_all();
  world.fit(98, 0);
  EXPECT_EQ(world.fits().nFits, 2);
  EXPECT_EQ(world.fits().Fits(1).Status, FitStatus::stale);
  EXPECT_EQ(world.fits().Fits(1).Rows(1).Shape, old_shape) << "no half-made fit";
  const Grid& grid = world.session.gFitForm(1)->grd_Fit;
  EXPECT_EQ(grid.text(1, fit_column::model), "W/rr");
  EXPECT_EQ(grid.text(1, fit_column::quality) + grid.text(1, fit_column::shape), "");
  EXPECT_NE(grid.text(2, fit_column::shape), "");
}

TEST(Dispatch, ARefusedModelLeavesNoTrace) {
  FitWorld world(std::vector<test::Point>(25, {100}));
  world.prompts.expect_box("", "3Par LN not programmed");
  world.fit(986);
  EXPECT_EQ(world.fits().nFits, 0);
  EXPECT_EQ(world.views.said, (std::vector<std::string>{"busy", "grid 1", "ready"}));
}

constexpr const char* slope_title = "Enter Weibull Slope";

// The entry as it is typed, and the fit that it brings; code 0 for none.
TEST(Dispatch, TheSlopeEnteredChoosesTheModel) {
  struct Entry {
    std::optional<std::string> text;
    int code;
    double slope;
  };
  const Entry entries[] = {{"1", 674, 1},       {"2", 738, 2},         {"-2", 738, 2},
                           {"3.25", 802, 3.25}, {"1.0000004", 674, 1}, {"2.34567891", 802, 2.34568},
                           {"5e-1", 802, 0.5},  {"0", 0, 0},           {"", 0, 0},
                           {"abc", 0, 0},       {std::nullopt, 0, 0}};
  for (const Entry& entry : entries) {
    for (const std::int16_t asked : std::initializer_list<std::int16_t>{674, 738, 802}) {
      SCOPED_TRACE(entry.text.value_or("(cancelled)"));
      FitWorld world(five);
      world.prompts.expect_line(slope_title, entry.text);
      std::int16_t code = asked;
      Fit_Distribution(world.session, 1, 1, code, 0, false, false);
      EXPECT_EQ(world.fits().nFits, entry.code == 0 ? 0 : 1);
      EXPECT_EQ(code, entry.code == 0 ? asked : entry.code);
      if (entry.code == 0) continue;
      EXPECT_EQ(world.fits().Fits(1).ModelCode, entry.code);
      EXPECT_NEAR(world.fits().Fits(1).Rows(1).Shape, entry.slope, 1e-14);
    }
  }
}

TEST(Dispatch, AnotherSlopeIsCalculatedAnewAndTheSameOneOnlyShown) {
  FitWorld world(five);
  const auto fit_with = [&](const char* slope) {
    world.prompts.expect_line(slope_title, slope);
    const std::string before = world.log();
    world.fit(802);
    return world.log() != before;
  };
  EXPECT_TRUE(fit_with("3"));
  EXPECT_FALSE(fit_with("3"));
  EXPECT_TRUE(fit_with("4"));
  EXPECT_EQ(world.fits().nFits, 1);
  EXPECT_EQ(world.fits().Fits(1).Rows(1).Shape, 4);
  world.session.gFit(1).Fits(1).Status = FitStatus::stale;
  EXPECT_TRUE(fit_with("2.5"));
  EXPECT_EQ(world.fits().Fits(1).Rows(1).Shape, 2.5);
}

// X on Y draws a line as steep as that: only the other methods fail.
TEST(Dispatch, ASlopeBeyondAllNumbersIsReportedAndChangesNothing) {
  for (const std::int16_t method : std::initializer_list<std::int16_t>{1, 2}) {
    FitWorld world(five);
    world.prompts.expect_line(slope_title, "1e308");
    world.prompts.expect_box("", "Weibull 123Par Fit: \n");
    world.fit(802, method);
    EXPECT_EQ(world.fits().nFits, 0) << method;
    EXPECT_EQ(world.session.gFitForm(1)->grd_Fit.rows(), 1);
    EXPECT_EQ(world.log(), "");
  }
}

TEST(Dispatch, ALineOfGivenSlopeMayHaveANegativeQualityAndShowsIt) {
  FitWorld world(std::vector<test::Point>{{90}, {95}, {100}, {105}});
  world.prompts.expect_line(slope_title, "0.5");
  world.fit(802);
  const Grid& grid = world.session.gFitForm(1)->grd_Fit;
  EXPECT_LT(world.fits().Fits(1).Quality, -1);
  EXPECT_TRUE(grid.text(1, fit_column::quality).starts_with("-"));
  EXPECT_NE(world.log().find("r^2= \t-"), std::string::npos) << world.log();
}

TEST(Dispatch, HeadingsFollowTheMixOfFamilies) {
  FitWorld world(five);
  for (const std::int16_t code : std::initializer_list<std::int16_t>{98, 922, 857, 1057, 1137})
    world.fit(code);
  const Grid& grid = world.session.gFitForm(1)->grd_Fit;
  EXPECT_EQ(grid.text(0, fit_column::quality), "r²");
  EXPECT_EQ(grid.text(0, fit_column::scale), "eta, Med, mu, Xi");
  EXPECT_EQ(grid.text(0, fit_column::shape), "beta, sdF, sigma, Del");
  // The LogNormal shows the median and exp(sigma), the others mu, sigma, Xi, Del.
  const auto shown = [&](int row, int column) {
    return parse_number(grid.text(row, column)).value_or(-1);
  };
  const auto row_of = [&](int slot) { return world.fits().Fits(slot).Rows(1); };
  EXPECT_NEAR(shown(2, fit_column::scale), row_of(2).Scale, 1e-2);
  EXPECT_NEAR(shown(2, fit_column::shape), std::exp(1 / row_of(2).Shape), 1e-3);
  EXPECT_NEAR(shown(3, fit_column::shape), 1 / row_of(3).Shape, 1e-1);
  EXPECT_NEAR(shown(4, fit_column::scale), 1 / row_of(4).Scale, 1e-1);
  EXPECT_NEAR(shown(4, fit_column::shape), row_of(4).Shape, 1e-1);
  for (const char* labels : {" Med: ", "sigF: ", " mu: ", "sigma: ", " Xi: ", "Del: "})
    EXPECT_NE(world.log().find(labels), std::string::npos) << labels;
}

/// Failures at the ranks of a part with infant failures, with a wear-out behind.
std::vector<test::Point> infant_and_wear_out() {
  std::vector<test::Point> points;
  for (int i = 1; i <= 60; ++i) {
    const double F = (i - 0.3) / 60.4;
    const bool infant = F < 0.2;
    const double own = infant ? F / 0.25 : (F - 0.15) / 0.85;
    points.push_back({infant ? 50 * std::pow(-std::log1p(-own), 1 / 1.5)
                             : 1000 * std::pow(-std::log1p(-own), 1 / 3.0)});
  }
  std::sort(points.begin(), points.end(), [](auto& a, auto& b) { return a.x < b.x; });
  return points;
}

// Populations, shares and how sure the answer is.
TEST(Dispatch, AMixtureIsReportedByItsPopulations) {
  FitWorld world(infant_and_wear_out());
  world.fit(354, 2);
  ASSERT_EQ(world.fits().nFits, 1);
  const FitResult& fit = world.fits().Fits(1);
  ASSERT_EQ(fit.nRows, 2);
  ASSERT_TRUE(fit.starts.has_value());
  EXPECT_GT(fit.starts->agreed, 0);
  EXPECT_NE(world.session.solver.remark.find("starts ended at this optimum"), std::string::npos);
  const Grid& grid = world.session.gFitForm(1)->grd_Fit;
  ASSERT_EQ(grid.rows(), 3);
  EXPECT_EQ(grid.text(1, fit_column::model), "W5C/rrs");
  EXPECT_EQ(grid.text(1, fit_column::sub_population), "1");
  EXPECT_EQ(grid.text(2, fit_column::sub_population), "1,2");
  EXPECT_EQ(grid.text(2, fit_column::number), "");
  const std::string log = world.log();
  for (const char* words : {"W5C/rrs 5c \tN= 60 /S= 0\n", "\nPopulations:\n\t1:   ",
                            "%\nApplies to Pop: 1\n eta: \t", "\nApplies to Pop: 1,2\n eta: \t"})
    EXPECT_NE(log.find(words), std::string::npos) << words << log;
}

TEST(Dispatch, ACancelledMixtureLeavesTheOldFitAlone) {
  FitWorld world(infant_and_wear_out());
  world.prompts.expect_box("3 Parameter MLE Warning.", "Warning!", BoxAnswer::cancel);
  world.fit(162, 1);
  EXPECT_EQ(world.fits().nFits, 0);
  EXPECT_EQ(world.log(), "");
}

// It has no paper of its own, so its entry is refused; the chart stays on its own.
TEST(Dispatch, AFitByModeIsDrawnOnThePaperThatTheChartHas) {
  FitWorld world({{10, 1, 0, 1}, {20, 1, 0, 2}, {30, 1, 0, 1}, {40, 1, 0, 2}});
  world.prompts.expect_box("", "Fit_ByMode model not programmed yet");
  world.prompts.expect_box("", "undefined axes in postfitlog");
  world.fit(1216);
  EXPECT_EQ(world.fits().nFits, 1);
  EXPECT_EQ(world.fits().Fits(1).Rows.bound(), 2);
  EXPECT_EQ(world.session.gChart(1).Axes(1).ScaleType, 32);
  EXPECT_EQ(world.session.gFitForm(1)->grd_Fit.rows(), 2) << "its first mode";
  EXPECT_EQ(world.log(), "");
}

TEST(Dispatch, ASheetThatIsOutOfStepAndEmptyAsksForData) {
  FitWorld world(five);
  world.session.gDataForm(1)->bclean = false;
  world.session.gDataForm(1)->lrows = 1;
  world.fit();
  EXPECT_EQ(world.log(), "Please enter data for set # 1\n");
  EXPECT_EQ(world.fits().nFits, 0);
}

TEST(Dispatch, IndexesOutsideTheProjectAreReported) {
  FitWorld world(five);
  world.prompts.expect_box("Error: 9 Subscript out of range", "Fit_Distribution routine:");
  std::int16_t model = 98;
  Fit_Distribution(world.session, 7, 7, model, 0, true, true);
}

}  // namespace
}  // namespace tavlo
