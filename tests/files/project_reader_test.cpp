#include "files/project_reader.h"

#include <gtest/gtest.h>

#include <map>
#include <tuple>

#include "files/text_lines.h"
#include "numerics/number_text.h"
#include "numerics/slots.h"
#include "support/case_list.h"
#include "support/error_number.h"

namespace tavlo {
namespace {

constexpr int right = 0;

using test::error_of;

/// A kind of value, the text, the number of the error or 0, the value, words of the fault.
template <class Value>
void check(const std::vector<std::string>& row) {
  ProjectReader file(row[1]);
  Value value{};
  EXPECT_EQ(std::to_string(error_of([&] { file.value(value); })), row[2]) << row[1];
  EXPECT_EQ(value, static_cast<Value>(parse_number(row[3]).value())) << row[1];
  EXPECT_NE(file.fault().what.find(row[4]), std::string::npos) << file.fault().what;
}

TEST(ProjectReader, ReadsValuesInTheirForms) {
  const std::map<std::string, void (*)(const std::vector<std::string>&)> kinds = {
      {"double", check<double>},
      {"float", check<float>},
      {"int16", check<std::int16_t>},
      {"int32", check<std::int32_t>},
      {"bool", check<bool>}};
  for (const auto& row : test::case_list("file_values.txt")) kinds.at(row[0])(row);
}

// After the last value of a line its line end is gone, so that the text line
// behind it reads whole: for every line end and with blanks before it.
TEST(ProjectReader, ValuesAndTextsShareOnePosition) {
  for (const std::string end : {"\r\n", "\n", "\r"}) {
    const std::string bytes =
        "1,2 " + end + "  a \"b\", c " + end + end + "3" + end + "4,\"5\" ,6" + end + "last";
    ProjectReader file(bytes);
    int a = 0, b = 0;
    std::string text, empty = "x", last;
    file.values(a, b);
    file.text(text);
    file.text(empty);
    EXPECT_EQ(std::tuple(a, b, text, empty), std::tuple(1, 2, "  a \"b\", c ", ""));
    file.values(a, b);  // values spread over lines otherwise than written
    EXPECT_EQ(std::tuple(a, b), std::tuple(3, 4));
    file.skip_values(2);
    file.text(last);
    EXPECT_EQ(last, "last");
    EXPECT_EQ(error_of([&] { file.text(last); }), 62);
    EXPECT_EQ(file.fault().line, 6);
    EXPECT_EQ(file.fault().what, "the file ends where a text is due");
  }
}

TEST(ProjectReader, RefusesEndlessLines) {
  const std::string longest(longest_text, '1'), longer = longest + "1";
  std::string text;
  double number = 0;
  EXPECT_EQ(error_of([&] { ProjectReader(longest).text(text); }), right);
  EXPECT_EQ(error_of([&] { ProjectReader(longer).text(text); }), 14);
  EXPECT_EQ(error_of([&] { ProjectReader(longer).value(number); }), 14);
  EXPECT_EQ(error_of([&] { ProjectReader("\"" + longer).skip_values(1); }), 14);
}

TEST(ProjectReader, SkippingEndsWithTheFile) {
  ProjectReader values("1,,\"a,b\"\n2");
  values.skip_values(-5);
  values.skip_values(3);
  EXPECT_EQ(error_of([&] { values.skip_values(2147483647); }), 62);
  ProjectReader texts("a\nb");
  EXPECT_EQ(error_of([&] { texts.skip_texts(2147483647); }), 62);
}

// Ten bytes stand behind the bound: five elements of two bytes and no more.
TEST(ProjectReader, ListsGrowOnlyAsFarAsTheBytesReach) {
  for (const std::int64_t bound : {4LL, 0LL, 5LL, -1LL, -2147483648LL, 2147483647LL}) {
    ProjectReader file("1,2,3,4,5,");
    Slots<int> list;
    const bool fits = bound == 4 || bound == 0;
    EXPECT_EQ(error_of([&] { file.make_room(list, bound, 2); }), fits ? right : 9) << bound;
    EXPECT_EQ(list.bound(), fits ? bound : 0) << bound;
  }
}

TEST(ProjectReader, TextIsInTheCodePageUnlessAMarkSaysOtherwise) {
  std::string line;
  ProjectReader("\x80 \xFC").text(line);
  EXPECT_EQ(line, "€ ü");
  ProjectReader("\xEF\xBB\xBF\xE2\x82\xAC \xC3\xBC").text(line);
  EXPECT_EQ(line, "€ ü");
  ProjectReader("\xEF\xBB\xBF\xFC").text(line);  // the mark lies
  EXPECT_EQ(line, "ü");
}

}  // namespace
}  // namespace tavlo
