// Laws of the searched fits at the door: W4P, W5C and W7P by any method, W3T by likelihood.
#include "fit/search/searched_fits.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "fit/door/fit.h"
#include "fit/parallel.h"
#include "support/random_samples.h"
#include "support/reference_book.h"

namespace tavlo {
namespace {

using Rows = std::vector<SampleRow>;

constexpr std::int16_t mixtures[] = {model_code::weibull4, model_code::weibull5c,
                                     model_code::weibull7};

/// A method with the choice whether suspensions take part in its likelihood.
struct Way {
  const char* name;
  std::int16_t method;
  bool censored;
};
constexpr Way ways[] = {{"rr", method_code::x_on_y, false},
                        {"mle", method_code::mle, false},
                        {"rrs", method_code::y_on_x, false},
                        {"mle censored", method_code::mle, true}};
constexpr Way likelihood = ways[1];

FitRequest request_of(std::int16_t model, const Way& way) {
  FitRequest request;
  request.model = model, request.method = way.method, request.censored = way.censored;
  return request;
}

Sample sample_of(const Rows& rows) { return make_sample(rows, RankKind::benard); }

FitAnswer answer_to(const Sample& sample, std::int16_t model, const Way& way) {
  Companion companion;
  return fit(sample, request_of(model, way), companion);
}

FitAnswer answer_to(const Rows& rows, std::int16_t model, const Way& way) {
  return answer_to(sample_of(rows), model, way);
}

/// The fit, which must be there.
Fit fit_of(const FitAnswer& answer) {
  if (!answer.fit()) ADD_FAILURE() << "refused: " << static_cast<int>(answer.refusal()->code);
  return answer.fit() ? *answer.fit() : Fit{};
}

const Note* note_of(const FitAnswer& answer, NoteCode code) {
  for (const Note& note : answer.notes)
    if (note.code == code) return &note;
  return nullptr;
}

std::string name_of(std::int16_t model, const Way& way, std::uint64_t seed) {
  return std::string(find_model(model)->command_name) + "/" + way.name + " seed " +
         std::to_string(seed);
}

bool is_likelihood(const Way& way) { return way.method == method_code::mle; }

Rows without_suspensions(Rows rows) {
  std::erase_if(rows, [](const SampleRow& row) { return !(row.failures > 0); });
  for (SampleRow& row : rows) row.suspensions = 0;
  return rows;
}

/// W2P on the rows that a mixture's fit by this way takes.
Fit contained_weibull(const Rows& rows, const Way& way) {
  const bool failures_alone = is_likelihood(way) && !way.censored;
  return fit_of(
      answer_to(failures_alone ? without_suspensions(rows) : rows, model_code::weibull2, way));
}

Rows scaled(Rows rows, int exponent) {
  for (SampleRow& row : rows) row.time = std::ldexp(row.time, exponent);
  return rows;
}

Rows with_weights(Rows rows, double factor) {
  for (SampleRow& row : rows) row.failures *= factor, row.suspensions *= factor;
  return rows;
}

void expect_same_but_for_unit(const FitAnswer& one, const FitAnswer& other, const Sample& sample,
                              int exponent, const Way& way) {
  ASSERT_EQ(one.result.index(), other.result.index());
  EXPECT_EQ(one.notes, other.notes);
  if (!one.fit()) return;
  const Fit &a = *one.fit(), &b = *other.fit();
  ASSERT_EQ(a.starts.has_value(), b.starts.has_value());
  if (a.starts) {
    EXPECT_EQ(a.starts->tried, b.starts->tried);
    EXPECT_EQ(a.starts->agreed, b.starts->agreed);
  }
  EXPECT_EQ(a.proof, b.proof);
  const double shift = is_likelihood(way) ? -sample.total_failures * exponent * std::log(2.0) : 0;
  EXPECT_NEAR(b.quality, a.quality + shift,
              is_likelihood(way) ? 1e-12 * (std::fabs(a.quality) + std::fabs(shift)) : 0);
  ASSERT_EQ(a.life.rows.size(), b.life.rows.size());
  for (std::size_t i = 0; i < a.life.rows.size(); ++i) {
    const FitParam &p = a.life.rows[i], &q = b.life.rows[i];
    EXPECT_EQ(p.Shape, q.Shape);
    EXPECT_EQ(p.Fraction, q.Fraction);
    EXPECT_EQ(is_unreached(p) ? p.Scale : std::ldexp(p.Scale, -exponent), q.Scale);
    EXPECT_EQ(std::ldexp(p.T0, exponent), q.T0);
  }
}

TEST(SearchedFits, AnotherUnitOfTimeChangesNoShapeShareOrProof) {
  for (const std::int16_t model : {mixtures[0], mixtures[1], mixtures[2], model_code::weibull3})
    for (const Way& way : ways)
      for (const std::uint64_t seed : {1u, 2u}) {
        if (model == model_code::weibull3 && !is_likelihood(way)) continue;
        SCOPED_TRACE(name_of(model, way, seed));
        const Rows rows = test::mixture_sample(seed, model, 60).rows;
        const Sample sample = sample_of(rows);
        const FitAnswer answer = answer_to(sample, model, way);
        for (const int exponent : {-20, -13, 20})
          expect_same_but_for_unit(answer, answer_to(scaled(rows, exponent), model, way), sample,
                                   exponent, way);
      }
}

/// Slopes, shares and expected failures of an answer are within what an answer may have.
void expect_inside_fence(const Fit& fit, const Sample& sample, double weibull_slope) {
  const test::Numbers held = test::expected_failures_of(fit.life, sample);
  for (std::size_t i = 0; i < held.size(); ++i) {
    if (is_unreached(fit.life.rows[i])) continue;
    EXPECT_LE(fit.life.rows[i].Shape, std::max(50.0, 25 * weibull_slope) * (1 + 1e-9));
    EXPECT_GE(held[i], 2 - 1e-6L) << "row " << i + 1;
  }
  const bool mixed = fit.life.model != model_code::weibull4;
  if (!mixed || fit.proof->kind == Proof::Kind::flat) return;
  EXPECT_GE(fit.life.rows[0].Fraction, 0.001 - 1e-12);
  EXPECT_LE(fit.life.rows[0].Fraction, 0.999 + 1e-12);
  EXPECT_NEAR(fit.life.rows[0].Fraction + fit.life.rows[1].Fraction, 1, 1e-14);
}

/// The gradient is about 0 and the curvature definite, by differences of a plain objective.
void expect_proven(const Fit& fit, const Sample& sample, const FitRequest& request) {
  const double grain = request.method == method_code::mle ? 1e-6 : 1e-10;
  const bool at_bound = fit.proof->kind == Proof::Kind::bound;
  EXPECT_EQ(at_bound, fit.proof->at_share_bound);
  EXPECT_LE(fit.proof->decrement, grain);
  EXPECT_GT(fit.proof->smallest_curvature, 0);
  const test::OptimumCheck check = test::check_optimum(fit.life, sample, request, at_bound);
  ASSERT_TRUE(check.decrement) << "the curvature is not definite";
  EXPECT_LE(*check.decrement, 2 * grain);
  if (!at_bound) return;
  EXPECT_GT(check.share_slope * (fit.life.rows[0].Fraction - 0.5), 0) << "points inwards";
}

/// Judges one answer against the models that it contains; returns its quality.
double judge(const Sample& sample, std::int16_t model, const Way& way,
             std::span<const double> contained, double weibull_slope) {
  const FitAnswer answer = answer_to(sample, model, way);
  const Fit fit = fit_of(answer);
  if (!answer.fit()) return -HUGE_VAL;
  const FitRequest request = request_of(model, way);
  EXPECT_TRUE(fit.proof && fit.starts);
  if (!fit.proof || !fit.starts) return fit.quality;
  const auto own = static_cast<double>(test::quality_of(fit.life, sample, request));
  EXPECT_NEAR(fit.quality, own, 1e-9 * std::max(1.0, std::fabs(own)));
  const double best_inside = *std::max_element(contained.begin(), contained.end());
  EXPECT_GE(fit.quality, best_inside - (is_likelihood(way) ? 1e-6 : 1e-10));
  expect_inside_fence(fit, sample, weibull_slope);
  if (fit.proof->kind == Proof::Kind::flat) {
    EXPECT_NE(find_model(fit.proof->same_as), nullptr);
    EXPECT_NEAR(fit.quality, best_inside, is_likelihood(way) ? 1e-6 : 1e-10);
    EXPECT_TRUE(note_of(answer, NoteCode::no_second_population));
  } else {
    expect_proven(fit, sample, request);
  }
  const bool left_out = is_likelihood(way) && !way.censored && sample.total_suspensions > 0;
  EXPECT_EQ(note_of(answer, NoteCode::suspensions_left_out) != nullptr, left_out);
  return fit.quality;
}

TEST(SearchedFits, EveryAnswerIsAProvenOptimumAndNoneIsBelowAContainedModel) {
  for (const std::int16_t truth : mixtures)
    for (const std::uint64_t seed : {11u, 12u, 15u})
      for (const Way& way : ways) {
        const Rows rows = test::mixture_sample(seed, truth, 60).rows;
        const Sample sample = sample_of(rows);
        SCOPED_TRACE(name_of(truth, way, seed) + " as the truth");
        const Fit weibull = contained_weibull(rows, way);
        const double slope = weibull.life.rows.at(0).Shape;
        std::vector<double> contained = {weibull.quality};
        const auto add = [&](std::int16_t model, std::span<const double> inside) {
          SCOPED_TRACE(find_model(model)->command_name);
          return judge(sample, model, way, inside, slope);
        };
        const double weibull4 = add(model_code::weibull4, contained);
        const double weibull5c = add(model_code::weibull5c, contained);
        contained.insert(contained.end(), {weibull4, weibull5c});
        add(model_code::weibull7, contained);
      }
}

TEST(SearchedFits, OfALargeSampleReachesTheOptimumNearTheTruth) {
  test::RandomNumbers random(21);
  const Life truth = test::weibull7(4, 1000, 1, 3000, 2, 50, 0.15);
  const Sample sample = sample_of(test::draws(random, truth, 5000));
  const FitRequest request = request_of(model_code::weibull7, likelihood);
  const Fit fit = fit_of(answer_to(sample, model_code::weibull7, likelihood));
  // Twice the gain over the truth is about chi squared with seven degrees of freedom.
  const auto gain = fit.quality - static_cast<double>(test::quality_of(truth, sample, request));
  EXPECT_GT(gain, 0.5);
  EXPECT_LT(gain, 15);
  ASSERT_TRUE(fit.proof);
  expect_proven(fit, sample, request);
}

TEST(SearchedFits, NeitherTheOrderOfTheRowsNorTheThreadsChangeABit) {
  for (const std::int16_t model : mixtures)
    for (const Way& way : ways) {
      test::RandomNumbers random(5);
      const Rows rows = test::draws(random, test::random_life(random, model), 40, 0.3);
      SCOPED_TRACE(name_of(model, way, 5));
      Rows shuffled = rows;
      for (std::size_t i = shuffled.size(); i > 1; --i)
        std::swap(shuffled[i - 1],
                  shuffled[static_cast<std::size_t>(random.whole(0, static_cast<int>(i) - 1))]);
      set_threads(1);
      const FitAnswer alone = answer_to(rows, model, way);
      set_threads(2);
      EXPECT_EQ(alone, answer_to(shuffled, model, way));
      EXPECT_EQ(alone, answer_to(rows, model, way));
      set_threads(0);
    }
}

TEST(SearchedFits, PlainWeibullDataHaveNoSecondPopulation) {
  // Exactly on a Weibull's line: any second population brings nothing.
  Rows rows;
  for (int i = 1; i <= 40; ++i)
    rows.push_back(
        {static_cast<float>(1000 * std::pow(-std::log1p(-(i - 0.3) / 40.4), 1 / 2.5)), 1});
  for (const std::int16_t model : mixtures)
    for (const Way& way : ways) {
      SCOPED_TRACE(name_of(model, way, 0));
      const FitAnswer answer = answer_to(rows, model, way);
      const Note* note = note_of(answer, NoteCode::no_second_population);
      ASSERT_NE(note, nullptr);
      ASSERT_EQ(note->values.size(), 1u);
      EXPECT_GE(note->values[0], 0);
      EXPECT_LT(note->values[0], is_likelihood(way) ? 0.5 : 1e-4);
    }
}

TEST(SearchedFits, AShareStaysInItsFenceWhereOneClusterHoldsAllFailures) {
  Rows rows;
  for (const float time : {1.1F, 1.51F, 1.68F, 1.78F, 1.85F, 1.93F, 1.98F, 2.0F, 2.03F})
    rows.push_back({time, 1, 0, 0});
  rows.push_back({2.08F, 1, 12, 0});
  rows[8] = {2.03F, 0, 1, 0};
  for (const Way& way : ways) {
    const double share = fit_of(answer_to(rows, model_code::weibull5c, way)).life.rows[0].Fraction;
    EXPECT_TRUE(share == 0 || (share > 0.00099 && share < 0.99901)) << way.name << ' ' << share;
  }
}

TEST(SearchedFits, TellsHowManySuspensionsWereLeftOut) {
  const Rows rows = {{100, 3}, {200, 2}, {250, 0, 4}, {300, 4}, {500, 3}, {700, 2, 1}, {900, 2}};
  const FitAnswer answer = answer_to(rows, model_code::weibull5c, likelihood);
  const Note* note = note_of(answer, NoteCode::suspensions_left_out);
  ASSERT_NE(note, nullptr);
  EXPECT_EQ(note->values, std::vector<double>{5});
  EXPECT_FALSE(
      note_of(answer_to(rows, model_code::weibull5c, ways[3]), NoteCode::suspensions_left_out));
  EXPECT_FALSE(
      note_of(answer_to(rows, model_code::weibull5c, ways[0]), NoteCode::suspensions_left_out));
}

TEST(SearchedFits, RefusesWhatHasNoAnswer) {
  struct Case {
    const char* what;
    Rows rows;
    RefusalCode code;
  };
  const Case cases[] = {
      {"no failure", {{100, 0, 5}, {200, 0, 3}}, RefusalCode::no_failure},
      {"one failure", {{100, 1}, {200, 0, 3}}, RefusalCode::too_few_failures},
      {"all times equal", {{100, 30}}, RefusalCode::no_spread},
      {"a time of zero", {{0, 1}, {10, 5}, {20, 9}, {30, 9}}, RefusalCode::time_not_above_zero},
  };
  for (const Case& one : cases)
    for (const std::int16_t model : mixtures)
      for (const Way& way : ways) {
        SCOPED_TRACE(std::string(one.what) + ", " + name_of(model, way, 0));
        const FitAnswer answer = answer_to(one.rows, model, way);
        ASSERT_TRUE(answer.refusal());
        const RefusalCode code = answer.refusal()->code;
        const bool gate_first =
            code == RefusalCode::too_few_failures && one.code == RefusalCode::no_failure;
        EXPECT_TRUE(code == one.code || gate_first) << static_cast<int>(code);
      }
}

struct Impatient : Companion {
  bool stop_wanted() override { return true; }
};

TEST(SearchedFits, EndsWhenThePersonWantsItToEnd) {
  const Sample sample = sample_of(test::mixture_sample(4, model_code::weibull7).rows);
  Impatient companion;
  const FitAnswer answer = fit(sample, request_of(model_code::weibull7, likelihood), companion);
  ASSERT_TRUE(answer.refusal());
  EXPECT_EQ(answer.refusal()->code, RefusalCode::stopped);
}

/// 28 units fail early, 4128 never: what the rest lives to cannot be known.
Rows heavily_censored() {
  test::RandomNumbers random(28);
  Rows rows = test::draws(random, test::weibull(1.6, 300), 28);
  for (int i = 0; i < 43; ++i) rows.push_back({static_cast<float>(4000 + 10 * i), 0, 96});
  return rows;
}

TEST(SearchedFits, ReportsAPopulationThatNoFailureReaches) {
  const Rows rows = heavily_censored();
  const Fit failing = contained_weibull(rows, likelihood);
  const double share = 28.0 / (28 + 43 * 96);
  // All carriers have failed long before the first suspension, so both parts stand alone.
  const double cured = failing.quality + 28 * std::log(share) + 43 * 96 * std::log1p(-share);
  for (const std::int16_t model : {model_code::weibull5c, model_code::weibull7}) {
    SCOPED_TRACE(find_model(model)->command_name);
    const FitAnswer answer = answer_to(rows, model, ways[3]);
    const Fit fit = fit_of(answer);
    EXPECT_GE(fit.quality, cured - 1e-6);
    ASSERT_GE(fit.life.rows.size(), 2u);
    EXPECT_TRUE(is_unreached(fit.life.rows[1]));
    EXPECT_EQ(fit.life.rows[1].Shape, 1);
    EXPECT_NEAR(fit.life.rows[0].Fraction, share, 1e-5 * share);
    EXPECT_NEAR(fit.life.rows[0].Shape, failing.life.rows.at(0).Shape, 1e-4);
    EXPECT_TRUE(note_of(answer, NoteCode::population_not_reached));
  }
}

TEST(SearchedFits, CountsAreWeights) {
  test::RandomNumbers random(6);
  const Rows rows = test::draws(random, test::weibull5c(3, 1000, 1.5, 60, 0.25), 80, 0.4);
  Rows listed_twice;
  for (const SampleRow& row : rows) listed_twice.insert(listed_twice.end(), 2, row);
  struct Case {
    Rows rows;
    double factor;
  };
  const Case cases[] = {{with_weights(rows, 0.75), 0.75},
                        {with_weights(rows, 1e6), 1e6},
                        {with_weights(rows, 1e13), 1e13},
                        {listed_twice, 2}};
  for (const std::int16_t model : {model_code::weibull5c, model_code::weibull7})
    for (const Way& way : {ways[1], ways[3]}) {
      const Fit once = fit_of(answer_to(rows, model, way));
      for (const Case& one : cases) {
        SCOPED_TRACE(name_of(model, way, 6) + " x " + std::to_string(one.factor));
        const Fit fit = fit_of(answer_to(one.rows, model, way));
        EXPECT_NEAR(fit.quality / one.factor, once.quality, 1e-6);
        ASSERT_EQ(fit.life.rows.size(), once.life.rows.size());
        for (std::size_t i = 0; i < fit.life.rows.size(); ++i)
          EXPECT_NEAR(fit.life.rows[i].Shape, once.life.rows[i].Shape,
                      1e-3 * once.life.rows[i].Shape);
      }
    }
}

/// The best that a search of its own with thousands of starts found:
/// bench/convergence --table --samples 2 --most 120 --seed 1.
TEST(SearchedFits, ReachesTheBestKnownAnswer) {
  struct Case {
    const char* model;
    std::size_t way;
    std::uint64_t seed;
    double best;
  };
  static constexpr Case cases[] = {
      {"W4P", 0, 100003, 0.990843424}, {"W4P", 0, 100004, 0.916248747},
      {"W4P", 1, 100003, -419.195025}, {"W4P", 1, 100004, -112.082836},
      {"W4P", 2, 100003, 0.988222426}, {"W4P", 2, 100004, 0.916248747},
      {"W4P", 3, 100003, -419.195025}, {"W4P", 3, 100004, -113.628183},
      {"W5C", 0, 100003, 0.991300678}, {"W5C", 0, 100004, 0.989230272},
      {"W5C", 1, 100003, -271.024122}, {"W5C", 1, 100004, -183.992698},
      {"W5C", 2, 100003, 0.986784627}, {"W5C", 2, 100004, 0.985655699},
      {"W5C", 3, 100003, -271.024122}, {"W5C", 3, 100004, -183.992698},
      {"W7P", 0, 100003, 0.996640645}, {"W7P", 0, 100004, 0.992490884},
      {"W7P", 1, 100003, -177.135333}, {"W7P", 1, 100004, -811.479853},
      {"W7P", 2, 100003, 0.991625536}, {"W7P", 2, 100004, 0.996765687},
      {"W7P", 3, 100003, -177.135333}, {"W7P", 3, 100004, -819.482083},
  };
  for (const Case& one : cases) {
    const Way& way = ways[one.way];
    const std::int16_t model = find_model_by_name(one.model)->code;
    SCOPED_TRACE(name_of(model, way, one.seed));
    const Rows rows = test::mixture_sample(one.seed, model, 120).rows;
    const Fit fit = fit_of(answer_to(rows, model, way));
    EXPECT_GE(fit.quality, one.best - (is_likelihood(way) ? 0.05 : 1e-4));
  }
}

/// The likelihood of a W3T at a given t0: of the Weibull of t - t0, which has one maximum.
double profile(const Sample& sample, double t0) {
  std::vector<SampleRow> rows;
  for (std::size_t i = 0; i < sample.size(); ++i)
    rows.push_back({static_cast<float>(outer_time(sample, sample.time[i])), sample.failures[i]});
  double low = -6, high = 8, value = 0;  // ln beta
  for (int turn = 0; turn < 200; ++turn) {
    const double beta = std::exp((low + high) / 2);
    double n = 0, logs = 0, powers = 0, both = 0, last = std::log(rows.back().time - t0);
    for (const SampleRow& row : rows) {
      const double x = std::log(row.time - t0) - last;
      n += row.failures, logs += row.failures * x;
      powers += row.failures * std::exp(beta * x), both += row.failures * x * std::exp(beta * x);
    }
    const double slope = n / beta + logs - n * both / powers;
    (slope > 0 ? low : high) = std::log(beta);
    value = n * std::log(beta) + (beta - 1) * logs - n * std::log(powers / n) - n - n * last;
  }
  return value;
}

TEST(SearchedFits, MinimumLifeByLikelihoodIsTheHighestInteriorMaximumOrNone) {
  int fitted = 0, refused = 0;
  for (std::uint64_t seed = 1; seed <= 16; ++seed) {
    SCOPED_TRACE(seed);
    test::RandomNumbers random(seed);
    const Life truth = test::weibull(random.uniform(0.8, 4), 1000, 800);
    const Rows rows = test::draws(random, truth, random.whole(15, 60));
    const Sample sample = sample_of(rows);
    const double first = rows.front().time, range = rows.back().time - first;
    // The profile by ln of the distance from the first failure.
    std::vector<double> heights;
    for (double distance = 1e-4; distance < 100; distance *= 1.15)
      heights.push_back(profile(sample, first - distance * range));
    double highest = -HUGE_VAL, clearest = 0;
    for (std::size_t i = 1; i + 1 < heights.size(); ++i) {
      if (heights[i] < heights[i - 1] || heights[i] < heights[i + 1]) continue;
      highest = std::max(highest, heights[i]);
      clearest =
          std::max(clearest, std::min(heights[i] - heights[i - 1], heights[i] - heights[i + 1]));
    }
    const FitAnswer answer = answer_to(sample, model_code::weibull3, likelihood);
    if (const Fit* fit = answer.fit()) {
      ++fitted;
      EXPECT_GE(fit->quality, highest - 1e-6);
      EXPECT_NEAR(fit->quality, profile(sample, fit->life.rows.at(0).T0), 1e-6);
      ASSERT_TRUE(fit->proof);
      expect_proven(*fit, sample, request_of(model_code::weibull3, likelihood));
    } else {
      ++refused;
      EXPECT_EQ(answer.refusal()->code, RefusalCode::no_interior_maximum);
      EXPECT_EQ(answer.refusal()->values.size(), 1u);
      EXPECT_LT(clearest, 1e-6) << "a maximum stands inside";
    }
  }
  EXPECT_GT(fitted, 2);
  EXPECT_GT(refused, 0);
}

}  // namespace
}  // namespace tavlo
