#include "fit/dispatch.h"

#include <gtest/gtest.h>

#include "fit/ranking.h"
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

TEST(Dispatch, AModelWithoutARoutineIsRefusedInWords) {
  FitWorld world(five);
  world.prompts.expect_box("Not available yet", "Normal is not available yet");
  world.fit(857);
  EXPECT_EQ(world.fits().nFits, 0);
  EXPECT_EQ(world.views.count("chart 1"), 0);
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
