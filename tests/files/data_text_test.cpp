#include "files/data_text.h"

#include <gtest/gtest.h>

#include "numerics/number_text.h"
#include "support/test_world.h"

namespace tavlo {
namespace {

/// "x fails susps order mode comment" of each row, for comparing whole sets.
std::string summary(const DataSet& data) {
  std::string text;
  for (int i = 1; i <= data.Count; ++i) {
    const DataPoint& point = data.Points(i);
    if (i > 1) text += "; ";
    for (const double number : {static_cast<double>(point.X), point.Fails, point.Susps})
      text += number_text(number, 6) + " ";
    text += std::to_string(point.Order);
    if (point.Mode != 0) text += " " + data.ModeNames(point.Mode);
    if (!point.Comment.empty()) text += " '" + point.Comment + "'";
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
      {"100", "100 1 0 1"},
      {"100x3\n>50\n>20x5\n-7\n", "7 0 1 4; 20 0 5 3; 50 0 1 2; 100 3 0 1"},
      {"9\n>4\n4\n>9\n4x2\n", "4 0 1 2; 4 1 0 3; 4 2 0 5; 9 1 0 1; 9 0 1 4"},
      {"\n# remark\n  7 X 2.5 \n\t> .5x2\n+3e1", "0.5 0 2 2; 7 2.5 0 1; 30 1 0 3"},
      {"1\r\n2\r\n", "1 1 0 1; 2 1 0 2"},
      {"1\r2\r#x\r3", "1 1 0 1; 2 1 0 2; 3 1 0 3"},
      {"\xEF\xBB\xBF"
       "1\n2",
       "1 1 0 1; 2 1 0 2"},
      {"TIME,Status,Count\n4,f,3\n2,S,\n6,1,1\n8,0,2\n", "2 0 1 2; 4 3 0 1; 6 1 0 3; 8 0 2 4"},
      {"susps\tx\tfails\n1\t4\t2\n\t3\t1\n", "3 1 0 2; 4 2 1 1"},
      {"Suspensions,Failures,x\n2,0,9\n", "9 0 2 1"},
      {"x,mode,comment\n1,wear,\"a \"\"b\"\", c\"\n2,,\n3, wear ,x\n4,burst,\n",
       "1 1 0 1 wear 'a \"b\", c'; 2 1 0 2; 3 1 0 3 wear 'x'; 4 1 0 4 burst"},
      {"# first\n\nx,comment\n#no\n1,\"two\nlines\"\n\n2,end",
       "1 1 0 1 'two\nlines'; 2 1 0 2 'end'"},
      {"x,comment\r1,a\r2,b\r", "1 1 0 1 'a'; 2 1 0 2 'b'"},
      {"x,comment\n1,M\xFCller\n2,M\xC3\xBCller\n",
       "1 1 0 1 'M\xC3\xBCller'; 2 1 0 2 'M\xC3\xBCller'"}};
  for (const auto& [text, expected] : cases) EXPECT_EQ(read(text), expected) << text;
}

TEST(DataText, NegativeTimesAreValuesOnlyWhenAskedFor) {
  const ReadOptions values{.negative_is_value = true};
  EXPECT_EQ(read("-5\n>-7\n3\n", values), "-7 0 1 2; -5 1 0 1; 3 1 0 3");
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
      {"abc\n1\n",
       "1: 'abc' is neither a point (100, 100x3, >100) nor a header line that names "
       "columns (x,status)"},
      {"1\n0\n", "2: a time can't be 0"},
      {"1e999", "1: the time '1e999' is out of range (1.2e-38 to 3.4e+38)"},
      {"1\n0x10\n", "2: a time can't be 0"},
      {"1,5\n",
       "1: '1,5' is not a number (columns need a comma or a tab between them and a header "
       "line such as x,status)"},
      {"5x\n", "1: the count behind the x is missing"},
      {"5x-1\n", "1: the count '-1' is negative"},
      {"5x2e15\n", "1: the count '2e15' is out of range (at most 1e15 units)"},
      {"5x6e14\n5x6e14\n", "2: there are more than 1e15 units up to here"},
      {">\n", "1: the time is missing"},
      {"5\n7\x80\n", "2: '7\xE2\x82\xAC' is not a number"},
      {"x,fails\n", "1: no rows follow the header line"},
      {"x,size\n1,2\n",
       "1: 'size' is no column name (known: x or time, fails or failures, susps "
       "or suspensions, status, count, mode, comment)"},
      {"x,time\n1,2\n", "1: the column 'time' stands there twice"},
      {"x,status,fails\n1,F,2\n", "1: a status can't stand beside fails or susps"},
      {"x,fails,susps\n1,0,\n", "2: there are neither failures nor suspensions"},
      {"x,status\n1,G\n", "2: the status 'G' is neither F or 1 (failure) nor S or 0 (suspension)"},
      {"x,comment\n1,a\"b\n",
       "2: a quotation mark stands inside a field (put the whole field in marks)"},
      {"x,comment\n1,\"a\n2,b\n", "2: a quotation mark is not closed"},
      {"\xFF\xFE"
       "1\0\n\0",
       "1: this is UTF-16 text; save it as UTF-8"},
      {long_line, "1: the line is too long"},
      {long_word, cut_word.c_str()}};
  for (const auto& [text, expected] : cases) EXPECT_EQ(read(text), expected) << text.substr(0, 80);
}

TEST(DataText, AFaultLeavesTheSetAsItWas) {
  DataSet data = test::make_data({{5}, {6}});
  EXPECT_TRUE(read_data_text("1\n2\nx\n", {}, data));
  EXPECT_EQ(summary(data), "5 1 0 1; 6 1 0 2");
}

}  // namespace
}  // namespace tavlo
