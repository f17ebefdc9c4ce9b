#include "files/project_reader.h"

#include <gtest/gtest.h>

#include <tuple>

#include "files/text_lines.h"
#include "numerics/slots.h"
#include "support/error_number.h"

namespace tavlo {
namespace {

constexpr int right = 0;

using test::error_of;

template <class Value>
struct ValueCase {
  std::string text;
  int error;
  Value expected{};
  std::string words = {};
};

template <class Value>
void check(const std::vector<ValueCase<Value>>& cases) {
  for (const ValueCase<Value>& row : cases) {
    ProjectReader file(row.text);
    Value value{};
    EXPECT_EQ(error_of([&] { file.value(value); }), row.error) << row.text;
    EXPECT_EQ(value, row.expected) << row.text;
    EXPECT_NE(file.fault().what.find(row.words), std::string::npos) << file.fault().what;
  }
}

TEST(ProjectReader, ReadsNumbersInTheirForms) {
  check<double>({{"0.5", right, 0.5},
                 {"1.5D+3", right, 1500},
                 {" \" 9 \" ", right, 9},
                 {"1E400", 6, 0, "'1E400' is out of range"},
                 {"", 62, 0, "the file ends where a value is due"},
                 {"0x10", 13, 0, "not a number"},
                 {"1 2", 13, 0, "'1 2' is not a number"},
                 {"\"5", 13, 0, "a quotation mark is not closed"},
                 {"\"5\"6", 13, 0, "text behind a quotation mark"},
                 {"\xB2", 13, 0, "'\xC2\xB2' is not a number"}});
  check<float>({{"123456.8", right, 123456.8F},
                {"3.402823E+38", right, 3.402823e38F},
                {"1E39", 6, 0, "out of range"}});
}

TEST(ProjectReader, ReadsWholeNumbersAndFlags) {
  check<std::int16_t>({{"3.0", right, 3},
                       {"-32768", right, -32768},
                       {"32768", 6, 0, "32768 is out of range (-32768 to 32767)"},
                       {"2.5", 13, 0, "2.5 is not a whole number"},
                       {"#TRUE#", 13}});
  check<std::int32_t>(
      {{"2147483647", right, 2147483647}, {"-2147483648", right, -2147483647 - 1}, {"1E300", 6}});
  check<bool>({{"#TRUE#", right, true},
               {"#false#", right, false},
               {"0", right, false},
               {"2", 13, false, "'2' is neither #TRUE# nor #FALSE#"},
               {"", 62}});
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
  const std::string longest(longest_line, '1'), longer = longest + "1";
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

TEST(ProjectReader, RefusesBytesThatAreNoText) {
  const std::pair<std::string, const char*> cases[] = {{std::string("1\n2\0", 4), "NUL"},
                                                       {"1\n2\n\x1A", "Ctrl-Z"},
                                                       {std::string("\xFF\xFE,\0", 4), "UTF-16"}};
  for (const auto& [bytes, words] : cases) {
    ProjectReader file(bytes);
    int value = 0;
    EXPECT_EQ(error_of([&] { file.value(value); }), 13);
    EXPECT_NE(file.fault().what.find(words), std::string::npos) << file.fault().what;
  }
}

}  // namespace
}  // namespace tavlo
