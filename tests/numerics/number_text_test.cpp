#include "numerics/number_text.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>

#include "numerics/value_text.h"
#include "support/case_list.h"

namespace tavlo {
namespace {

TEST(NumberTextTest, reads_as_a_person_writes) {
  using Row = std::tuple<double, int, const char*>;
  for (const auto& [value, digits, text] : {Row{0.1 + 0.2, 15, "0.3"},
                                            {123456, 3, "123000"},
                                            {5e-324, 15, "4.94065645841247E-324"},
                                            {std::nan(""), 15, "NaN"},
                                            {-INFINITY, 15, "-Infinity"}})
    EXPECT_EQ(number_text(value, digits), text);
}

TEST(NumberTextTest, patterns_show_the_digits_that_they_ask_for) {
  for (const auto& row : test::case_list("number_patterns.txt")) {
    const double value = parse_number(row[0]).value_or(NAN);
    EXPECT_EQ(fs_Dbl2Txt(value, row[1]), row[2]) << row[0] << " by " << row[1];
  }
  EXPECT_EQ(format_number(-0.001, "0.00"), "0.00");
}

TEST(NumberTextTest, only_whole_finite_numbers_are_parsed) {
  const std::pair<const char*, double> numbers[] = {
      {"+5", 5}, {"-.5", -0.5}, {"5.", 5}, {"1e3", 1000}, {"-1e-400", 0}, {"0e99999999999", 0}};
  for (const auto& [text, value] : numbers) EXPECT_EQ(parse_number(text), value) << text;
  for (const char* text : {"", " 1", "1\n", "-inf", "NaN(1)", "0x1F", "1e999", "-1e999", "1.2.3",
                           "1,5", "--1", "+-1", "-+1", "+", "-", ".", "e5", "1e", "1e+"})
    EXPECT_EQ(parse_number(text), std::nullopt) << text;
  EXPECT_EQ(parse_number(std::string(400, '0') + "1e-5"), 1e-5);
  EXPECT_EQ(parse_number("1e99999999999999999999"), std::nullopt);
  EXPECT_EQ(parse_number("1" + std::string(400, '0')), std::nullopt);
  EXPECT_EQ(parse_number("0." + std::string(400, '0') + "1e5"), 0.0);
  EXPECT_EQ(parse_number(std::string("1\0", 2)), std::nullopt);
}

TEST(NumberTextTest, texts_read_back) {
  std::mt19937_64 random(6);
  for (int round = 0; round < 20000; ++round) {
    const auto value = std::bit_cast<double>(random());
    if (!std::isfinite(value)) continue;
    EXPECT_EQ(parse_number(number_text(value, 17)), value);
  }
}

}  // namespace
}  // namespace tavlo
