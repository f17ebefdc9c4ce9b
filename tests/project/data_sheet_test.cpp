#include "project/data_sheet.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "project/ranking.h"
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
  const Row rows[] = {{" 100 ", "100|1|"},        {"-100", "100||1"},
                      {"-100", "-100|1|", false}, {">100", "100||1"},
                      {"100s", "100||1"},         {"100X5", "100|5|"},
                      {">100x5", "100||5"},       {"-100x2.5", "100||2.5"},
                      {"1.5k", "1500|1|"},        {"1e3", "1000|1|"},
                      {"abc", "abc||"},           {"0.1", "0.1|1|"},
                      {"1,5", "1,5||"},           {"1071,8", "1071,8||"},
                      {"12 34", "12 34||"},       {"1,500", "1500|1|"},
                      {"0,125", "0,125||"},       {"1234,567", "1234,567||"},
                      {"1,23,456", "1,23,456||"}, {"12,345,678", "12345678|1|"},
                      {"1.2,500", "1.2,500||"},   {"5>7", "5>7||"},
                      {"5-3", "5-3||"},           {"2e-1", "0.2|1|"},
                      {"5x1,5", "5x1,5||"},       {"700abc", "700abc||"},
                      {"12 h", "12 h||"},         {"$5", "$5||"},
                      {"100xx3", "100xx3||"},     {"100x-2", "100x-2||"},
                      {"1e400", "1e400||"},       {"50%", "0.5|1|"},
                      {"100x3s", "100||3"},       {"+7", "7|1|"},
                      {"5 hours", "5||1"}};
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
  EXPECT_EQ(sheet.remark(), "Row 1 keeps its counts: 5 in # Fail, 0 in # Susp.");
  sheet.enter(1, sheet_column::x, ">120");
  EXPECT_EQ(cells_of(sheet), "120|5|1") << "failures and a suspension at one time";
  EXPECT_EQ(sheet.remark(), "Row 1 now has 5 in # Fail, 1 in # Susp. Clear what does not hold.");
  sheet.enter(1, sheet_column::fails, "");
  EXPECT_EQ(sheet.remark(), "");
  sheet.enter(1, sheet_column::fails, "5");
  sheet.enter(1, sheet_column::x, "120x2");
  EXPECT_EQ(cells_of(sheet), "120|2|1");
  sheet.enter(1, sheet_column::x, "1050,5");
  EXPECT_EQ(sheet.remark(), "\"1050,5\" can't be read as a time.");
  sheet.enter(1, sheet_column::x, "1050,5");
  EXPECT_EQ(sheet.remark(), "") << "nothing was entered";
  world.session.settings.punctuation = {',', '.'};
  for (const char* typed : {",5", "5,", "0,5x2"}) {
    sheet.enter(2, sheet_column::x, typed);
    EXPECT_FALSE(sheet.is_unreadable(2, sheet_column::x)) << typed;
  }
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

std::vector<std::string> texts_of(const DataSheet& sheet, int row) {
  std::vector<std::string> texts;
  for (int c = sheet_column::x; c < sheet_column::count; ++c) texts.push_back(sheet.text(row, c));
  return texts;
}

std::vector<std::vector<std::string>> rows_of(const DataSheet& sheet) {
  std::vector<std::vector<std::string>> rows;
  for (int r = 1; r <= sheet.last_row(); ++r) rows.push_back(texts_of(sheet, r));
  return rows;
}

/// Few values, so that many are equal; some cells are empty, some can't be read.
void enter_any_rows(DataSheet& sheet, std::mt19937& random, int rows) {
  const char* const times[] = {"7", "10.5", ">300", "9x4", ">80x2", "junk", ""};
  const char* const words[] = {"leak", "Crack", "crack", "\xC3\xA4", ""};
  for (int row = 1; row <= rows; ++row) {
    sheet.enter(row, sheet_column::x, times[random() % std::size(times)]);
    sheet.enter(row, sheet_column::mode, words[random() % std::size(words)]);
    sheet.enter(row, sheet_column::comment, std::to_string(row));
  }
}

