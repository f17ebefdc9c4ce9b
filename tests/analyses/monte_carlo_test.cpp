#include "analyses/monte_carlo.h"

#include <gtest/gtest.h>

#include <cmath>

#include "analyses/stated_life.h"
#include "fit/door/fit.h"
#include "fit/parallel.h"
#include "support/no_chance.h"
#include "support/random_samples.h"

namespace tavlo {
namespace {

Life life(std::int16_t model, std::vector<FitParam> rows) { return {model, std::move(rows)}; }
FitParam row(double scale, double shape, double share = 1, int applies = 1, double t0 = 0) {
  return {scale, share, shape, t0, applies};
}

struct Sampled {
  const char* name;
  Life life;
  double miss;  ///< of r squared from 1, by four digits of the times
};

const std::vector<Sampled>& lives() {
  using namespace model_code;
  static const std::vector<Sampled> all = {
      {"W2P", life(weibull2, {row(1 / 1000.0, 2)}), 1e-6},
      {"W2P steep", life(weibull2, {row(1 / 1000.0, 5)}), 1e-6},
      {"W3T", life(weibull3, {row(1 / 1000.0, 1.5, 1, 1, 100)}), 1e-5},
      {"N", life(normal, {row(100, 0.1)}), 5e-6},
      {"LN", life(lognormal, {row(100, 1 / std::log(3.0))}), 1e-6},
      {"G-", life(gumbel_lower, {row(0.01, 10)}), 1e-5},
      {"G+", life(gumbel_upper, {row(0.01, 10)}), 1e-5},
      {"W4P", life(weibull4, {row(1 / 5000.0, 0.5), row(1 / 1000.0, 3, 0)}), 1e-5},
      {"W5C", life(weibull5c, {row(0.01, 3, 0.2), row(0.001, 3, 0.8, 3)}), 1e-5},
      {"W7P",
       life(weibull7, {row(0.01, 4, 0.15), row(1 / 5000.0, 1, 0.85, 3), row(0.001, 3, 0, 3)}),
       1e-5}};
  return all;
}

DrawnPoints drawn(const SamplePlan& plan, WichmannHill random = WichmannHill({1, 2, 3, 4})) {
  test::NoChance chance;
  return draw_points(plan, random, chance);
}

// A precise point stands at the quantile of its median rank; a random sample of a life
// passes the test of Kolmogorov and Smirnov against it.
TEST(MonteCarlo, PointsAreThoseOfTheLife) {
  for (const Sampled& each : lives()) {
    SCOPED_TRACE(each.name);
    SamplePlan plan{each.life, 40, true};
    const DrawnPoints precise = drawn(plan);
    for (int i = 1; i <= 40; ++i) {
      const double y = (i - 0.3) / 40.4;
      EXPECT_NEAR(fraction_failed(each.life, precise.times[static_cast<std::size_t>(i) - 1]), y,
                  1e-6);
    }
    plan.is_precise = false;
    plan.size = 20000;
    const DrawnPoints random = drawn(plan);
    double distance = 0;
    for (std::size_t i = 0; i < random.times.size(); ++i)
      distance = std::max(distance, std::abs(fraction_failed(each.life, random.times[i]) -
                                             (static_cast<double>(i) + 0.5) / 20000));
    EXPECT_LT(distance, 1.95 / std::sqrt(20000)) << "0.1 % of true samples are further away";
    set_threads(1);
    EXPECT_EQ(drawn(plan).times, random.times);
    set_threads(0);
  }
}

TEST(MonteCarlo, ARegressionFindsTheLineOfAPreciseSample) {
  for (const Sampled& each : lives()) {
    if (each.life.rows.size() > 1) continue;
    SCOPED_TRACE(each.name);
    std::vector<SampleRow> rows = drawn({each.life, 50, true}).rows();
    for (SampleRow& point : rows) {
      const double unit = std::pow(10, std::floor(std::log10(point.time)) - 3);
      point.time = static_cast<float>(std::round(point.time / unit) * unit);
    }
    FitRequest request;
    request.model = each.life.model;
    Companion nobody;
    const FitAnswer answer = fit(make_sample(rows, request.ranks), request, nobody);
    ASSERT_TRUE(answer.fit());
    EXPECT_GT(answer.fit()->quality, 1 - each.miss);
    EXPECT_NEAR(answer.fit()->life.rows[0].Shape / each.life.rows[0].Shape, 1, 0.01);
    EXPECT_NEAR(answer.fit()->life.rows[0].Scale / each.life.rows[0].Scale, 1, 0.01);
  }
}

TEST(MonteCarlo, SevenParametersAreReadAsTheBoxesGiveThem) {
  const Life& w7 = lives().back().life;
  EXPECT_NEAR(*quantile(w7, 0.01), 36.62, 0.01);
  EXPECT_NEAR(*quantile(w7, 0.5), 727.6, 0.1);
}

TEST(MonteCarlo, RefusesWhatIsNoLife) {
  using enum LifeFault;
  using namespace model_code;
  const std::optional<double> none;
  const struct {
    std::int16_t model;
    std::vector<StatedRow> rows;
    std::optional<LifeFault> fault;
  } cases[] = {
      {weibull2, {{none, 1000, 0}}, slope},
      {weibull2, {{none, 1000, -2}}, slope},
      {weibull2, {{none, 0, 2}}, scale},
      {weibull2, {{none, 1000, none}}, missing},
      {weibull2, {{none, 1e-320, 2}}, number},
      {normal, {{none, 100, 0}}, scale},
      {normal, {{none, 0, 5}}, {}},
      {lognormal, {{none, -3, 2}}, scale},
      {lognormal, {{none, 3, 1}}, slope},
      {gumbel_lower, {{none, 0, 10}}, scale},
      {gumbel_upper, {{none, -5, 10}}, {}},
      {weibull5c, {{20, 100, 3}, {20, 1000, 3}}, shares},
      {weibull5c, {{-20, 100, 3}, {120, 1000, 3}}, shares},
      {weibull5c, {{20, 100, 3}, {none, 1000, 3}}, missing},
      {weibull7, {{20, 100, 3}, {80, 1000, 3}}, model},
      {weibull7, {{20, 100, 3}, {80, 1000, 3}, {none, 500, 3}}, {}},
      {weibull4, {{none, 100, 3}, {none, 1000, 3}}, {}},
      {weibull5x, {{20, 100, 3}, {80, 1000, 3}}, model},
  };
  for (const auto& each : cases)
    EXPECT_EQ(fault_of(*find_model(each.model), each.rows), each.fault) << each.model;
  for (const Life& beyond :
       {life(weibull2, {row(1e-37, 0.1)}), life(weibull2, {row(1e46, 2)}),
        life(lognormal, {row(1e-300, 1)}), life(weibull4, {row(1, 1e-4), row(1, 1e-4, 0)})})
    EXPECT_THROW(drawn({beyond, 100}), RunTimeError) << beyond.model;
}

struct Suspending {
  int size;
  SuspensionPlan plan;
  bool by_likelihood;
  const char* expected;  ///< F or S a point
  int count;             ///< of suspensions
  int collapsed = 0;
};

TEST(SuspensionPlan, TakesPointsInItsOrderAndWithinItsLimits) {
  const Suspending cases[] = {
      {5, {}, false, "FFFFF", 0},
      {5, {.left = 3}, false, "SSSFF", 3},
      {5, {.left = 4}, true, "FFFFF", 0},
      {5, {.left = -1, .right = -2}, false, "FFFFF", 0},
      {5, {.points = {2, 9, 4, 0, -3}}, false, "FSFSF", 2},
      {5, {.points = {3, 3, 3}}, false, "FFSFF", 3},
      {5, {.points = {1, 2, 3, 4, 5}}, false, "SSSSS", 5},
      {5, {.left = 3, .points = {5}}, false, "SSSFF", 3},
      {5, {.left = 3, .points = {4}}, true, "SSSFF", 3},
      {5, {.left = 3, .points = {2, 5}}, true, "SSSFF", 4},
      {5, {.right = 3}, false, "FFSSS", 3},
      {5, {.right = 4}, false, "FFFFF", 0},
      {5, {.right = 4}, true, "FSSSS", 4},
      {5, {.right = 5}, true, "FFFFF", 0},
      {5, {.right = 7}, true, "FFFFF", 0},
      {10, {.left = 5, .right = 7}, true, "SSSSSFFFFF", 5},
      {5, {.right = 3, .right_at_last_failure = true}, false, "FFS", 3, 3},
      {5, {.points = {4}, .right = 2, .right_at_last_failure = true}, false, "FFFS", 3, 2},
      {5, {.points = {1, 2, 3, 4, 5}, .random = 1}, false, "SSSSS", 5},
      {2, {.random = 1}, false, "FF", 0},
  };
  test::NoChance chance;
  const WichmannHill random({1, 2, 3, 4});
  for (const Suspending& each : cases) {
    const auto made = suspend(each.size, each.plan, each.by_likelihood, random, chance);
    std::string points;
    for (const bool is_suspended : made.is_suspended) points += is_suspended ? 'S' : 'F';
    EXPECT_EQ(points, each.expected);
    EXPECT_EQ(made.count, each.count) << points;
    EXPECT_EQ(made.collapsed, each.collapsed) << points;
  }
}

// By any seeds: random suspensions are as many as asked for, while failures stay.
TEST(SuspensionPlan, DrawsRandomSuspensions) {
  test::NoChance chance;
  test::RandomNumbers seeds(4);
  for (int run = 0; run < 300; ++run) {
    const WichmannHill random(
        {seeds.whole(1, 1 << 30), seeds.whole(1, 1 << 30), seeds.whole(1, 1 << 30), 1});
    const int size = seeds.whole(2, 30), wanted = seeds.whole(0, size + 3);
    const bool by_likelihood = seeds.chance(0.5);
    const SuspensionPlan plan{.right = seeds.whole(0, 2), .random = wanted};
    const auto made = suspend(size, plan, by_likelihood, random, chance);
    const auto marked = std::count(made.is_suspended.begin(), made.is_suspended.end(), true);
    EXPECT_GE(size - marked, by_likelihood ? 1 : std::min(size, 2));
    const auto tail =
        plan.right < size && (by_likelihood || size - plan.right >= 2) ? plan.right : 0;
    if (size - tail - wanted >= 2) {
      EXPECT_EQ(marked, tail + wanted);
    }
    if (by_likelihood && wanted >= size - 1 && tail == 0) {
      EXPECT_EQ(size - marked, 1);
      EXPECT_NEAR(static_cast<double>(made.count), size - 1.5, 0.5) << "the last may not count";
    }
    EXPECT_EQ(suspend(size, plan, by_likelihood, random, chance).is_suspended, made.is_suspended);
    if (tail > 0 || size - wanted < 2) continue;
    const auto& s = random.states();
    WichmannHill own({s[1] / 2 + 1, s[2] / 2 + 1, s[3] / 2 + 1, s[0] / 2 + 1});
    std::vector<bool> by_hand(static_cast<std::size_t>(size));
    while (std::count(by_hand.begin(), by_hand.end(), true) < wanted)
      by_hand[static_cast<std::size_t>(
          std::clamp(std::nearbyint(own.next(chance) * size), 1.0, double(size)) - 1)] = true;
    EXPECT_EQ(made.is_suspended, by_hand) << size << " " << wanted;
  }
}

}  // namespace
}  // namespace tavlo
