#include "project/data_sheet.h"

#include <gtest/gtest.h>

#include "support/test_world.h"

namespace tavlo {
namespace {

using test::TestWorld;

/// The first row as "x|fails|susps".
std::string cells_of(const DataSheet& sheet) {
  return sheet.text(1, sheet_column::x) + '|' + sheet.text(1, sheet_column::fails) + '|' +
         sheet.text(1, sheet_column::susps);
}

DataSheet& sheet_of(TestWorld& world) { return *world.session.gDataForm(1); }

void type(DataSheet& sheet, const std::string& text,
          EditDirection direction = EditDirection::none) {
  sheet.start_edit(text);
  sheet.finish_edit(direction);
}

TEST(DataSheet, ReadsTheNotationIntoItsColumns) {
  struct Row {
    const char* typed;
    const char* cells;
    bool negative_is_suspension = true;
  };
  const Row rows[] = {{" 100 ", "100|1|"},  {"-100", "100||1"},       {"-100", "-100|1|", false},
                      {">100", "100||1"},   {"100s", "100||1"},       {"100X5", "100|5|"},
                      {">100x5", "100||5"}, {"-100x2.5", "100||2.5"}, {"1.5k", "1500|1|"},
                      {"1e3", "1000|1|"},   {"abc", "abc||"},         {"0.1", "0.1|1|"}};
  for (const Row& row : rows) {
    TestWorld world;
    world.session.settings.NegativeSuspension = row.negative_is_suspension;
    type(sheet_of(world), row.typed);
    EXPECT_EQ(cells_of(sheet_of(world)), row.cells) << row.typed;
  }
}

TEST(DataSheet, ACountStandsUntilAnotherOneIsTyped) {
  TestWorld world;
  DataSheet& sheet = sheet_of(world);
  sheet.enter(1, sheet_column::x, "100x5");
  sheet.enter(1, sheet_column::x, "120");
  EXPECT_EQ(cells_of(sheet), "120|5|");
  sheet.enter(1, sheet_column::x, ">120");
  EXPECT_EQ(cells_of(sheet), "120|5|1") << "failures and a suspension at one time";
  sheet.enter(1, sheet_column::x, "120x2");
  EXPECT_EQ(cells_of(sheet), "120|2|1");
}

TEST(DataSheet, OnlyAChangeMakesTheReadingOld) {
  TestWorld world;
  DataSheet& sheet = sheet_of(world);
  sheet.enter(3, sheet_column::x, "100");
  EXPECT_FALSE(sheet.data().is_read());
  EXPECT_EQ(sheet.last_row(), 3);

  const auto revision = sheet.data().revision;
  sheet.enter(3, sheet_column::x, " 100 ");
  EXPECT_EQ(sheet.data().revision, revision) << "the same text again is no change";

  sheet.enter(3, sheet_column::mode, "  Broken  ");
  EXPECT_EQ(sheet.text(3, sheet_column::mode), "Broken") << "words stay as typed";
  sheet.enter(3, sheet_column::fails, "");
  EXPECT_EQ(sheet.text(3, sheet_column::fails), "") << "an emptied cell is empty, not 0";
  sheet.clear({1, 0, 3, sheet_column::comment});
  EXPECT_EQ(sheet.last_row(), 0);
}

TEST(DataSheet, TheEdgesOfTheSheetHold) {
  TestWorld world;
  DataSheet& sheet = sheet_of(world);
  type(sheet, "", EditDirection::none);
  EXPECT_EQ(sheet.row(), 1) << "Enter on nothing stays";
  type(sheet, "5", EditDirection::left);
  EXPECT_EQ(sheet.column(), sheet_column::x) << "the row numbers are not for typing";
  type(sheet, "5", EditDirection::up);
  EXPECT_EQ(sheet.row(), 1);

  const int last = sheet.rows() - 1;
  sheet.go_to(last, sheet_column::x);
  type(sheet, "9");
  EXPECT_EQ(sheet.row(), last + 1);
  EXPECT_EQ(sheet.text(last + 1, sheet_column::order), std::to_string(last + 1));
  sheet.start_edit("77");
  sheet.cancel_edit();
  sheet.end_edit();
  EXPECT_EQ(sheet.text(last + 1, sheet_column::x), "") << "Esc leaves the cell";
}

}  // namespace
}  // namespace tavlo