TEST(DataSheet, ARowLeftOutCountsForNothingAndKeepsItsCells) {
  std::mt19937 random(5);
  for (int round = 0; round < 50; ++round) {
    TestWorld all, rest;
    std::string out, in;
    for (int row = 1, kept = 0; row <= 12; ++row) {
      const std::string typed = (random() % 3 ? "" : ">") + std::to_string(random() % 9 + 1) + "x2";
      sheet_of(all).enter(row, sheet_column::x, typed);
      const bool is_out = row > 1 && random() % 3 == 0;
      const auto cells = texts_of(sheet_of(all), row);
      sheet_of(all).leave_out({row, 1, row, 1}, is_out);
      EXPECT_EQ(texts_of(sheet_of(all), row), cells);
      if (!is_out) sheet_of(rest).enter(++kept, sheet_column::x, typed);
    }
    for (TestWorld* world : {&all, &rest})
      Make_Ranks(world->session.errors, true, world->session.project.data(1));
    const Sample& found = sheet_of(all).data().sample();
    const Sample& wanted = sheet_of(rest).data().sample();
    EXPECT_EQ(found.time, wanted.time);
    EXPECT_EQ(found.rank, wanted.rank);
    EXPECT_EQ(found.total_suspensions, wanted.total_suspensions);
    EXPECT_EQ(sheet_of(all).left_out_rows() + sheet_of(rest).last_row(), 12);
    for (int row = 1; row <= 12; ++row)
      EXPECT_TRUE(!sheet_of(all).is_left_out(row) ||
                  sheet_of(all).text(row, sheet_column::y) == "");
    sheet_of(all).leave_out({1, 1, 30, 1}, false);
    EXPECT_EQ(sheet_of(all).left_out_rows(), 0);
    EXPECT_FALSE(sheet_of(all).data().is_read());
  }
}

TEST(DataSheet, SortingKeepsTheRowsAndEqualOnesInTheirOrder) {
  std::mt19937 random(7);
  for (int round = 0; round < 60; ++round) {
    TestWorld world;
    DataSheet& sheet = sheet_of(world);
    enter_any_rows(sheet, random, 25);
    const int column = static_cast<int>(random() % 5) + 1;
    auto wanted = rows_of(sheet);
    const bool falls = random() % 2 != 0;
    const auto value = [&](const std::vector<std::string>& row) {
      std::string text = row[static_cast<std::size_t>(column) - 1];
      for (char& c : text) c = static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
      const bool is_number = column != sheet_column::mode && text != "junk" && !text.empty();
      return std::tuple(text.empty()     ? 2
                        : text == "junk" ? 1
                                         : 0,
                        is_number ? (falls ? -1 : 1) * std::stod(text) : 0.0,
                        is_number ? std::string() : text);
    };
    std::stable_sort(wanted.begin(), wanted.end(), [&](const auto& a, const auto& b) {
      const auto x = value(a), y = value(b);
      if (!falls || std::get<0>(x) != std::get<0>(y)) return x < y;
      return std::pair(std::get<1>(x), std::get<2>(y)) < std::pair(std::get<1>(y), std::get<2>(x));
    });
    sheet.sort_by(column, falls ? SortOrder::descending : SortOrder::ascending);
    EXPECT_EQ(rows_of(sheet), wanted) << column << falls;
    EXPECT_FALSE(sheet.data().is_read());
  }
}

TEST(DataSheet, RowsComeAndGoAndAreFilled) {
  std::mt19937 random(9);
  for (int round = 0; round < 40; ++round) {
    TestWorld world;
    DataSheet& sheet = sheet_of(world);
    enter_any_rows(sheet, random, 20);
    const auto before = rows_of(sheet);
    const int first = static_cast<int>(random() % 20) + 1,
              count = static_cast<int>(random() % 6) + 1;
    const GridBlock block{first, 1, first + count - 1, 3};
    ASSERT_TRUE(sheet.insert_rows(block));
    EXPECT_EQ(sheet.last_row(), 20 + count);
    EXPECT_EQ(texts_of(sheet, first), std::vector<std::string>(6));
    EXPECT_EQ(texts_of(sheet, first + count), before[static_cast<std::size_t>(first) - 1]);
    sheet.delete_rows(block);
    EXPECT_EQ(rows_of(sheet), before);
  }
  TestWorld world;
  DataSheet& sheet = sheet_of(world);
  sheet.enter(1, sheet_column::x, ">70x3");
  sheet.enter(3, sheet_column::x, "5");
  sheet.fill_down({1, sheet_column::x, 4, sheet_column::x});
  for (const int row : {2, 4}) EXPECT_EQ(texts_of(sheet, row), texts_of(sheet, 1));
  EXPECT_EQ(texts_of(sheet, 3), (std::vector<std::string>{"70", "", "1", "", "", ""}));
  sheet.enter(4, sheet_column::comment, "last");
  sheet.fill_down({5, sheet_column::comment, 5, sheet_column::comment});
  EXPECT_EQ(sheet.text(5, sheet_column::comment), "last") << "one row is filled from above";
  EXPECT_FALSE(sheet.insert_rows({1, 1, most_data_rows, 1}));
  sheet.delete_rows({1, 1, 900, 1});
  EXPECT_EQ(sheet.last_row(), 0);
}

}  // namespace
}  // namespace tavlo
