#include <gtest/gtest.h>

#include <numeric>

#include "numerics/run_time_error.h"
#include "support/random_samples.h"

namespace tavlo {
namespace {

using test::Rows;

void expect_near(const std::vector<double>& found, const std::vector<double>& expected,
                 double tolerance) {
  ASSERT_EQ(found.size(), expected.size());
  for (std::size_t i = 0; i < found.size(); ++i) EXPECT_NEAR(found[i], expected[i], tolerance) << i;
}

std::vector<double> positions(const Sample& sample) {
  return {sample.rank.begin(), sample.rank.end()};
}

/// Adjusted ranks told unit by unit, in long double; `mode` 0 ranks the set, otherwise
/// failures of other modes are suspensions. -1 on rows without a rank.
std::vector<double> unit_by_unit(const Sample& sample, int mode) {
  const long double units = sample.total_failures + sample.total_suspensions;
  long double remaining = units, rank = 0, pending = 0;
  std::vector<double> ranks;
  for (std::size_t i = 0; i < sample.size(); ++i) {
    const double failures = sample.failures[i];
    const bool ranks_row = failures > 0 && (mode == 0 || sample.mode[i] == mode);
    if (ranks_row)
      for (int c = 1; c <= failures; ++c, remaining -= 1)
        rank = (remaining * rank + units + 1) / (remaining + 1);
    else
      pending += failures;
    ranks.push_back(ranks_row ? double((rank - 0.3L) / (units + 0.4L)) : -1);
    pending += sample.suspensions[i];
    if (i + 1 < sample.size() && sample.time[i + 1] == sample.time[i]) continue;
    remaining -= pending;
    pending = 0;
  }
  return ranks;
}

TEST(MakeSample, KnownPositions) {
  const Rows five = test::failures_at({4, 2, 5, 1, 3});
  using Case = std::tuple<Rows, RankKind, std::vector<double>>;
  const std::vector<Case> cases = {
      {five, RankKind::benard, {0.1296, 0.3148, 0.5, 0.6852, 0.8704}},
      {five, RankKind::exact, {0.1294, 0.3138, 0.5, 0.6862, 0.8706}},
      // Half a suspension is none, but counts among the units.
      {{{1, 1}, {2, 0, 0.5}, {3, 1}}, RankKind::benard, {0.7 / 2.9, 0.7 / 2.9, 1.7 / 2.9}},
      // Exact ranks take the nearest whole failure, ties to the even one: 0, 2, 4.
      {{{1, 0.5}, {2, 2}, {3, 1.5}}, RankKind::exact, {0, 0.38573, 0.84090}},
      // A tied suspension outlives both failures; at 7 the rank moves by (7 - 2) / 2.
      {{{5, 0, 1}, {5, 1}, {5, 1, 1}, {6, 0, 1}, {7, 1}},
       RankKind::benard,
       {0.7 / 6.4, 1.7 / 6.4, 0, 0, 4.2 / 6.4}},
      // Counts cost nothing: units by the 1e15, and exact ranks without a table of them.
      {{{1, 1e15}, {2, 0, 1e15}, {3, 1e15}}, RankKind::benard, {1 / 3.0, 0, 1}},
      {{{1, 1e15}, {3, 3e15}}, RankKind::exact, {0.25, 1}},
  };
  for (const auto& [rows, kind, expected] : cases)
    expect_near(positions(make_sample(rows, kind)), expected, 5e-5);
}

// Of the set and within modes. Every rank must have an ordinate: a whole failure comes first.
TEST(MakeSample, RanksAreThoseOfTheUnitLoop) {
  test::RandomNumbers random(4);
  for (int round = 0; round < 400; ++round) {
    const int modes = random.whole(1, 4);
    Rows rows = test::weibull_rows(
        random, random.whole(2, 60), 2, 100,
        {.digits = 2, .share_suspended = 0.4, .fractions = round % 2 == 0, .modes = modes});
    for (SampleRow& row : rows)
      if (row.failures < 1) row.mode = 0;
    test::shuffle(random, rows);
    rows.insert(rows.begin(), {1e-9F, 1, 2, 0});
    const Sample sample = make_sample(rows, RankKind::benard, modes);
    std::vector<double> expected = unit_by_unit(sample, 0);
    for (double& position : expected) position = std::max(position, 0.0);
    expect_near(positions(sample), expected, 6e-8);
    if (sample.mode.empty()) continue;
    std::vector<double> ordinates(sample.size(), 0.0);
    for (int mode = 1; mode <= modes; ++mode) {
      const std::vector<double> ranks = unit_by_unit(sample, mode);
      for (std::size_t i = 0; i < ranks.size(); ++i)
        if (ranks[i] > 0) ordinates[i] = std::log(-std::log1p(-ranks[i]));
    }
    expect_near(sample.mode_ordinate, ordinates, 1e-12);
  }
}

/// Entries in order of time, brought about by exchanges of neighbours: at one time a row with
/// a suspension gives way to one with failures, unless both rows hold both.
std::vector<std::int32_t> by_exchanges(const Rows& rows) {
  std::vector<std::int32_t> order(rows.size());
  std::iota(order.begin(), order.end(), 1);
  for (bool moved = true; std::exchange(moved, false);)
    for (std::size_t i = 1; i < order.size(); ++i) {
      const SampleRow& a = rows[std::size_t(order[i - 1] - 1)];
      const SampleRow& b = rows[std::size_t(order[i] - 1)];
      const bool gives_way = a.suspensions >= 1 && b.failures > 0;
      const bool hold_both = a.failures > 0 && b.suspensions > 0;
      if (a.time > b.time || (a.time == b.time && gives_way && !hold_both))
        std::swap(order[i - 1], order[i]), moved = true;
    }
  return order;
}

TEST(MakeSample, KeepsEveryRowInOrderAndItsTimeInAnInnerUnit) {
  test::RandomNumbers random(6);
  for (int round = 0; round < 200; ++round) {
    Rows rows =
        test::weibull_rows(random, random.whole(1, 40), 0.5, random.log_uniform(1e-30, 1e30),
                           {.digits = 2, .share_suspended = 0.3, .fractions = round % 2 == 0});
    test::shuffle(random, rows);
    const Sample sample = make_sample(rows, RankKind::benard);
    double last_failure = 0;
    EXPECT_EQ(sample.entry, by_exchanges(rows));
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const auto entry = static_cast<std::size_t>(sample.entry[i]) - 1;
      EXPECT_EQ(outer_time(sample, sample.time[i]), static_cast<double>(rows[entry].time));
      EXPECT_EQ(sample.failures[i], rows[entry].failures);
      EXPECT_EQ(sample.suspensions[i], rows[entry].suspensions);
      if (sample.failures[i] > 0) last_failure = sample.time[i];
    }
    if (last_failure > 0) {
      EXPECT_TRUE(last_failure >= 1 && last_failure < 2) << last_failure;
    }
  }
}

TEST(MakeSample, RefusesWhatIsNoTimeAndNoCount) {
  const float infinity = std::numeric_limits<float>::infinity();
  const double nan = std::nan("");
  for (const SampleRow& row : Rows{{infinity, 1},
                                   {std::nanf(""), 1},
                                   {1, -1},
                                   {1, nan},
                                   {1, 1, -0.5},
                                   {1, 1, nan},
                                   {1, HUGE_VAL}})
    EXPECT_THROW(make_sample(Rows{{5, 1}, row}, RankKind::benard), RunTimeError);
  EXPECT_THROW(make_sample(Rows{{1, 1e308}, {2, 1e308}}, RankKind::benard), RunTimeError);
}

}  // namespace
}  // namespace tavlo
