#include "files/intake.h"

#include <gtest/gtest.h>

#include "files/sync_data.h"
#include "support/test_world.h"

namespace tavlo {
namespace {

using test::TestWorld;

struct SheetWorld : TestWorld {
  explicit SheetWorld(const std::vector<std::string>& typed) {
    int row = 0;
    for (const std::string& text : typed) sheet().enter(++row, sheet_column::x, text);
    panel().nModel = 98;
    panel().nMethod = 0;
  }
  DataSheet& sheet() { return *session.gDataForm(1); }
  FitPanel& panel() { return *session.gFitForm(1); }
  DataSet& data() { return session.gData(1); }
  std::string log() { return session.log.plain(); }
  std::vector<std::string> column(int column) {
    std::vector<std::string> texts;
    for (int r = 1; r <= sheet().lrows; ++r) texts.push_back(sheet().grd_Data.text(r, column));
    return texts;
  }
};

TEST(Intake, TheRecordIsSortedWhileTheSheetKeepsTheOrderOfEntry) {
  SheetWorld world({"300", "100", "", "", ">200x3", "100x2"});
  bool clean = true;
  CheckDirtyData(world.session, 1, clean, true);
  EXPECT_FALSE(clean);
  ASSERT_EQ(world.data().Count, 4) << "empty rows are gone";
  const float sorted[] = {100, 100, 200, 300};
  const int order[] = {2, 4, 3, 1};
  for (int i = 1; i <= 4; ++i) {
    EXPECT_EQ(world.data().Points(i).X, sorted[i - 1]);
    EXPECT_EQ(world.data().Points(i).Order, order[i - 1]);
  }
  EXPECT_EQ(world.data().Points(0).Fails, 4);
  EXPECT_EQ(world.data().Points(0).Susps, 3);
  EXPECT_EQ(world.column(sheet_column::x), (std::vector<std::string>{"300", "100", "200", "100"}));
  EXPECT_EQ(world.column(sheet_column::y)[2], "") << "a suspension has no rank";
  EXPECT_NE(world.column(sheet_column::y)[1], "");
  EXPECT_EQ(world.log(), "Data1\n100, 2x100, 3x200S, 300\n");
  EXPECT_TRUE(world.sheet().bclean);

  CheckDirtyData(world.session, 1, clean, true);
  EXPECT_TRUE(clean) << "nothing to do the second time";
}

TEST(Intake, SortRawLosesTheOrderOfEntry) {
  SheetWorld world({"300", "100", "200"});
  world.session.settings.SortRaw = true;
  bool clean = true;
  CheckDirtyData(world.session, 1, clean, true);
  EXPECT_EQ(world.column(sheet_column::x), (std::vector<std::string>{"100", "200", "300"}));
}

TEST(Intake, OnlyShortSetsAreListed) {
  for (const int rows : {29, 30}) {
    SheetWorld world({});
    for (int r = 1; r <= rows; ++r)
      world.sheet().enter(r, sheet_column::x, std::to_string(100 + r));
    bool clean = true;
    CheckDirtyData(world.session, 1, clean, false);
    EXPECT_EQ(world.log().empty(), rows == 30) << rows;
    EXPECT_FALSE(world.sheet().bclean) << "without a refit the sheet stays out of step";
  }
}

TEST(Intake, ARankShownRoundedDoesNotReplaceTheRank) {
  SheetWorld world({"100", "200", "300"});
  bool clean = true;
  CheckDirtyData(world.session, 1, clean, true);
  const float rank = world.data().Points(1).Y;
  world.data().Points(0).Order |= 1;  // ranks of its own: ranking leaves them alone
  Sync_Data(world.session, 1, true, false);
  EXPECT_EQ(world.data().Points(1).Y, rank);
  world.sheet().enter(1, sheet_column::y, "0.25");
  Sync_Data(world.session, 1, true, false);
  EXPECT_EQ(world.data().Points(1).Y, 0.25f);
}

TEST(Intake, FailureModesGetTheirNumbersByName) {
  SheetWorld world({"100", "200", "300"});
  world.sheet().enter(1, sheet_column::mode, "worn");
  world.sheet().enter(3, sheet_column::mode, "broken");
  world.sheet().enter(2, sheet_column::mode, "worn");
  world.sheet().enter(2, sheet_column::comment, " lot 7 ");
  Sync_Data(world.session, 1, true, false);
  EXPECT_EQ(world.data().nModes, 2);
  EXPECT_EQ(world.data().Points(2).Mode, 1);
  EXPECT_EQ(world.data().ModeNames(world.data().Points(3).Mode), "broken");
  EXPECT_EQ(world.data().Points(2).Comment, "lot 7");
}

TEST(Intake, TheSheetShowsThirtyRowsOrOneMoreThanItHolds) {
  for (const auto& [points, rows] : {std::pair{12, 31}, {30, 31}, {31, 32}}) {
    TestWorld world;
    world.session.gData(1) =
        test::make_data(std::vector<test::Point>(static_cast<std::size_t>(points), test::Point{5}));
    Sync_Data(world.session, 1, false, false);
    EXPECT_EQ(world.session.gDataForm(1)->grd_Data.rows(), rows) << points;
  }
}

TEST(Intake, ASetOutsideTheProjectGetsItsBox) {
  TestWorld world;
  world.prompts.expect_box(
      "Sync_Data: Array out of range.",
      "ID number out of bounds while updating Data.  Data file may be missing");
  Sync_Data(world.session, 2, true, true);
}

TEST(CheckAndFit, FitsLogsAndFreesTheButton) {
  SheetWorld world(
      {"54", "187", "216", "240", "244", "335", "361", "373", "375", "386", ">500x10"});
  world.panel().nMethod = 1;
  CheckAndFit(world.session, 1);
  const FitSet& fits = world.session.gFit(1);
  ASSERT_EQ(fits.nFits, 1);
  EXPECT_NEAR(fits.Fits(1).Rows(1).Shape, 1.7208, 5e-5);
  EXPECT_NEAR(1.0 / fits.Fits(1).Rows(1).Scale, 606.528, 5e-4);
  EXPECT_NEAR(fits.Fits(1).Quality, -75.1346, 5e-5);
  EXPECT_FALSE(world.panel().busy);
  EXPECT_EQ(world.views.count("button 1 working"), 1);
  EXPECT_NE(world.log().find("eta: \t606.5276\tbeta: \t1.720797"), std::string::npos)
      << "[" << world.log() << "]";
}

TEST(CheckAndFit, ChangedDataAreFittedAgainAndTheFitAskedForIsLogged) {
  SheetWorld world({"100", "200", "300"});
  CheckAndFit(world.session, 1);
  const double before = world.session.gFit(1).Fits(1).Rows(1).Scale;
  world.sheet().enter(4, sheet_column::x, "900");
  CheckAndFit(world.session, 1);
  EXPECT_EQ(world.session.gFit(1).nFits, 1);
  EXPECT_LT(world.session.gFit(1).Fits(1).Rows(1).Scale, before);
  const std::string log = world.log();
  EXPECT_NE(log.find("Data Sets have changed.  Updated Fits below."), std::string::npos);
  const auto first = log.find("Tavlo Fit");
  const auto second = log.find("Tavlo Fit", first + 1);
  EXPECT_NE(second, std::string::npos) << "the new numbers belong in the log";
  EXPECT_EQ(log.find("Tavlo Fit", second + 1), std::string::npos);
}

TEST(CheckAndFit, LettersInTheNumberColumnAreNamedByTheirRow) {
  SheetWorld world({"300", "100", "abc", "200"});
  world.prompts.expect_box("Error: 5", "Median Rank Error: \nRow 3: Data X is 0");
  world.prompts.expect_box("Error: 5", "Weibull 123Par Fit: \nRow 3: Data X is 0");
  CheckAndFit(world.session, 1);
  EXPECT_EQ(world.session.gFit(1).nFits, 0);
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
