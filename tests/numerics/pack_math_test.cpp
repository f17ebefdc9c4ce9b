#include "numerics/pack_math.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "numerics/infinity.h"

namespace tavlo {
namespace {

double lane(Pack pack, int index) {
  double values[Pack::lanes];
  pack.store(values);
  return values[index];
}

using PackFunction = Pack (*)(Pack);
using LibraryFunction = double (*)(double);

/// Error in units of the last place; all lanes must agree, whatever the others hold.
double error_in_units(PackFunction ours, LibraryFunction library, double x) {
  const double exact = library(x);
  const double size = std::fabs(exact);
  const double unit = std::max(std::nextafter(size, INFINITY) - size, 5e-324);
  const double first = lane(ours(Pack(x)), 0);
  for (int i = 1; i < Pack::lanes; ++i) {
    double mixed[Pack::lanes] = {0.3, -0.2, 0.5, 0.1};
    mixed[i] = x;
    EXPECT_EQ(lane(ours(Pack::load(mixed)), i), first) << x;
  }
  return std::fabs(first - exact) / unit;
}

struct Worst {
  double x = 0, error = 0;
  void take(double at, double units) {
    if (!(units <= error)) *this = {at, units};
  }
};

TEST(PackMathTest, stays_within_a_unit_or_two_of_the_library) {
  struct Row {
    const char* name;
    PackFunction ours;
    LibraryFunction library;
    double low, high;
    bool near_zero;  ///< spread over the magnitudes below `high`, both signs if low < 0
    double allowed;
  };
  const Row rows[] = {
      {"exp", exp, std::exp, -745.2, 709.7, false, 1},
      {"exp", exp, std::exp, -1, 1, true, 1},
      {"expm1", expm1, std::expm1, -40, 700, false, 2.5},
      {"expm1", expm1, std::expm1, -1, 1, true, 2.5},
      {"ln", ln, std::log, 1e-3, 20, false, 1},
      {"ln", ln, std::log, 0, 1e308, true, 1},
      {"log1p", log1p, std::log1p, -0.9999, 50, false, 2},
      {"log1p", log1p, std::log1p, -0.9, 0.9, true, 2},
  };
  std::mt19937_64 random(11);
  std::uniform_real_distribution<double> unit(0, 1);
  for (const Row& row : rows) {
    Worst worst;
    for (int round = 0; round < 200000; ++round) {
      double x = row.low + (row.high - row.low) * unit(random);
      if (row.near_zero) {
        x = std::exp(std::log(row.high) - 720 * unit(random));
        if (row.low < 0 && unit(random) < 0.5) x = -x;
      }
      worst.take(x, error_in_units(row.ours, row.library, x));
    }
    EXPECT_LE(worst.error, row.allowed) << row.name << " of " << worst.x;
  }
}

TEST(PackMathTest, edges) {
  const double nan = std::nan("");
  EXPECT_EQ(lane(exp(Pack(710.0)), 0), infinity);
  EXPECT_EQ(lane(exp(Pack(-746.0)), 0), 0);
  EXPECT_EQ(lane(exp(Pack(-745.1)), 0), std::exp(-745.1));
  EXPECT_EQ(lane(expm1(Pack(-1e87)), 0), -1);
  EXPECT_DOUBLE_EQ(lane(ln(Pack(4.9406564584124654e-324)), 0), -744.44007192138122);
  for (const double x : {0.0, -1.0, infinity, nan}) EXPECT_FALSE(any(is_finite(ln(Pack(x))))) << x;
  for (const double x : {-1.0, -3.0, nan}) EXPECT_FALSE(any(is_finite(log1p(Pack(x))))) << x;
  EXPECT_EQ(lane(exp_within(-200, Pack(-1e9), 200), 0), lane(exp(Pack(-200.0)), 0));
  EXPECT_EQ(lane(exp_within(-200, Pack(3.5), 200), 2), lane(exp(Pack(3.5)), 0));
  EXPECT_FALSE(any(is_finite(exp_within(-200, Pack(nan), 200))));
  for (const double x : {infinity, nan}) EXPECT_FALSE(any(is_finite(normal_ln(Pack(x))))) << x;
  EXPECT_FALSE(any(is_finite(exp(Pack(nan)))));
  EXPECT_FALSE(any(is_finite(expm1(Pack(nan)))));
}

}  // namespace
}  // namespace tavlo
