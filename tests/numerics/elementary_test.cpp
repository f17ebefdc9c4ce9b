#include "numerics/elementary.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "numerics/number_text.h"
#include "numerics/powers_of_ten.h"
#include "support/test_world.h"

namespace tavlo {
namespace {

const double nan = std::numeric_limits<double>::quiet_NaN();
const double infinity = std::numeric_limits<double>::infinity();

struct ElementaryTest : testing::Test {
  test::ScriptedPrompts prompts;
  test::TestClock clock;
  ErrorReporter reporter{prompts, clock};
};

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
  struct Row {
    double value;
    int digits;
    double result, lower, upper;
  };
  for (const Row& row : {
           Row{1234, 2, 1200, 1200, 1300},
           Row{1290, 2, 1300, 1200, 1300},
           Row{-1290, 2, -1200, -1300, -1200},
           Row{-0.3, 1, -0.2, -0.3, -0.2},  // 0.3 / 0.1 is just below 3
           Row{-0.29, 2, -0.28, -0.29, -0.28},
           Row{-1, 6, -0.99999, -1, -0.99999},
           Row{-0.001, 1, -0.001, -0.0011, -0.001},
           Row{0.001, 2, 0.001, 0.001, 0.00101},
           Row{1.25, 2, 1.2, 1.2, 1.3},  // ties go down
           Row{135, 2, 130, 130, 140},
           Row{1234, 0, 1000, 1000, 2000},
           Row{1234, -3, 1230, 1230, 1240},
           Row{1234, std::numeric_limits<int>::min(), 1234, 1234, 1234.00000000001},
           Row{0, 3, 0, 0, 0},
           Row{1e-305, 3, 0, 0, 1e-300},
       }) {
    const Rounded rounded = fd_Round(reporter, row.value, row.digits);
    EXPECT_EQ(number_text(rounded.value), number_text(row.result)) << row.value;
    EXPECT_EQ(number_text(rounded.lower), number_text(row.lower)) << row.value;
    EXPECT_EQ(number_text(rounded.upper), number_text(row.upper)) << row.value;
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

TEST_F(ElementaryTest, rounding_reports_what_has_no_neighbours) {
  prompts.expect_box("Error: 6 Overflow",
                     "Rounding Error: \nValue:1.79769313486232E+308, Digits1\nfd_Round routine:\n");
  prompts.expect_box("Error: 5 ", "fd_Round routine:");
  EXPECT_EQ(fd_Round(reporter, std::numeric_limits<double>::max(), 1).upper, 0);
  EXPECT_EQ(fd_Round(reporter, nan, 3).value, 0);
}

TEST_F(ElementaryTest, bounds_tell_where_the_value_stood) {
  struct Row {
    double low, x, high, value;
    int status;
  };
  for (const Row& row : {Row{1, 0, 3, 1, -2}, Row{1, 1, 3, 1, -1}, Row{1, 2, 3, 2, 0},
                         Row{1, 3, 3, 3, 1}, Row{1, 4, 3, 3, 2}, Row{3, 2, 1, 3, -2}}) {
    const Bounded bounded = fd_Bound(reporter, row.low, row.x, row.high);
    EXPECT_EQ(bounded.value, row.value) << row.x;
    EXPECT_EQ(bounded.status, row.status) << row.x;
  }
}

TEST_F(ElementaryTest, r_squared_is_guarded_for_a_vanishing_denominator) {
  struct Row {
    double numerator, denominator, result;
  };
  for (const Row& row : {Row{1e-15, 0.001, 1}, Row{1, 0, -1}, Row{0, 0, 1}, Row{1, 4, 0.75},
                         Row{1e-15, -0.5, 1 + 2e-15}, Row{1, 0.005, -199}, Row{2e-301, 1e-301, 1}})
    EXPECT_DOUBLE_EQ(fd_RSquared(reporter, row.numerator, row.denominator), row.result);
  prompts.expect_box("Error: 6 Overflow", "fd_RSquared routine:\nOverflow");
  EXPECT_EQ(fd_RSquared(reporter, 1e100, 1e-299), 0);
}

TEST_F(ElementaryTest, nan_is_refused_by_the_comparing_routines) {
  for (const char* name : {"fd_Bound", "fd_Max", "fd_Min", "fd_RSquared"})
    prompts.expect_box("Error: 5 ", std::string(name) + " routine:\nInvalid procedure");
  EXPECT_EQ(fd_Bound(reporter, 0, nan, 1).status, 0);
  EXPECT_EQ(fd_Max(reporter, 1, nan), 0);
  EXPECT_EQ(fd_Min(reporter, nan, 1), 0);
  EXPECT_EQ(fd_RSquared(reporter, nan, 1), 0);
  EXPECT_EQ(fd_Max(reporter, 1, 2) - fd_Min(reporter, 1, 2), 1);
  EXPECT_FALSE(std::signbit(fd_Max(reporter, 0.0, -0.0)));  // the first of two equals
  EXPECT_TRUE(std::signbit(fd_Min(reporter, -0.0, 0.0)));
}

}  // namespace
}  // namespace tavlo
