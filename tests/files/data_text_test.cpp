#include "files/data_text.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "numerics/number_text.h"
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

std::string read(std::string_view text, const ReadOptions& options = {}) {
  DataSet data;
  const auto fault = read_data_text(text, options, data);
  return fault ? std::to_string(fault->line) + ": " + fault->what : summary(data);
}

using Case = std::pair<std::string_view, const char*>;

TEST(DataText, ReadsEveryForm) {
  const Case cases[] = {
      {"100", "100 1 0"},
      {"100x3\n>50\n>20x5\n-7\n", "100 3 0; 50 0 1; 20 0 5; 7 0 1"},
      {"9\n>4\n4\n>9\n4x2\n", "9 1 0; 4 0 1; 4 1 0; 9 0 1; 4 2 0"},
      {"\n# remark\n  7 X 2.5 \n\t> .5x2\n+3e1", "7 2.5 0; 0.5 0 2; 30 1 0"},
      {"1\r\n2\r\n", "1 1 0; 2 1 0"},
      {"1\r2\r#x\r3", "1 1 0; 2 1 0; 3 1 0"},
      {"\xEF\xBB\xBF"
       "1\n2",
       "1 1 0; 2 1 0"},
      {"TIME,Status,Count\n4,f,3\n2,S,\n6,1,1\n8,0,2\n", "4 3 0; 2 0 1; 6 1 0; 8 0 2"},
      {"susps\tx\tfails\n1\t4\t2\n\t3\t1\n", "4 2 1; 3 1 0"},
      {"Suspensions,Failures,x\n2,0,9\n", "9 0 2"},
      {"x,mode,comment\n1,wear,\"a \"\"b\"\", c\"\n2,,\n3, wear ,x\n4,burst,\n",
       "1 1 0 wear 'a \"b\", c'; 2 1 0; 3 1 0 wear 'x'; 4 1 0 burst"},
      {"# first\n\nx,comment\n#no\n1,\"two\nlines\"\n\n2,end", "1 1 0 'two\nlines'; 2 1 0 'end'"},
      {"x,comment\r1,a\r2,b\r", "1 1 0 'a'; 2 1 0 'b'"},
      {"x,comment\n1,M\xFCller\n2,M\xC3\xBCller\n",
       "1 1 0 'M\xC3\xBCller'; 2 1 0 'M\xC3\xBCller'"}};
  for (const auto& [text, expected] : cases) EXPECT_EQ(read(text), expected) << text;
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
  std::string notation, table = "x,status\n";
  for (int i = 1; i <= 50'000; ++i) {
    notation += std::to_string(i) + '\n';
    table += std::to_string(i) + ",F\n";
  }
  for (const std::string& text : {notation, table, table.substr(9)})
    for (const std::size_t stop_at : {0U, 1U, 3U}) {
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

// What spreadsheets, fleets and other programs write, and what a person means by it.
TEST(DataText, ReadsTablesAsPeopleMeanThem) {
  const Case cases[] = {{"x;status\n100,5;F\n200,25;S\n", "100.5 1 0; 200.25 0 1"},
                        {"sep=;\n100,5;2\n1,000;1,5\n", "100.5 2 0; 1 1.5 0"},
                        {"x\tstatus\n100,5\tF\n200\tS\n", "100.5 1 0; 200 0 1"},
                        {"Time (h) , Censored?\n4,no\n5,TRUE\n6,F\n7,censored\n8,0\n",
                         "4 1 0; 5 0 1; 6 1 0; 7 0 1; 8 1 0"},
                        {"unit id,Time_to_failure,EVENT,\nA1,4,yes,\nA2,5,No\n,,\nA3,6,failed,,\n",
                         "4 1 0; 5 0 1; 6 1 0"},
                        {"time event\n4,5  1\n 5\t0\n", "4.5 1 0; 5 0 1"},
                        {"\"a;b\",\"km\",S,F\nx,4,1,2\n", "4 2 1"},
                        {"100\t1\n200\t0\n", "100 1 0; 200 0 1"},
                        {"\"100\",\"F\"\n200,S,\n", "100 1 0; 200 0 1"},
                        {">100\t1\n200\t2\n-3\t1\n", "100 0 1; 200 2 0; 3 0 1"},
                        {"100.5,3\n200,1\n", "100.5 3 0; 200 1 0"},
                        {"9\t2\t1\twear\n8\t\t4\t\n", "9 2 1 wear; 8 0 4"}};
  for (const auto& [text, expected] : cases) EXPECT_EQ(read(text), expected) << text;
}

// A comma that may mean two things is never guessed; said once, it is read.
TEST(DataText, ADoubtfulCommaIsRefusedUntilItsMeaningIsSaid) {
  const struct {
    std::string_view text;
    long line;
    const char *by_comma, *by_point;
  } cases[] = {
      {"1071,8\n1069,3\n", 1, "1071.8 1 0; 1069.3 1 0", "1071 8 0; 1069 3 0"},
      {"# h\n7\n>1071,8\n", 3, "7 1 0; 1071.8 0 1",
       "3: '1071,8' is not a number (the lines above it have one col"},
      {"x\n9\n5,5\n", 3, "9 1 0; 5.5 1 0", "3: the row has more fields than there are columns (1)"},
      {"1,000\tF\n2,000\tS\n", 1, "1 1 0; 2 0 1", "1: '1,000' is not a number"},
      {"x,status\n\"9,5\",F\n", 2, "9.5 1 0", "2: '9,5' is not a number"},
  };
  for (const auto& [text, line, by_comma, by_point] : cases) {
    DataSet data;
    const auto fault = read_data_text(text, {}, data);
    ASSERT_TRUE(fault) << text;
    EXPECT_TRUE(fault->comma_in_doubt) << text;
    EXPECT_EQ(fault->line, line) << text;
    EXPECT_EQ(read(text, {.decimal = DecimalSign::comma}), by_comma) << text;
    EXPECT_EQ(read(text, {.decimal = DecimalSign::point}).substr(0, 60), by_point) << text;
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
  EXPECT_EQ(read("x,Ausfall\n4,ja\n", {.failed = {"ja"}}),
            "1: no column is known as a status; name it with --columns status=NAME");
  EXPECT_EQ(read("4,ja\n", named), "1: there is no column 'stunden' (the header names '4', 'ja')");
  EXPECT_EQ(read("4\n", named), "1: there is no header line that names columns");
}

TEST(DataText, NegativeTimesAreValuesOnlyWhenAskedFor) {
  const ReadOptions values{.negative_is_value = true};
  EXPECT_EQ(read("-5\n>-7\n3\n", values), "-5 1 0; -7 0 1; 3 1 0");
  EXPECT_EQ(read("x,status\n-5,F\n"), "2: a time can't be negative");
  EXPECT_EQ(read(">-5\n"), "1: a time can't be negative");
}

TEST(DataText, EachFaultHasItsLineAndItsWords) {
  const std::string long_line(70000, '1');
  const std::string letters(39, 'a');  // the cut falls into the letter behind them
  const std::string long_word = "1\n" + letters + "\xC3\xBC and more";
  const std::string cut_word = "2: '" + letters + "...' is not a number";
  const Case cases[] = {
      {"", "1: the file is empty"},
      {"1\nabc\n", "2: 'abc' is not a number"},
      {"Jan 5 2024\nJan 6 2024\n",
       "1: 'Jan 5 2024' is a date; a time to failure is wanted, as hours, cycles or km"},
      {"5. December 2024\n6. December 2024\n",
       "1: '5. December 2024' is a date; a time to failure is wanted, as hours, cycles or km"},
      {"Jan 5 2024;x\n1;2\n3;0\n", "3: a time can't be 0"},
      {"5 may\n", "1: '5 may' is a date; a time to failure is wanted, as hours, cycles or km"},
      {"abc\n1\n",
       "1: 'abc' is neither a point (100, 100x3, >100) nor a header line that names "
       "columns (x,status)"},
      {"1\n0\n", "2: a time can't be 0"},
      {"1e999", "1: the time '1e999' is out of range (1.2e-38 to 3.4e+38)"},
      {"1\n0x10\n", "2: a time can't be 0"},
      {"5x\n", "1: the count behind the x is missing"},
      {"5x-1\n", "1: the count '-1' is negative"},
      {"5x2e15\n", "1: the count '2e15' is out of range (at most 1e15 units)"},
      {"5x6e14\n5x6e14\n", "2: there are more than 1e15 units up to here"},
      {">\n", "1: the time is missing"},
      {"5\n7\x80\n", "2: '7\xE2\x82\xAC' is not a number"},
      {"x,fails\n", "1: no rows follow the header line"},
      {"sep=;\n", "1: no rows follow the header line"},
      {"when,size\n1,2\n",
       "1: no column is named x, time, hours, cycles or the like; name it with --columns x=NAME "
       "(the header names 'when', 'size')"},
      {"x,time\n1,2\n",
       "1: the columns 'x' and 'time' mean the same; name the right one with --columns x=NAME"},
      {"x,status,fails\n1,F,2\n", "1: a status can't stand beside fails or susps"},
      {"x,fails,susps\n1,0,\n", "2: there are neither failures nor suspensions"},
      {"x,status\n1,G\n",
       "2: the status 'G' is neither F, 1, yes, true or failed (failure) nor S, 0, no, false, "
       "censored or suspended (suspension)"},
      {"x,status\n1,F\n2,F,3\n", "3: the row has more fields than there are columns (2)"},
      {"x,broken\n1,yes\n2,no\n",
       "3: the column 'broken' looks like a status; say --columns status=broken, or --columns "
       "status= where it is none"},
      {"2024-01-31\n",
       "1: '2024-01-31' is a date; a time to failure is wanted, as hours, cycles or km"},
      {"hours;event\n1/2/2024;1\n",
       "2: '1/2/2024' is a date; a time to failure is wanted, as hours, cycles or km"},
      {"12:30\n", "1: '12:30' is a time of day; a time to failure is wanted, as one number"},
      {"5\n7,F\n", "2: '7,F' is not a number (the lines above it have one column)"},
      {"1 2 3\n4 5 6\n",
       "1: 3 columns need a header line that names them, such as x,failures,suspensions; times "
       "alone stand one a line"},
      {"1 500\n2 250\n",
       "1: the blank may stand between thousands, or between a time and its count; write 1500 for "
       "1 500, and 1x500 for a count"},
      {"x;status\n1,5;F\n2.5;F\n",
       "3: '2.5' has a full stop, where other numbers have a decimal comma"},
      {"x;status\n1.5;F\n2,5;F\n",
       "3: '2,5' has a comma, where the numbers above have a decimal point"},
      {"x,comment\n1,a\"b\n",
       "2: a quotation mark stands inside a field (put the whole field in marks)"},
      {"x,comment\n1,\"a\n2,b\n", "2: a quotation mark is not closed"},
      {long_line, "1: the line is too long"},
      {long_word, cut_word.c_str()}};
  for (const auto& [text, expected] : cases) EXPECT_EQ(read(text), expected) << text.substr(0, 80);
}

TEST(DataText, AFaultLeavesTheSetAsItWas) {
  DataSet data = test::make_data({{5}, {6}});
  EXPECT_TRUE(read_data_text("1\n2\nx\n", {}, data));
  EXPECT_EQ(summary(data), "5 1 0; 6 1 0");
}

}  // namespace
}  // namespace tavlo
