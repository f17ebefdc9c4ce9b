#include "actions/slope_equation.h"

#include <gtest/gtest.h>

#include "actions/random_sample.h"
#include "actions/ranking.h"

namespace tavlo {
namespace {

DataSet ranked(test::TestWorld& world, const std::vector<test::Point>& points) {
  DataSet data = test::make_data(points);
  Make_Ranks(world.session.errors, true, data);
  return data;
}

// The plain secant in 1/beta from 1 loses its way on most of these.
TEST(SlopeEquation, IsSolvedFromAnyStart) {
  test::TestWorld world;
  const std::vector<std::vector<test::Point>> sets = {
      {{990}, {995}, {1000}, {1004}, {1010}},
      {{1e6}, {1e6 + 0.125}},
      {{1e-30}, {1e30}},
      {{1}, {2}, {3, 0, 1e6}},
      {{1, 1e-3}, {2, 1e-3}, {3, 1e-3}},
  };
  for (const auto& points : sets) {
    const DataSet data = ranked(world, points);
    const WeibullLikelihood likelihood(data, false);
    const auto reference = solve_slope(likelihood, 1);
    ASSERT_TRUE(reference);
    for (const double start : {-1.0, 1e-3, 0.3, 7.0, 500.0, 1e5}) {
      const auto found = solve_slope(likelihood, start);
      ASSERT_TRUE(found) << start;
      // |score| < 1e-12 leaves this much of a flat root open.
      const double open = std::max(1e-10, 4e-12 * reference->shape);
      EXPECT_LT(test::relative_difference(found->shape, reference->shape), open) << start;
    }
  }
}

TEST(SlopeEquation, HasNoRootWhenNoFailureComesBeforeTheLargestTime) {
  test::TestWorld world;
  for (const auto& points : std::vector<std::vector<test::Point>>{
           {{100, 2}}, {{50, 0, 3}, {100}, {100}}, {{123.4}, {123.4}, {123.4}}}) {
    const DataSet data = ranked(world, points);
    EXPECT_FALSE(solve_slope(WeibullLikelihood(data, false), 1));
  }
}

}  // namespace
}  // namespace tavlo
