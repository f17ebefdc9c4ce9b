#include "numerics/number_text.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>

namespace tavlo {
namespace {

TEST(NumberTextTest, reads_as_a_person_writes) {
  using Row = std::tuple<double, int, const char*>;
  const Row rows[] = {{100, 15, "100"},
                      {0, 15, "0"},
                      {0.1 + 0.2, 15, "0.3"},
                      {0.00001, 15, "0.00001"},
                      {1.5e-6, 15, "1.5E-06"},
                      {123456, 3, "123000"},
                      {5e-324, 15, "4.94065645841247E-324"},
                      {std::nan(""), 15, "NaN"},
                      {-INFINITY, 15, "-Infinity"}};
  for (const auto& [value, digits, text] : rows) EXPECT_EQ(number_text(value, digits), text);
}

TEST(NumberTextTest, patterns_show_the_digits_that_they_ask_for) {
  using Row = std::tuple<double, const char*, const char*>;
  const Row rows[] = {{2.675, "0.00", "2.68"},
                      {-0.001, "0.00", "0.00"},
                      {999.999, "0.00", "1000.00"},
                      {0.005, "0.00", "0.01"},
                      {0.25, "00.0000%", "25.0000%"},
                      {1, "00.00%", "100.00%"},
                      {0.00012, "0E+0", "1E-4"},
                      {9.96, "0.0E+0", "1.0E+1"},
                      {1234567.8, "#,##0", "1,234,568"},
                      {3, "0.##", "3"},
                      {0.5, "#.#", ".5"},
                      {1e20, "0", "100000000000000000000"},
                      {1e-300, "0.0", "0.0"},
                      {std::nan(""), "0.0", "NaN"}};
  for (const auto& [value, pattern, text] : rows)
    EXPECT_EQ(format_number(value, pattern), text) << value << " by " << pattern;
}

TEST(NumberTextTest, only_whole_finite_numbers_are_parsed) {
  for (const char* text :
       {"1.5", "+5", "-.5", "5.", "1e3", "1E-999", "-1e-400", "0e99999999999999999999"})
    EXPECT_EQ(parse_number(text), std::strtod(text, nullptr)) << text;
  for (const char* text :
       {"",      " 1",  "1 ",  "1\n", "inf", "-inf", "nan", "NaN(1)", "0x1F", "1e999", "-1e999",
        "1.2.3", "1,5", "--1", "+-1", "-+1", "+",    "-",   ".",      "e5",   "1e",    "1e+"})
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
