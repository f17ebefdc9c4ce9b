// Whole requests, from the click to grid, log and chart.
#include "actions/dispatch.h"

#include <gtest/gtest.h>

#include "actions/fit_world.h"
#include "actions/reports.h"
#include "chart/scales/chart_view.h"
#include "numerics/number_text.h"

namespace tavlo {
namespace {

using test::FitWorld;

const std::vector<test::Point> five = {{100}, {200}, {300}, {400}, {500}};

// On the limits that were chosen for another model half of the points may be outside.
TEST(Dispatch, AnotherModelEndsAZoomTheSameOneDoesNot) {
  FitWorld world(five);
  world.fit();
  Chart& chart = world.session.project.charts(1);
  const Chart whole = chart;
  zoom_to(chart, {150, 350}, {0.2, 0.4});
  const Chart part = chart;
  world.fit();
  world.fit(model_code::weibull2, method_code::mle);
  EXPECT_EQ(chart.Axes, part.Axes) << "the same model, by another method too";
  world.fit(model_code::normal);
  EXPECT_EQ(zoom_depth(chart), 0u);
  for (const ChartAxis& axis : chart.Axes) EXPECT_TRUE(axis.AutoMin && axis.AutoMax);
  world.fit();
  EXPECT_EQ(chart.Axes, whole.Axes);
}

// A fit says of itself what it was asked; one of other ranks never stands beside these.
TEST(Dispatch, ASwitchOfRanksActsAtTheNextRequestAndAtTheNextRefit) {
  FitWorld world(five);
  world.fit();
  const double benard = world.record(1).Quality;
  world.session.settings.Benard = false;
  EXPECT_TRUE(is_current(world.record(1), world.data()));
  world.put({{110}, {200}, {300}, {400}, {500}});
  EXPECT_FALSE(is_current(world.record(1), world.data()));
  refit_all(world.session, 1, 1);
  EXPECT_EQ(world.data().reading.ranks(), RankKind::exact);
  EXPECT_EQ(world.record(1).request.ranks, RankKind::exact) << "the line is that of the points";
  world.put(five);
  refit_all(world.session, 1, 1);
  const double exact = world.record(1).Quality;
  EXPECT_NE(exact, benard);
  world.fit();
  EXPECT_EQ(world.fits().nFits, 1) << "in its place";
  EXPECT_EQ(world.record(1).Quality, exact);
  world.session.settings.Benard = true;  // those of a program that opens a project of another
  for (int i = 0; i < 2; ++i) {
    world.fit();
    EXPECT_FALSE(is_out_of_date(world.record(1), world.data()));
    EXPECT_EQ(world.record(1).Quality, exact);
  }
}

TEST(Dispatch, WithSuspensionsInTheLikelihoodAMixtureIsAnotherFit) {
  auto points = test::infant_and_wear_out();
  points.push_back({2000, 0, 5});
  FitWorld world(points);
  world.fit(354, 1);
  const std::string words =
      "5 suspensions left out of this likelihood (the choice Censored takes them in): it can't be "
      "compared with one that has them.";
  EXPECT_GT(world.views.count("status " + words), 0) << "told before the fit";
  EXPECT_NE(world.panel().remark.find(words), std::string::npos) << "and when it is done";
  EXPECT_NE(world.log().find(words + "\n"), std::string::npos);
  EXPECT_EQ(world.grid().text(1, fit_column::model), "W5C/MLE *");
  EXPECT_NE(notes_at(world.session, 1, 2).find(words), std::string::npos) << "its second row too";
  world.panel().censored = true;
  world.fit(354, 1);
  world.fit(98, 1);
  ASSERT_EQ(world.fits().nFits, 3);
  EXPECT_EQ(world.record(1).Label, "W5C/MLE 5c ");
  EXPECT_EQ(world.record(2).Label, "W5C/MLEc 5c ");
  EXPECT_EQ(world.record(3).Label, "W/MLE") << "the switch is a mixture's";
  EXPECT_LT(world.record(2).Quality, world.record(1).Quality);
  EXPECT_EQ(world.grid().text(3, fit_column::model).substr(0, 8), "W5C/MLEc");
  EXPECT_EQ(notes_at(world.session, 1, 3).find("suspensions"), std::string::npos);
}

TEST(Dispatch, NegativeTimesAreNamedBeforeASlopeIsAskedFor) {
  FitWorld world({{-5}, {200}, {300}});
  for (const std::int16_t code : {model_code::weibayes, model_code::by_failure_mode}) {
    world.prompts.expect_box("Negative times", std::string("Row 1: Data X is -5.  The model ") +
                                                   find_model(code)->long_name +
                                                   " needs times above 0.\nFit Cancelled");
    world.fit(code);
  }
}

// What is typed, entry by entry until one is a slope, and the fit that it brings; 0 for none.
TEST(Dispatch, TheSlopeEnteredChoosesTheModelAndKeepsAllItsDigits) {
  struct Entry {
    std::vector<std::optional<std::string>> texts;
    int code, fits;
    double slope;
  };
  FitWorld world(five);
  for (const Entry& entry :
       {Entry{{"1"}, 674, 1, 1}, Entry{{"-2"}, 738, 2, 2}, Entry{{"5e-1"}, 802, 3, 0.5},
        Entry{{"abc", "3 cm", "1e308", "1e500", "1e-9", "1 2", " 1.5 "}, 802, 3, 1.5},
        Entry{{"2.3456789"}, 802, 3, 2.3456789}, Entry{{"0"}, 0, 3, 0}, Entry{{""}, 0, 3, 0},
        Entry{{std::nullopt}, 0, 3, 0}}) {
    SCOPED_TRACE(entry.texts.back().value_or("(cancelled)"));
    for (const auto& text : entry.texts) world.prompts.expect_line("Enter Weibull Slope", text);
    std::int16_t code = 802;
    Fit_Distribution(world.session, 1, 1, code, 0, true, true);
    world.prompts.verify();
    EXPECT_EQ(code, entry.code == 0 ? 802 : entry.code);
    ASSERT_EQ(world.fits().nFits, entry.fits) << "each slope has the place of the one before";
    if (entry.code == 0) continue;
    EXPECT_EQ(world.record(entry.fits).ModelCode, entry.code);
    EXPECT_EQ(world.record(entry.fits).Rows(1).Shape, entry.slope);
  }
  const std::string log = world.log();
  world.prompts.expect_line("Enter Weibull Slope", "2.3456789");
  world.fit(802);
  EXPECT_EQ(world.log(), log) << "it is there";
  world.put({{90}, {200}, {310}});
  refit_all(world.session, 1, 1);
  EXPECT_EQ(world.record(3).Rows(1).Shape, 2.3456789) << "a refit asks for none";
  EXPECT_TRUE(is_current(world.record(3), world.data()));
}

TEST(Dispatch, FailureModesAreFittedOneByOneUnderTheirNames) {
  FitWorld world({{10, 1, 0, 1}, {20, 1, 0, 2}, {30, 1, 0, 1}, {35, 1, 0, 3}});
  world.data().ModeNames(2) = "seal {2}";
  const std::string of = "For the failure mode:  ";
  world.prompts.expect_box("", "Fit_ByMode model not programmed yet");
  world.prompts.expect_box("Only One Failure for Mode",
                           of + "seal {2}\nThere is only one failure and right-tail suspensions.  "
                                "A Rank Regression fit cannot be calculated.  MLE will be used\n"
                                "For this failure mode.");
  world.prompts.expect_box("Insufficient Data",
                           of + "mode3\nThere is only one failure and no right-tail suspensions.  "
                                "A Fit by Failure Mode cannot be calculated.");
  world.fit(1216);
  ASSERT_EQ(world.fits().nFits, 1);
  ASSERT_EQ(world.record(1).nRows, 3);
  EXPECT_EQ(world.session.project.charts(1).Axes(1).ScaleType, 32)
      << "the paper that the chart has";
  ASSERT_EQ(world.grid().rows(), 4);
  EXPECT_EQ(world.grid().text(2, fit_column::sub_population), "seal {2}");
  EXPECT_TRUE(world.grid().text(2, fit_column::quality).starts_with("-")) << "its own ln L";
  EXPECT_EQ(world.grid().text(3, fit_column::scale), "not determined");
  EXPECT_NE(notes_at(world.session, 1, 1)
                .find("Failure mode mode3 is not fitted: 1 failure "
                      "found where it takes at least 2.\n"),
            std::string::npos);
  const std::string log = world.log();
  EXPECT_NE(log.find("FM/rr\tN= 4 /S= 0\nFailure mode: mode1\tr^2= \t1\n eta: \t"),
            std::string::npos)
      << log;
  EXPECT_NE(log.find("Failure mode: seal {2}\tLn(L)= \t-"), std::string::npos) << log;
  world.data().ModeNames(2) = "seal";
  Load_Fit(world.session, 1);
  EXPECT_EQ(world.grid().text(2, fit_column::sub_population), "seal") << "no ghost";
}

TEST(Dispatch, ACancelledFitLeavesEverythingAlone) {
  FitWorld world(test::infant_and_wear_out());
  world.prompts.expect_box("3 Parameter MLE Warning.", "Warning!", BoxAnswer::cancel);
  world.fit(162, 1);
  world.progress.stop = true;  // Escape
  world.fit(482, 0);
  EXPECT_EQ(world.fits().nFits, 0);
  EXPECT_EQ(world.log(), "");
}

TEST(Dispatch, WhatIsOutsideTheProjectOrEmptyIsTold) {
  FitWorld world(five);
  world.prompts.expect_box("Error: 9 Subscript out of range", "Fit_Distribution routine:");
  std::int16_t model = 98;
  Fit_Distribution(world.session, 7, 7, model, 0, true, true);
  world.data().rows.resize(1);
  mark_changed(world.data());
  world.fit();
  EXPECT_EQ(world.log(), "Please enter data for set # 1\n");
  EXPECT_EQ(world.fits().nFits, 0);
  world.data().rows.resize(2);
  world.fit();
  EXPECT_EQ(world.fits().nFits, 1);
}

}  // namespace
}  // namespace tavlo
