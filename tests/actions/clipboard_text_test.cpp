#include "actions/clipboard_text.h"

#include <gtest/gtest.h>

#include <random>

#include "support/test_world.h"

namespace tavlo {
namespace {

using test::TestWorld;

constexpr const char* paste_title = "Tavlo undetermined Quellmarch Weibull Paste.";

DataSheet& sheet_of(TestWorld& world) { return *world.session.gDataForm(1); }

void paste(TestWorld& world, const std::string& text) {
  world.clipboard.plain = text;
  PasteClip(world.session, 1);
}

/// Rows as "x|fails|susps", joined by blanks.
std::string shown(TestWorld& world) {
  std::string text;
  DataSheet& sheet = sheet_of(world);
  for (int r = 1; r <= sheet.last_row(); ++r) {
    if (r > 1) text += ' ';
    text += sheet.text(r, sheet_column::x) + '|' + sheet.text(r, sheet_column::fails) + '|' +
            sheet.text(r, sheet_column::susps);
  }
  return text;
}

TEST(Paste, ReadsTheShapesThatOtherProgramsWrite) {
  const std::pair<const char*, const char*> rows[] = {
      {"100\r\n200\r\n", "100|1| 200|1|"},
      {"100\r200\r", "100|1| 200|1|"},
      {"100\n\n200\n", "100|1| 200|1|"},
      {"100x3\n>100x5\n-7", "100|3| 100||5 7||1"},
      {"100\t2\t1\n200\t\t4", "100|2|1 200||4"},
      {"100\t1\t0\n200\t2\t\n300\t\t", "100|1|0 200|2| 300|1|"},
      {"100 2\n200  3", "100|2| 200|3|"},
      {">100\t5", "100||5"},
      {"3.3E+33\t-2.9E+29", "0|0|"},
      {"1.5k", "1500|1|"},
      {"", ""},
      {" \n ", ""}};
  for (const auto& [clipboard, sheet] : rows) {
    TestWorld world;
    paste(world, clipboard);
    EXPECT_EQ(shown(world), sheet) << clipboard;
  }
}

TEST(Paste, ADecimalCommaIsNoColumn) {
  TestWorld world;
  world.session.settings.punctuation = {',', '.'};
  paste(world, "1,5\n1.234,5\n>2,5x3\n7.5");
  EXPECT_EQ(shown(world), "1.5|1| 1234.5|1| 2.5||3 7.5|1|");
}

// The text goes through the reader of files, and the person sees what was taken.
TEST(Paste, TablesAreReadAndTheirTotalsSaid) {
  const std::tuple<const char*, const char*, const char*> rows[] = {
      {"100\t1\n200\t0\n", "100|1| 200||1", "2 rows: 1 failure, 1 suspension"},
      {"time\tF\n7.1\t3\n", "7.1|3|", "1 row: 3 failures, 0 suspensions"},
      {"# h\nTime;Status\n100,5;F\n1e6;S\n", "100.5|1| 1000000||1",
       "2 rows: 1 failure, 1 suspension"},
      {"100\t2\t1", "100|2|1", "1 row: 2 failures, 1 suspension"}};
  for (const auto& [clipboard, sheet, words] : rows) {
    TestWorld world;
    paste(world, clipboard);
    EXPECT_EQ(shown(world), sheet) << clipboard;
    EXPECT_EQ(world.views.said.back(), std::string("status ") + words);
  }
}

TEST(Paste, ACommaInDoubtIsAskedOnce) {
  const std::pair<BoxAnswer, const char*> rows[] = {{BoxAnswer::yes, "1071.8|1| 1069.3|1|"},
                                                    {BoxAnswer::no, "1071|8| 1069|3|"},
                                                    {BoxAnswer::cancel, ""}};
  for (const auto& [answer, sheet] : rows) {
    TestWorld world;
    world.prompts.expect_box("Decimal comma", "Is it a decimal sign?", answer);
    paste(world, "1071,8\n1069,3\n");
    EXPECT_EQ(shown(world), sheet);
  }
}

TEST(Paste, WordsAreRefusedAndTheSheetStaysAsItWas) {
  const std::pair<std::string, const char*> rows[] = {
      {"Colour\n100", "Line 1: 'Colour' is neither a point"},
      {"1/2/2024\n1/3/2024", "Line 1: '1/2/2024' is a date; a time to failure is wanted"},
      {std::string("1\0"
                   "0\n20",
                   5),
       "Line 1: there is a NUL byte"},
      {"100\n200\nend", "Line 3: 'end' is not a number."},
      {"100\n12:30", "Line 2: '12:30' is a time of day"},
      {"1/2/2024 10:00\n1/3/2024 11:30", "'1/2/2024"},
      {"time\n31.12.2024", "Line 2: '31.12.2024' is a date"},
      {"1-Jan-24\tF\n5-Jan-24\tS", "a date"},
      {"100\t1\n\t5", "Line 2: the time is missing."}};
  for (const auto& [clipboard, words] : rows) {
    TestWorld world;
    paste(world, "42");
    const auto revision = sheet_of(world).data().revision;
    world.prompts.expect_box(paste_title, words);
    paste(world, clipboard);
    EXPECT_EQ(shown(world), "42|1|") << clipboard;
    EXPECT_EQ(sheet_of(world).data().revision, revision);
  }
}

TEST(Paste, WhatIsNoTextIsSaidAndChangesNothing) {
  for (const bool picture : {true, false}) {
    TestWorld world;
    paste(world, "42");
    const auto revision = sheet_of(world).data().revision;
    if (picture) world.clipboard.picture = {{"image/png", "PNG"}};
    paste(world, "");
    EXPECT_EQ(world.views.said.back(),
              picture ? "status The clipboard holds a picture; copy the rows as text."
                      : "status There is no text on the clipboard.");
    EXPECT_EQ(sheet_of(world).data().revision, revision);
    paste(world, "7");
    EXPECT_EQ(shown(world), "7|1|") << "a text beside a picture is taken";
  }
}

TEST(Paste, MoreRowsThanASheetTakesAreRefusedBeforeAllAreRead) {
  std::string many;
  while (many.size() < 20'000'000) many += "1234\n";
  TestWorld world;
  world.prompts.expect_box(paste_title, "Line 1000001: there are more than 1000000 rows.");
  paste(world, many);
  EXPECT_EQ(shown(world), "");
  EXPECT_LT(world.progress.shares.back(), 0.3);
  world.progress.stop_at = world.progress.shares.size() + 10;
  paste(world, many);
  EXPECT_EQ(world.views.said.back(), "status Stopped; nothing was entered.");
  EXPECT_EQ(shown(world), "");
  EXPECT_EQ(world.views.count("busy"), world.views.count("ready"));
}

TEST(Paste, ALineWithoutEndIsRefusedInAnyColumn) {
  for (const int column : {sheet_column::x, sheet_column::fails, sheet_column::comment})
    for (const std::string part : {"1", "1\t", "1 "}) {
      TestWorld world;
      sheet_of(world).go_to(1, column);
      world.prompts.expect_box(paste_title, "Line 2: the line is too long.");
      std::string text = "100\n";
      while (text.size() < 70'000) text += part;
      paste(world, text);
      EXPECT_EQ(sheet_of(world).last_row(), 0);
    }
}

TEST(Drop, ATextOrAFileGoesInAsAPasteDoes) {
  TestWorld world;
  drop_text(world.session, 1, "100\t1\n200\t0\n");
  EXPECT_EQ(shown(world), "100|1| 200||1");
  EXPECT_EQ(world.views.said.back(), "status 2 rows: 1 failure, 1 suspension");
  EXPECT_EQ(world.session.step, "Drop");
  using namespace std::string_literals;
  world.files.files["/unicode.csv"] = "\xFF\xFEx\0,\0F\0\n\0007\0,\0002\0"s;
  drop_file(world.session, 1, "/unicode.csv");
  EXPECT_EQ(shown(world), "7|2| 200||1");
  world.files.files["/picture.png"] = "\x89PNG\r\n\x1A\n\0\0\0\rIHDR"s;
  world.prompts.expect_box(paste_title, "/picture.png\nLine 3: there is a NUL byte");
  drop_file(world.session, 1, "/picture.png");
  world.prompts.expect_box(paste_title, "/none\nthere is no such file");
  drop_file(world.session, 1, "/none");
  world.files.fail_at(1, FileFault::device_error);
  world.prompts.expect_box(paste_title, "/unicode.csv\nfault made for the test");
  drop_file(world.session, 1, "/unicode.csv");
  EXPECT_EQ(shown(world), "7|2| 200||1");
}

TEST(Paste, GoesInFromTheCurrentCellOnAndReplacesWhatStoodThere) {
  TestWorld world;
  paste(world, "1x7\n2x7\n3x7");
  sheet_of(world).go_to(2, sheet_column::x);
  paste(world, "20\n30\n40");
  EXPECT_EQ(shown(world), "1|7| 20|1| 30|1| 40|1|");
  sheet_of(world).go_to(1, sheet_column::fails);
  paste(world, "5\n6");
  EXPECT_EQ(shown(world), "1|5| 20|6| 30|1| 40|1|");
  world.prompts.expect_box(paste_title, "Line 2: \"1/2/2024\" is a date");
  paste(world, "8\n1/2/2024");
  EXPECT_EQ(shown(world), "1|5| 20|6| 30|1| 40|1|");
  sheet_of(world).go_to(1, sheet_column::order);
  paste(world, "11\t2\t3");
  EXPECT_EQ(shown(world), "11|2|3 20|6| 30|1| 40|1|") << "order numbers are the program's";
}

TEST(Copy, PastedBackItIsTheSameData) {
  std::mt19937_64 random(3);
  for (int round = 0; round < 100; ++round) {
    TestWorld world;
    std::string text;
    for (int i = 0; i < 10; ++i) {
      if (random() % 2) text += '>';
      text += std::to_string(random() % 1000 + 1);
      if (random() % 2) text += 'x' + std::to_string(random() % 20 + 2);
      text += "\r\n";
    }
    paste(world, text);
    sheet_of(world).go_to(1, 0);
    sheet_of(world).select_to(10, sheet_column::comment);
    CopyClip(world.session, 1);
    EXPECT_EQ(world.clipboard.plain, text);
  }
}

}  // namespace
}  // namespace tavlo
