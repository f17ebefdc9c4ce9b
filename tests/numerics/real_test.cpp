#include "numerics/real.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

#include "numerics/infinity.h"
#include "numerics/rounding.h"
#include "support/error_number.h"

namespace tavlo {
namespace {

using test::error_of;

TEST(RealTest, each_failure_has_its_number_and_leaves_its_target) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  Real target = 7;
  using Row = std::tuple<const char*, std::function<void()>, int>;
  const Real big = 1e308;
  for (const auto& [statement, run, number] : {
           Row{"big + big", [&] { target = big + big; }, 6},
           Row{"big * 10", [&] { target = big * 10; }, 6},
           Row{"1 / 0", [&] { target = 1 / Real(0); }, 11},
           Row{"0 / 0", [&] { target = Real(0) / 0; }, 11},
           Row{"nan + 1", [&] { target = Real(nan) + 1; }, 5},
           Row{"infinity - infinity", [&] { target = Real(infinity) - infinity; }, 5},
           Row{"ln 0", [&] { target = ln(Real(0)); }, 5},
           Row{"exp 710", [&] { target = exp(Real(710)); }, 6},
           Row{"sqrt -1", [&] { target = sqrt(Real(-1)); }, 5},
           Row{"0 ^ -1", [&] { target = pow(Real(0), -1); }, 11},
           Row{"-8 ^ 1/3", [&] { target = pow(Real(-8), 1.0 / 3); }, 5},
           Row{"10 ^ 309", [&] { target = pow(Real(10), 309); }, 6},
       }) {
    target = 7;
    EXPECT_EQ(error_of(run), number) << statement;
    EXPECT_EQ(target, 7) << statement;
  }
}

TEST(RealTest, underflow_is_silent) {
  EXPECT_EQ(exp(Real(-1000)).value(), 0);
  EXPECT_EQ((Real(1e-200) * 1e-200).value(), 0);
}

TEST(RoundingTest, ties_go_to_the_even_number_and_the_range_is_checked) {
  const std::pair<double, int> ties[] = {
      {2.5, 2}, {3.5, 4}, {-2.5, -2}, {-0.5, 0}, {0.49999999999999994, 0}, {32767.4, 32767}};
  for (const auto& [value, whole] : ties) EXPECT_EQ(ToInt16(value), whole) << value;
  EXPECT_EQ(IntFloor(-2.1), -3);
  EXPECT_EQ(ToInt32(-2147483648.5), std::numeric_limits<std::int32_t>::min());
  for (const double value : {32767.5, -32769.0, 1e300, std::nan("")})
    EXPECT_EQ(error_of([&] { ToInt16(value); }), 6) << value;
  for (const double value : {2147483647.5, -2147483649.0, -1e300})
    EXPECT_EQ(error_of([&] { ToInt32(value); }), 6) << value;
}

}  // namespace
}  // namespace tavlo
