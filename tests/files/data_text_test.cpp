#include "files/data_text.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "fuzz/data_text_law.h"
#include "numerics/number_text.h"
#include "support/case_list.h"
#include "support/test_world.h"

namespace tavlo {
namespace {

/// "x fails susps mode comment" of each row, for comparing whole sets.
std::string summary(const DataSet& data) {
  std::string text;
  for (std::size_t i = 0; i < data.rows.size(); ++i) {
    const SheetRow& row = data.rows[i];
    text += i > 0 ? "; " : "";
    text += number_text(static_cast<double>(row.time), 6) + ' ' + number_text(row.failures, 6) +
            ' ' + number_text(row.suspensions, 6);
    if (row.mode != 0) text += ' ' + data.ModeNames(row.mode);
    if (const auto& comment = row.text(sheet_column::comment); !comment.empty())
      text += " '" + comment + "'";
  }
  return text;
}

/// A fault leaves the set as it was.
std::string read(std::string_view text, const ReadOptions& options = {}) {
  DataSet data = test::make_data({{5}, {6}});
  const auto fault = read_data_text(text, options, data);
  EXPECT_TRUE(!fault || summary(data) == "5 1 0; 6 1 0") << text;
  return fault ? std::to_string(fault->line) + ": " + fault->what : summary(data);
}

/// A text of the basic plane or beyond in UTF-16.
std::string wide(std::u16string_view text, bool big_end, bool mark) {
  std::string bytes;
  const auto add = [&](char16_t unit) {
    const char high = static_cast<char>(unit >> 8), low = static_cast<char>(unit & 0xFF);
    bytes += big_end ? high : low;
    bytes += big_end ? low : high;
  };
  if (mark) add(0xFEFF);
  for (const char16_t unit : text) add(unit);
  return bytes;
}

// Spreadsheets save "Unicode text" so.
TEST(DataText, ReadsUtf16WithItsLetters) {
  for (const bool big_end : {false, true})
    for (const bool mark : {false, true}) {
      EXPECT_EQ(read(wide(u"100\r\n>200\r\n", big_end, mark)), "100 1 0; 200 0 1");
      EXPECT_EQ(read(wide(u"x\tstatus\tcomment\n1\tF\tPr\u00FCfung \u6F22 \U0001F600\n2\tS\t\n",
                          big_end, mark)),
                "1 1 0 'Pr\u00FCfung \u6F22 \U0001F600'; 2 0 1");
      if (!mark) continue;
      const std::string good = wide(u"1\n2\n", big_end, mark);
      EXPECT_EQ(read(good + '7'), "3: the UTF-16 text ends in half a character");
      for (const char16_t half : {u'\xD83D', u'\xDE00'})
        EXPECT_EQ(read(good + wide(std::u16string(2, half), big_end, false)),
                  "3: the UTF-16 text is broken");
      EXPECT_EQ(read(good + wide(std::u16string_view(u"\0\n", 2), big_end, false)),
                "3: there is a NUL byte; this is no text");
    }
  EXPECT_EQ(read(std::string_view("\xFF\xFE\0\0"
                                  "1\0\0\0",
                                  8)),
            "1: this is UTF-32 text; save it as UTF-8");
}

TEST(DataText, ALongTextTellsHowFarItIsAndCanBeStopped) {
  std::string notation, table;
  for (int i = 0; i < 50'000; ++i) notation += "12345\n", table += "12345,F\n";
  for (const std::string& text : {notation, "x,status\n" + table, table})
    for (const std::size_t stop_at : {0U, 3U}) {
      test::FakeProgress progress;
      progress.stop_at = stop_at;
      DataRows rows;
      const auto fault = read_data_rows(text, {}, rows, &progress);
      EXPECT_EQ(fault && fault->stopped, stop_at > 0);
      EXPECT_EQ(rows.rows.size(), stop_at > 0 ? 0U : 50'000U);
      EXPECT_EQ(progress.shares.size(), stop_at > 0 ? stop_at : 12U);
      EXPECT_TRUE(std::is_sorted(progress.shares.begin(), progress.shares.end()));
      EXPECT_NEAR(progress.shares.front(), 4096.0 / 50'000, 0.02);
    }
}

// Every form, what spreadsheets, fleets and other programs write, and what is refused.
TEST(DataText, IsReadAsPeopleMeanItOrRefusedInTheirWords) {
  for (const auto& texts : test::case_list("data_texts.txt")) {
    EXPECT_EQ(read(texts[0]), texts[1]) << texts[0];
    EXPECT_EQ(test::breach_of_data_text_law(texts[0]), "") << texts[0];
  }
  EXPECT_EQ(read(std::string(70000, '1')), "1: the line is too long");
  const std::string letters(39, 'a');  // the cut falls into the letter behind them
  EXPECT_EQ(read("1\n" + letters + "\xC3\xBC and more"), "2: '" + letters + "...' is not a number");
}

// A comma that may mean two things is never guessed; said once, it is read.
TEST(DataText, ADoubtfulCommaIsRefusedUntilItsMeaningIsSaid) {
  for (const auto& row : test::case_list("doubtful_commas.txt")) {
    DataSet data;
    const auto fault = read_data_text(row[0], {}, data);
    ASSERT_TRUE(fault && fault->comma_in_doubt) << row[0];
    EXPECT_EQ(std::to_string(fault->line), row[1]) << row[0];
    EXPECT_EQ(read(row[0], {.decimal = DecimalSign::comma}), row[2]) << row[0];
    EXPECT_EQ(read(row[0], {.decimal = DecimalSign::point}).substr(0, 60), row[3]) << row[0];
  }
  EXPECT_NE(read("1,5\n1.000\n", {.decimal = DecimalSign::comma}).find("full stop"),
            std::string::npos);
}

TEST(DataText, ColumnsAndStatusAreReadAsTheyAreNamed) {
  const std::string_view fleet = "time,Stunden,Ausfall,x\n1,4,Ja,F\n2,5,nein,F\n";
  const ReadOptions named{.columns = {{DataColumn::x, "stunden"}, {DataColumn::status, "Ausfall"}},
                          .failed = {"ja"}};
  EXPECT_EQ(read(fleet, named), "4 1 0; 5 0 1");
  EXPECT_EQ(read("x,broken\n4,yes\n5,no\n", {.columns = {{DataColumn::status, ""}}}),
            "4 1 0; 5 1 0");
  EXPECT_EQ(read("x\n4\n", {.columns = {{DataColumn::mode, "m"}}}),
            "1: there is no column 'm' (the header names 'x')");
  EXPECT_EQ(read("4;ja\n5;nein\n", {.failed = {"ja"}}), "4 1 0; 5 0 1");
  EXPECT_EQ(
      read("x,Ausfall\n4,ja\n", {.failed = {"ja"}}),
      "1: no column is known as a status; name it in File > Import, or with --columns status=NAME");
  EXPECT_EQ(read("4,ja\n", named), "1: there is no column 'stunden' (the header names '4', 'ja')");
  EXPECT_EQ(read("4\n", named), "1: there is no header line that names columns");
  EXPECT_EQ(read("-5\n>-7\n3\n", {.negative_is_value = true}), "-5 1 0; -7 0 1; 3 1 0");
}

}  // namespace
}  // namespace tavlo
