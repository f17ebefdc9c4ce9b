#include "numerics/elementary.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "numerics/infinity.h"
#include "numerics/number_text.h"
#include "numerics/powers_of_ten.h"
#include "support/case_list.h"
#include "support/reporter_test.h"

namespace tavlo {
namespace {

const double nan = std::numeric_limits<double>::quiet_NaN();

using ElementaryTest = test::ReporterTest;

TEST_F(ElementaryTest, logarithm_has_a_value_for_every_number) {
  const double of_smallest = -307.92081875395237;  // log10(1.2e-308)
  EXPECT_DOUBLE_EQ(fd_log10(reporter, 0), of_smallest);
  EXPECT_DOUBLE_EQ(fd_log10(reporter, 1e-320), of_smallest);
  EXPECT_DOUBLE_EQ(fd_log10(reporter, -1000), 3);
  EXPECT_EQ(fd_log10(reporter, infinity), 709);
  EXPECT_LT(fd_log10(reporter, 0.001), -3);  // just below: decades are one low there
  prompts.expect_box("Error: 5 ", "Log10 Error: \nNaN\nfd_log10 routine:\nInvalid procedure");
  EXPECT_EQ(fd_log10(reporter, nan), 0);
}

TEST_F(ElementaryTest, powers_of_ten_are_the_nearest_doubles) {
  for (int e = -300; e <= 300; ++e)
    EXPECT_EQ(power_of_ten(e), parse_number("1e" + std::to_string(e)));
  EXPECT_THROW(power_of_ten(301), RunTimeError);
  EXPECT_THROW(power_of_ten(-301), RunTimeError);
}

TEST_F(ElementaryTest, rounding_to_digits_keeps_its_odd_cases) {
  for (const auto& row : test::case_list("roundings.txt")) {
    const auto number = [&](std::size_t i) { return *parse_number(row[i]); };
    const Rounded rounded = fd_Round(reporter, number(0), static_cast<int>(number(1)));
    EXPECT_EQ(number_text(rounded.value), number_text(number(2))) << row[0];
    EXPECT_EQ(number_text(rounded.lower), number_text(number(3))) << row[0];
    EXPECT_EQ(number_text(rounded.upper), number_text(number(4))) << row[0];
  }
}

TEST_F(ElementaryTest, positive_values_round_as_their_decimal_digits_do) {
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> exponent(-290, 290);
  for (int i = 0; i < 20000; ++i) {
    const double value = std::pow(10, exponent(random));
    const int digits = 1 + i % 10;
    EXPECT_EQ(number_text(fd_Round(reporter, value, digits).value), number_text(value, digits));
  }
}

}  // namespace
}  // namespace tavlo
