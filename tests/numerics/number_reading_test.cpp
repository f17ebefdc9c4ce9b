#include "numerics/number_reading.h"

#include <gtest/gtest.h>

#include <random>

#include "numerics/number_text.h"
#include "support/case_list.h"
#include "support/reporter_test.h"

namespace tavlo {
namespace {

using NumberReadingTest = test::ReporterTest;

TEST_F(NumberReadingTest, reads_what_a_person_types) {
  for (const auto& typed : test::case_list("typed_numbers.txt")) {
    const bool overflows = typed[2] == "overflow";
    if (overflows) prompts.expect_box("Error: 6 Overflow", "fd_Str2Dbl routine:\nOverflow");
    std::string text = typed[0];
    std::int32_t whole = 9;
    EXPECT_EQ(fd_Str2Dbl(reporter, text, whole), parse_number(typed[1])) << typed[0];
    EXPECT_EQ(text, overflows ? "0" : typed[2]) << typed[0];
    EXPECT_TRUE(!overflows || whole == 0) << typed[0];
  }
}

TEST_F(NumberReadingTest, the_decimal_separator_is_that_of_the_system) {
  EXPECT_EQ(fd_Str2Dbl(reporter, "1.234,5", {',', ';'}), 1234.5);
  for (const auto& [typed, read] : {std::pair{"1.234.567,8", "1234567.8"},
                                    {"10.5,3", "10.5,3"},
                                    {"0.123,5", "0.123,5"},
                                    {"1234.567,8", "1234.567,8"},
                                    {">1.000,5x2", ">1000.5x2"},
                                    {"1.5", "1.5"}})
    EXPECT_EQ(with_decimal_point(typed, {',', ';'}), read);
}

TEST_F(NumberReadingTest, hostile_text_gives_a_finite_number_at_once) {
  prompts.accept_all();
  EXPECT_EQ(fd_Str2Dbl(reporter, std::string(1'000'000, '0') + "5"), 0);
  EXPECT_EQ(fd_Str2Dbl(reporter, std::string(5000, 'E')), 0);
  std::mt19937_64 random(5);
  const std::string letters = std::string("0159.,+-eEdDkM% x\t") + '\0' + '\xff';
  for (int round = 0; round < 50000; ++round) {
    std::string text;
    for (auto length = random() % 12; length > 0; --length)
      text += letters[random() % letters.size()];
    std::int32_t whole = 0;
    EXPECT_TRUE(std::isfinite(fd_Str2Dbl(reporter, text, whole))) << text;
    EXPECT_EQ(text.find_first_not_of("0123456789.ED+-"), std::string::npos) << text;
  }
}

}  // namespace
}  // namespace tavlo
