#include "actions/intake.h"

#include <gtest/gtest.h>

#include "support/sheet_world.h"

namespace tavlo {
namespace {

using test::SheetWorld;

TEST(Intake, TheSampleIsSortedWhileTheSheetKeepsTheOrderOfEntry) {
  SheetWorld world({"300", "100", "", "", ">200x3", "100x2"});
  bool clean = true;
  world.sheet().go_to(2, sheet_column::x);
  CheckDirtyData(world.session, 1, clean);
  EXPECT_FALSE(clean);
  EXPECT_EQ(world.sheet().row(), 2) << "the current cell stays";
  const Sample& sample = world.data().sample();
  ASSERT_EQ(sample.size(), 4u) << "empty rows are gone";
  const double sorted[] = {100, 100, 200, 300};
  for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(outer_time(sample, sample.time[i]), sorted[i]);
  EXPECT_EQ(sample.entry, (std::vector<std::int32_t>{2, 4, 3, 1}));
  EXPECT_EQ(sample.total_failures, 4);
  EXPECT_EQ(sample.total_suspensions, 3);
  EXPECT_EQ(world.column(sheet_column::x), (std::vector<std::string>{"300", "100", "200", "100"}));
  EXPECT_EQ(world.column(sheet_column::y)[2], "") << "a suspension has no rank";
  EXPECT_NE(world.column(sheet_column::y)[1], "");
  EXPECT_EQ(world.log(), "Data1\n100, 2x100, 3x200S, 300\n");
  EXPECT_TRUE(world.data().is_read());

  CheckDirtyData(world.session, 1, clean);
  EXPECT_TRUE(clean) << "nothing to do the second time";

  world.session.settings.SortRaw = true;
  world.sheet().enter(5, sheet_column::x, "150");
  CheckDirtyData(world.session, 1, clean);
  EXPECT_EQ(world.column(sheet_column::x),
            (std::vector<std::string>{"100", "100", "150", "200", "300"}));
}

TEST(Intake, OnlyShortSetsAreListed) {
  for (const int rows : {29, 30}) {
    SheetWorld world({});
    for (int r = 1; r <= rows; ++r)
      world.sheet().enter(r, sheet_column::x, std::to_string(100 + r));
    bool clean = true;
    CheckDirtyData(world.session, 1, clean);
    EXPECT_EQ(world.log().empty(), rows == 30) << rows;
    EXPECT_TRUE(world.data().is_read());
  }
}

TEST(CheckAndFit, ChangedDataAreFittedAgainAndTheFitAskedForIsLogged) {
  SheetWorld world({"100", "200", "300"});
  CheckAndFit(world.session, 1);
  EXPECT_FALSE(world.panel().busy);
  EXPECT_EQ(world.views.count("button 1 working"), 1);
  const double before = world.session.project.fits(1).Fits(1).Rows(1).Scale;
  world.sheet().enter(4, sheet_column::x, "900");
  CheckAndFit(world.session, 1);
  EXPECT_EQ(world.session.project.fits(1).nFits, 1);
  EXPECT_LT(world.session.project.fits(1).Fits(1).Rows(1).Scale, before);
  const std::string log = world.log();
  EXPECT_NE(log.find("Data Sets have changed.  Updated Fits below."), std::string::npos);
  const auto first = log.find("Tavlo Fit");
  const auto second = log.find("Tavlo Fit", first + 1);
  EXPECT_NE(second, std::string::npos) << "the new numbers belong in the log";
  EXPECT_EQ(log.find("Tavlo Fit", second + 1), std::string::npos);
}

TEST(CheckAndFit, ATimeThatIsNoneIsNamedByItsRow) {
  for (const auto& [typed, title, text, is_read] :
       {std::tuple{"0", "Error: 5", "Median Rank Error: \nRow 2: Data X is 0", true},
        {"abc", "Error: 13", "Row 2: Data X is \"abc\", which is no number.", false},
        {"1e39", "Error: 6 Overflow", "Row 2: Data X is 1e39, which is too large", false},
        {"1e-50", "Error: 6 Overflow", "Row 2: Data X is 1e-50, which is too", false}}) {
    SheetWorld world({"300", typed, "200"});
    world.prompts.expect_box(title, text);
    if (is_read) world.prompts.expect_box("Times of 0", "Row 2: Data X is 0");
    CheckAndFit(world.session, 1);
    EXPECT_EQ(world.session.project.fits(1).nFits, 0);
    EXPECT_EQ(world.data().is_read(), is_read) << "else the next press reads the sheet again";
    EXPECT_FALSE(world.panel().busy);
    world.sheet().enter(2, sheet_column::x, "100");
    CheckAndFit(world.session, 1);
    EXPECT_EQ(world.session.project.fits(1).nFits, 1);
  }
}

TEST(CheckAndFit, ARowWithoutATimeIsNamedAndKept) {
  SheetWorld world({"100", "", "200"});
  world.sheet().enter(2, sheet_column::comment, "lost");
  world.sheet().enter(5, sheet_column::fails, "3");
  CheckAndFit(world.session, 1);
  EXPECT_EQ(world.data().sample().total_failures, 2);
  EXPECT_NE(world.log().find("Data1: Rows 2, 4 have entries but no time: they are left out."),
            std::string::npos)
      << world.log();
  EXPECT_EQ(world.sheet().text(2, sheet_column::comment), "lost");
  EXPECT_EQ(world.sheet().text(4, sheet_column::fails), "3");
}

TEST(CheckAndFit, RowsThatCanNotBeRankedAreNotFittedAsTheyWere) {
  SheetWorld world({"100", "200", "300"});
  CheckAndFit(world.session, 1);
  world.sheet().enter(2, sheet_column::fails, "-5");
  world.panel().nMethod = method_code::y_on_x;
  world.prompts.expect_box("Error: 5", "Row 2: -5 is no number of units.");
  CheckAndFit(world.session, 1);
  EXPECT_EQ(world.session.project.fits(1).nFits, 1) << "no fit of the rows of before";
}

TEST(CheckAndFit, ModesThatNoRowHasAnyMoreGo) {
  SheetWorld world({"100", "200", "300"});
  const char* const names[] = {"bearng", "seal", "bearng"};
  for (int r = 1; r <= 3; ++r) world.sheet().enter(r, sheet_column::mode, names[r - 1]);
  CheckAndFit(world.session, 1);
  for (const int r : {1, 3}) world.sheet().enter(r, sheet_column::mode, "bearing");
  CheckAndFit(world.session, 1);
  ASSERT_EQ(world.data().ModeNames.bound(), 2);
  EXPECT_EQ(world.data().ModeNames(1), "seal") << "a known name keeps its place";
  EXPECT_EQ(world.column(sheet_column::mode),
            (std::vector<std::string>{"bearing", "seal", "bearing"}));
}

TEST(CheckAndFit, ARefitThatIsRefusedPutsNoOldNumbersIntoTheLog) {
  SheetWorld world({"100", "200"});
  CheckAndFit(world.session, 1);
  world.sheet().enter(2, sheet_column::x, "");
  world.prompts.expect_box("Insufficient points for Fit", "At least 2 points");
  CheckAndFit(world.session, 1);
  const std::string log = world.log();
  EXPECT_EQ(log.find("Tavlo Fit"), log.rfind("Tavlo Fit"));
  EXPECT_EQ(log.find("Updated Fits below"), std::string::npos) << "there are none below";
}

TEST(CheckAndFit, WithoutModelDataOrPeaceItSaysSo) {
  SheetWorld world({});
  world.panel().nModel = -1;
  CheckAndFit(world.session, 1);
  EXPECT_EQ(world.log(), "Please select a model\n");

  world.panel().nModel = 98;
  world.prompts.expect_box("Insufficient points for Fit", "At least 2 points");
  CheckAndFit(world.session, 1);

  world.panel().busy = true;
  world.views.said.clear();
  CheckAndFit(world.session, 1);
  EXPECT_TRUE(world.views.said.empty()) << "a press while busy has no effect";
}

}  // namespace
}  // namespace tavlo
