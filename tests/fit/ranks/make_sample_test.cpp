#include "actions/ranking.h"

#include <gtest/gtest.h>

#include "actions/adjusted_rank.h"
#include "actions/random_sample.h"
#include "solver/mixture_functions.h"

namespace tavlo {
namespace {

using test::make_data;
using test::Point;
using test::TestWorld;

DataSet ranked(TestWorld& world, DataSet data, bool benard = true) {
  Make_Ranks(world.session.errors, benard, data);
  return data;
}

std::vector<double> positions(const DataSet& data) {
  std::vector<double> y;
  for (int i = 1; i <= data.Count; ++i) y.push_back(static_cast<double>(data.Points(i).Y));
  return y;
}

void expect_near(const std::vector<double>& found, const std::vector<double>& expected,
                 double tolerance) {
  ASSERT_EQ(found.size(), expected.size());
  for (std::size_t i = 0; i < found.size(); ++i) EXPECT_NEAR(found[i], expected[i], tolerance) << i;
}

/// Adjusted ranks told unit by unit, in long double; `mode` 0 ranks the set,
/// otherwise failures of other modes are suspensions. -1 on rows without a rank.
std::vector<double> unit_by_unit(const DataSet& data, int mode) {
  const long double units = data.Points(0).Fails + data.Points(0).Susps;
  long double remaining = units, rank = 0, pending = 0;
  std::vector<double> positions;
  for (int i = 1; i <= data.Count; ++i) {
    const DataPoint& row = data.Points(i);
    const bool ranks_row = row.Fails > 0 && (mode == 0 || row.Mode == mode);
    if (ranks_row)
      for (int c = 1; c <= row.Fails; ++c, remaining -= 1)
        rank = (remaining * rank + units + 1) / (remaining + 1);
    else if (row.Fails > 0)
      pending += row.Fails;
    positions.push_back(ranks_row ? double((rank - 0.3L) / (units + 0.4L)) : -1);
    pending += row.Susps;
    if (i == data.Count || data.Points(i + 1).X == row.X) continue;
    remaining -= pending;
    pending = 0;
  }
  return positions;
}

TEST(Ranking, KnownPositions) {
  const std::vector<Point> five = {{1}, {2}, {3}, {4}, {5}};
  const std::vector<Point> suspended = {{1}, {1.5, 0, 1}, {2}, {3}};
  const std::vector<double> adjusted = {0.7 / 4.4, 0, (7 / 3.0 - 0.3) / 4.4,
                                        (11 / 3.0 - 0.3) / 4.4};
  struct Case {
    std::vector<Point> points;
    bool benard;
    std::vector<double> positions;
  };
  const std::vector<Case> cases = {
      {five, true, {0.1296, 0.3148, 0.5, 0.6852, 0.8704}},
      {five, false, {0.1294, 0.3138, 0.5, 0.6862, 0.8706}},
      {suspended, true, adjusted},
      {suspended, false, adjusted},
      // Half a suspension is none, but counts among the units.
      {{{1}, {2, 0, 0.5}, {3}}, true, {0.7 / 2.9, 0.7 / 2.9, 1.7 / 2.9}},
      {{{1, 0.5}, {2}, {3, 0, 1}}, true, {-0.3 / 2.9, 0.7 / 2.9, 0}},
      // Exact ranks take the nearest whole failure, ties to the even one: 0, 2, 4.
      {{{1, 0.5}, {2, 2}, {3, 1.5}}, false, {0, 0.38573, 0.84090}},
      // A tied suspension outlives both failures; at 7 the rank moves by (7 - 2) / 2.
      {{{5, 0, 1}, {5}, {5, 1, 1}, {6, 0, 1}, {7}}, true, {0.7 / 6.4, 1.7 / 6.4, 0, 0, 4.2 / 6.4}},
  };
  for (const Case& c : cases) {
    TestWorld world;
    const DataSet data = ranked(world, make_data(c.points), c.benard);
    expect_near(positions(data), c.positions, 5e-5);
    EXPECT_EQ(data.Points(0).Order, c.benard ? 128 : 64);
    EXPECT_EQ(ranked(world, data, !c.benard).Points(0).Order, 64 + 128);
  }
}

/// Data whose every rank has a Weibull coordinate: one failure comes first.
DataSet data_with_modes(test::RandomSample& random, int modes, bool fractions) {
  DataSet data = random.weibull(random.whole(2, 60), 2, 100, 2, 0.4, fractions, modes);
  data.Points(1).Mode = 0;
  data.Points(1).Fails = 1;
  data.Points(1).Susps = 2;
  for (int i = 2; i <= data.Count; ++i)
    if (data.Points(i).Fails < 1) data.Points(i).Mode = 0;
  return data;
}

TEST(Ranking, AgreesWithTheUnitLoop) {
  TestWorld world;
  test::RandomSample random(4);
  for (int round = 0; round < 400; ++round) {
    const DataSet data = ranked(world, data_with_modes(random, 0, round % 2 == 0));
    std::vector<double> expected = unit_by_unit(data, 0);
    for (double& position : expected) position = std::max(position, 0.0);
    expect_near(positions(data), expected, 6e-8);
  }
}

TEST(Ranking, AgreesWithTheUnitLoopWithinModes) {
  TestWorld world;
  test::RandomSample random(14);
  for (int round = 0; round < 400; ++round) {
    const int modes = random.whole(1, 4);
    const DataSet data = ranked(world, data_with_modes(random, modes, round % 2 == 0));
    std::vector<double> found;
    std::vector<double> expected(static_cast<std::size_t>(data.Count), 0.0);
    for (int i = 1; i <= data.Count; ++i) found.push_back(data.Points(i).YT[2]);
    for (int mode = 1; mode <= modes; ++mode) {
      const std::vector<double> ranks = unit_by_unit(data, mode);
      for (std::size_t i = 0; i < ranks.size(); ++i)
        if (ranks[i] > 0) expected[i] = fd_WblY(ranks[i]);
    }
    expect_near(found, expected, 1e-12);
  }
}

TEST(Ranking, OneStepOfManyUnitsIsTheUnitSteps) {
  test::RandomSample random(5);
  for (int round = 0; round < 2000; ++round) {
    const int units = random.whole(2, 5000);
    const int gone = random.whole(0, units / 2);
    long double rank = gone / 2.0L;
    long double remaining = units - gone;
    const int steps = random.whole(1, units - gone);
    for (int c = 0; c < steps; ++c, remaining -= 1)
      rank = (remaining * rank + units + 1) / (remaining + 1);
    const double found = rank_after(gone / 2.0, steps, units - gone + 1.0, units + 1.0);
    ASSERT_LT(test::relative_difference(found, double(rank)), 1e-15);
  }
}

TEST(Ranking, ExtentAndLogarithms) {
  TestWorld world;
  const DataSet data = ranked(world, make_data({{-3, 0, 1}, {2}, {5}, {9, 0, 1}}));
  EXPECT_EQ(data.XMin, 2);
  EXPECT_EQ(data.XMax, 5);
  EXPECT_EQ(data.YMin, static_cast<double>(data.Points(2).Y));
  EXPECT_EQ(data.YMax, static_cast<double>(data.Points(3).Y));
  EXPECT_DOUBLE_EQ(data.Points(1).XT[2], std::log(3.0));
}

TEST(Ranking, LeavesWhatItMustNotTouch) {
  TestWorld world;
  DataSet guarded_set = make_data({{1}, {2}});
  guarded_set.Points(0).Order = 1;
  guarded_set.Points(1).YT[2] = 5;
  guarded_set = ranked(world, guarded_set);
  EXPECT_EQ(guarded_set.Points(0).Order, 1);
  EXPECT_EQ(guarded_set.Points(1).Y, 0);
  EXPECT_EQ(guarded_set.Points(1).YT[2], 5);
  for (const bool benard : {false, true}) {
    DataSet empty = make_data({});
    empty.XMin = 3;
    EXPECT_EQ(ranked(world, empty, benard).XMin, 3);
  }
}

TEST(Ranking, ATimeOfZeroEndsTheLogarithmsNotTheRanks) {
  TestWorld world;
  world.prompts.expect_box("Error: 5 ", "Median Rank Error: \nRow 2: Data X is 0");
  DataSet data = make_data({{-1}, {0, 0, 1}, {2}});
  data.Points(1).YT[2] = data.Points(3).YT[2] = 9;
  data = ranked(world, data);
  EXPECT_EQ(data.XMax, 2);
  EXPECT_NEAR(static_cast<double>(data.Points(3).Y), (1 + 3 / 2.0 - 0.3) / 3.4, 1e-7);
  EXPECT_EQ(data.Points(1).YT[2], 0);
  EXPECT_EQ(data.Points(3).YT[2], 9);
}

TEST(Ranking, HostileCountsEndAtOnce) {
  struct Case {
    std::vector<Point> points;
    bool benard;
    const char* title;  // empty: no box
  };
  const double nan = std::nan("");
  const std::vector<Case> cases = {
      {{{1, 1e15}, {2, 0, 1e15}, {3, 1e15}}, true, ""},
      {{{1, 1e15}}, true, ""},
      {{{1, 1e15}}, false, "Error: 6 "},
      {{{1, 2e9}}, false, ""},
      {{{1, 1e308}, {2, 1e308}}, true, "Error: 6 "},
      {{{1, nan}}, true, "Error: 5 "},
      {{{1, 3, 1}, {2, -4, 2}}, true, ""},
      {{{1, 5, 1}, {2, -4, 1}}, true, "Error: 11 "},
      {{{1, -0.4}}, true, "Error: 11 "},
      {{{1, -3}}, false, "Error: 9 "},
  };
  for (const Case& c : cases) {
    TestWorld world;
    if (*c.title) world.prompts.expect_box(c.title, "Median Rank Error: ");
    const DataSet data = ranked(world, make_data(c.points), c.benard);
    for (const double y : positions(data)) EXPECT_TRUE(std::isfinite(y));
  }
}

}  // namespace
}  // namespace tavlo
