#include "actions/clipboard_text.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "support/case_list.h"
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

// The text goes through the reader of files; the person sees what was taken, or a box.
TEST(Paste, IsReadAndSaidOrRefusedAndTheSheetStaysAsItWas) {
  for (const auto& row : test::case_list("pastes.txt")) {
    TestWorld world;
    const bool refused = row[1] == "refused";
    paste(world, refused ? "42" : "");
    world.views.said.clear();
    const auto revision = sheet_of(world).data().revision;
    if (refused) world.prompts.expect_box(paste_title, row[2]);
    paste(world, row[0]);
    world.prompts.verify();
    EXPECT_EQ(shown(world), refused ? "42|1|" : row[1]) << row[0];
    EXPECT_EQ(sheet_of(world).data().revision == revision, shown(world) == "" || refused) << row[0];
    EXPECT_EQ(world.views.count("status " + row[2]), refused || row[2].empty() ? 0 : 1) << row[0];
  }
}

TEST(Paste, SaysWhatStaysOfTheSelectedRows) {
  TestWorld world;
  paste(world, "1\n2\n3\n4\n5");
  sheet_of(world).go_to(1, 1);
  sheet_of(world).select_to(30, 1);
  paste(world, "7\n8\n9");
  EXPECT_EQ(world.views.said.back(),
            "status 3 rows: 3 failures, 0 suspensions; rows 4 to 5 stay as before");
  paste(world, "7\n8\n9\n10");
  EXPECT_EQ(world.views.said.back(),
            "status 4 rows: 4 failures, 0 suspensions; row 5 stays as before");
}

TEST(Paste, ADecimalCommaIsNoColumn) {
  TestWorld world;
  world.session.settings.punctuation = {',', '.'};
  paste(world, "1,5\n1.234,5\n>2,5x3\n7.5");
  EXPECT_EQ(shown(world), "1.5|1| 1234.5|1| 2.5||3 7.5|1|");
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

TEST(Paste, APictureIsSaidAndATextBesideItTaken) {
  TestWorld world;
  world.clipboard.picture = {{"image/png", "PNG"}};
  const auto revision = sheet_of(world).data().revision;
  paste(world, "");
  EXPECT_EQ(world.views.said.back(),
            "status The clipboard holds a picture; copy the rows as text.");
  EXPECT_EQ(sheet_of(world).data().revision, revision);
  paste(world, "7");
  EXPECT_EQ(shown(world), "7|1|");
}

TEST(Paste, MoreRowsThanAPasteTakesAreRefusedBeforeAllAreRead) {
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

TEST(Paste, NearTheEndOfTheSheetTheRoomThatIsLeftIsTold) {
  for (const int column : {sheet_column::x, sheet_column::comment})
    for (const auto& [left, words] :
         {std::pair(5, "There is room for 5 rows here."), {1, "There is room for 1 row here."}}) {
      TestWorld world;
      const int row = most_data_rows - left + 1;
      sheet_of(world).enter(row, column, "");  // shows it
      sheet_of(world).go_to(row, column);
      world.prompts.expect_box(paste_title, words);
      paste(world, "1\n2\n3\n4\n5\n6\n");
      world.prompts.verify();
      EXPECT_EQ(sheet_of(world).last_row(), 0);
    }
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
  for (const char* words :
       {"/picture.png\nLine 3: there is a NUL byte", "/none\nthere is no such file"}) {
    world.prompts.expect_box(paste_title, words);
    drop_file(world.session, 1, std::string(words, std::strchr(words, '\n')));
  }
  EXPECT_EQ(shown(world), "7|2| 200||1");
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

TEST(Cut, TakesNothingThatItDoesNotCopy) {
  TestWorld world;
  DataSheet& sheet = sheet_of(world);
  paste(world, "10\r\n20x3\r\n>30\r\n");
  sheet.enter(2, sheet_column::mode, "wear");
  sheet.enter(4, sheet_column::x, "junk");
  sheet.enter(5, sheet_column::fails, "3");
  sheet.go_to(1, 0);
  sheet.select_to(6, sheet_column::comment);
  CutClip(world.session, 1);
  EXPECT_EQ(world.clipboard.plain, "10\r\n20x3\r\n>30\r\n");
  EXPECT_EQ(shown(world), "|| || || junk|| |3|");
  EXPECT_EQ(sheet.text(2, sheet_column::mode), "wear");
  EXPECT_EQ(world.session.step, "Cut");
  EXPECT_EQ(world.views.said.back(),
            "status Cut: times and counts. What they are not, as modes, stays.");
}

TEST(Copy, ForSpreadsheetsHasHeadingsAndTheNumbersOfTheLocale) {
  TestWorld world;
  world.session.settings.punctuation = {',', '.'};
  DataSheet& sheet = sheet_of(world);
  sheet.enter(1, sheet_column::x, "0.5x3");
  sheet.enter(1, sheet_column::comment, "<a & \t b> 1.5");
  sheet.enter(2, sheet_column::x, ">12");
  sheet.leave_out({2, 1, 2, 1}, true);
  sheet.go_to(1, sheet_column::x);
  sheet.select_to(30, sheet_column::comment);
  copy_table(world.session, 1);
  EXPECT_EQ(world.clipboard.plain,
            "Data X\tData Y\t# Fail\t# Susp\tFail mode\tComments\r\n"
            "0,5\t\t3\t\t\t<a &   b> 1.5\r\n12\t\t\t1\t\t\r\n");
  for (const char* part :
       {"<th># Fail</th>", "<td align=\"right\">0,5</td>", "&lt;a &amp;   b&gt;"})
    EXPECT_NE(world.clipboard.html.find(part), std::string::npos) << part;
  EXPECT_EQ(world.views.said.back(),
            "status Copied: 2 rows, 1 of them left out of the analysis here");
  sheet.go_to(1, sheet_column::x);
  CopyClip(world.session, static_cast<const CellTable&>(sheet));
  EXPECT_EQ(world.clipboard.plain, "0,5\r\n") << "one cell goes alone";
}

}  // namespace
}  // namespace tavlo
