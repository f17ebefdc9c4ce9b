// Laws of the searched fits at the door: W4P, W5C and W7P by any method, W3T by likelihood.
#include "fit/search/searched_fits.h"

#include "fit/door/fits.h"
#include "support/reference_book.h"

namespace tavlo {
namespace {

using test::Asked;
using test::fit_of;
using test::fit_rows;
using test::fit_sample;
using test::mixtures;
using test::Rows;
using test::ways_of;

Asked by_likelihood(std::int16_t model) { return {model, method_code::mle}; }
Asked censored(std::int16_t model) {
  return {.model = model, .method = method_code::mle, .censored = true};
}

const Note* note_of(const FitAnswer& answer, NoteCode code) {
  for (const Note& note : answer.notes)
    if (note.code == code) return &note;
  return nullptr;
}

bool leaves_suspensions_out(const Asked& asked) { return asked.by_likelihood() && !asked.censored; }

/// W2P on the rows that a mixture's fit takes.
Fit contained_weibull(Rows rows, const Asked& asked) {
  if (leaves_suspensions_out(asked)) {
    std::erase_if(rows, [](const SampleRow& row) { return !(row.failures > 0); });
    for (SampleRow& row : rows) row.suspensions = 0;
  }
  return fit_of(fit_rows(rows, {model_code::weibull2, asked.method}));
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
  // A last step settles it; r squared of many ties is known to fewer digits.
  EXPECT_LE(*check.decrement, request.method == method_code::mle ? 5e-11 : 1e-12);
  if (fit.life.model != model_code::weibull3) {  // which is searched by other parameters
    EXPECT_TRUE(test::curves_more_than(check.at, 0.9 * fit.proof->smallest_curvature));
    EXPECT_FALSE(test::curves_more_than(check.at, 1.1 * fit.proof->smallest_curvature));
  }
  if (!at_bound) return;
  EXPECT_GT(check.share_slope * (fit.life.rows[0].Fraction - 0.5), 0) << "points inwards";
}

/// Judges one answer against the models that it contains; returns its quality.
double judge(const Sample& sample, const Asked& asked, std::span<const double> contained,
             double weibull_slope) {
  SCOPED_TRACE(asked.name());
  const FitAnswer answer = fit_sample(sample, asked);
  const Fit fit = fit_of(answer);
  const FitRequest request = test::request_of(asked);
  EXPECT_TRUE(fit.proof && fit.starts);
  if (!fit.proof || !fit.starts) return fit.quality;
  const auto own = static_cast<double>(test::quality_of(fit.life, sample, request));
  EXPECT_NEAR(fit.quality, own, 1e-9 * std::max(1.0, std::fabs(own)));
  // More ends at the answer than contained models can bring: it was found again and again.
  if (fit.starts->agreed > 15) {
    EXPECT_FALSE(note_of(answer, NoteCode::unconfirmed));
  }
  EXPECT_LE(fit.starts->tried, request.search.most_starts);
  const double best_inside = *std::max_element(contained.begin(), contained.end());
  EXPECT_GE(fit.quality, best_inside - (asked.by_likelihood() ? 1e-6 : 1e-10));
  expect_inside_fence(fit, sample, weibull_slope);
  if (fit.proof->kind == Proof::Kind::flat) {
    EXPECT_NE(find_model(fit.proof->same_as), nullptr);
    EXPECT_NEAR(fit.quality, best_inside, asked.by_likelihood() ? 1e-6 : 1e-10);
    EXPECT_TRUE(note_of(answer, NoteCode::no_second_population));
  } else {
    expect_proven(fit, sample, request);
  }
  const Note* left_out = note_of(answer, NoteCode::suspensions_left_out);
  EXPECT_EQ(left_out != nullptr, leaves_suspensions_out(asked) && sample.total_suspensions > 0);
  EXPECT_EQ(left_out ? left_out->values : std::vector<double>{sample.total_suspensions},
            std::vector<double>{sample.total_suspensions});
  return fit.quality;
}

TEST(SearchedFits, EveryAnswerIsAProvenOptimumAndNoneIsBelowAContainedModel) {
  for (const std::int16_t truth : mixtures)
    for (const std::uint64_t seed : {11u, 12u, 15u})
      for (Asked asked : ways_of(truth)) {
        const Rows rows = test::mixture_sample(seed, truth, 60).rows;
        const Sample sample = make_sample(rows, RankKind::benard);
        SCOPED_TRACE(asked.name() + " is the truth, seed " + std::to_string(seed));
        const Fit weibull = contained_weibull(rows, asked);
        std::vector<double> found = {weibull.quality};
        for (const std::int16_t model : mixtures) {
          asked.model = model;
          const auto contained =
              model == model_code::weibull7 ? std::span(found) : std::span(found).first(1);
          found.push_back(judge(sample, asked, contained, weibull.life.rows.at(0).Shape));
        }
      }
}

// Twice the gain over the truth is about chi squared with a degree of freedom a parameter. A
// third population of a few per mille shows on all rows, and hardly on a choice of them.
TEST(SearchedFits, ALargeSampleIsFittedSomewhatBetterThanItsTruth) {
  test::RandomNumbers third(27966039108ULL), few(28);
  std::vector<std::tuple<Life, int, test::RandomNumbers>> cases = {
      {test::weibull7(4, 1000, 1, 3000, 2, 50, 0.15), 2500, test::RandomNumbers(21)},
      {test::random_life(third, model_code::weibull7), 100000, third},
      {test::random_life(few, model_code::weibull7), 1000, few}};
  for (const double beta : {1.2, 1.6, 2.2, 3.0})
    cases.emplace_back(test::weibull(beta, 1000, 500), 5000, 31);
  for (auto& [truth, n, random] : cases) {
    const Asked asked = by_likelihood(truth.model);
    const Sample sample = make_sample(test::draws(random, truth, n), RankKind::benard);
    const Fit fit = fit_of(fit_sample(sample, asked));
    const auto least =
        static_cast<double>(test::quality_of(truth, sample, test::request_of(asked)));
    EXPECT_GT(fit.quality, least + 1.25) << n;
    EXPECT_LT(fit.quality, least + 15) << n;
    ASSERT_TRUE(fit.proof);
    if (n < 5000) expect_proven(fit, sample, test::request_of(asked));
  }
}

TEST(SearchedFits, PlainWeibullDataHaveNoSecondPopulation) {
  // Exactly on a Weibull's line: any second population brings nothing.
  Rows rows;
  for (int i = 1; i <= 40; ++i)
    rows.push_back(
        {static_cast<float>(1000 * std::pow(-std::log1p(-(i - 0.3) / 40.4), 1 / 2.5)), 1});
  for (const std::int16_t model : mixtures)
    for (const Asked& asked : ways_of(model)) {
      SCOPED_TRACE(asked.name());
      const FitAnswer answer = fit_rows(rows, asked);
      const Note* note = note_of(answer, NoteCode::no_second_population);
      ASSERT_NE(note, nullptr);
      ASSERT_EQ(note->values.size(), 1u);
      EXPECT_GE(note->values[0], 0);
      EXPECT_LT(note->values[0], asked.by_likelihood() ? 0.5 : 1e-4);
    }
}

// What stands better on the rows of a first look only is nothing that a person must know.
TEST(SearchedFits, NoBetterPointIsToldOfALargeWeibullSample) {
  for (int round = 0; round < 12; ++round) {
    test::RandomNumbers random(700 + static_cast<std::uint64_t>(round));
    const Sample sample =
        make_sample(test::draws(random, test::weibull(1.5, 1000), 2000), RankKind::benard);
    const FitAnswer answer = fit_sample(sample, {model_code::weibull4, method_code::x_on_y});
    EXPECT_EQ(note_of(answer, NoteCode::better_beyond_fence), nullptr) << round;
  }
}

// Counts as uneven as these put the lightest rows hundreds of ln units below the likelihood;
// one cluster that holds all failures drives the share to its fence.
TEST(SearchedFits, OddRowsAreFittedWhereOneWeibullIs) {
  Rows cluster = {{2.03F, 1, 1}, {2.08F, 0, 12}};
  for (const float time : {1.1F, 1.51F, 1.68F, 1.78F, 1.85F, 1.93F, 1.98F, 2.0F})
    cluster.insert(cluster.end() - 2, {time, 1});
  const Rows heavy = {{100, 1}, {200, 1}, {300, 1}, {400, 1}, {500, 1}, {600, 3000}};
  const Rows light = {{100, 2000}, {110, 1}, {120, 1}, {130, 1}, {140, 1}, {150, 1}};
  const Rows close = {{34.87F, 1}, {134.9F, 700}, {134.95F, 2}, {134.99F, 3}};
  for (const Rows& rows : {heavy, light, close, cluster})
    for (const std::int16_t model : {model_code::weibull4, model_code::weibull5c})
      for (const Asked& asked : ways_of(model)) {
        SCOPED_TRACE(asked.name() + " of " + std::to_string(rows[0].time));
        const Fit fit = fit_of(fit_rows(rows, asked)), weibull = contained_weibull(rows, asked);
        EXPECT_GE(fit.quality, weibull.quality - 1e-6);
        expect_inside_fence(fit, make_sample(rows, asked.ranks), weibull.life.rows.at(0).Shape);
      }
}

TEST(SearchedFits, SaysThatABetterPointIsNoAnswer) {
  Rows infant = {{1, 1}};
  for (int i = 100; i < 120; ++i) infant.push_back({static_cast<float>(i), 1});
  for (const std::int16_t model : {model_code::weibull4, model_code::weibull5c}) {
    const FitAnswer answer = fit_rows(infant, by_likelihood(model));
    const Note* note = note_of(answer, NoteCode::better_beyond_fence);
    ASSERT_NE(note, nullptr);
    EXPECT_GT(note->values.at(0), 33);  // a population of that one failure
  }
  // Three different times, listed over and over: any five parameters go through them.
  Rows saturated;
  for (int i = 0; i < 1000; ++i) saturated.push_back({i < 900 ? 50.0F : i < 970 ? 6.0F : 7.0F, 1});
  const FitAnswer answer = fit_rows(saturated, {model_code::weibull5c, method_code::y_on_x});
  const Note* note = note_of(answer, NoteCode::fewer_points);
  ASSERT_NE(note, nullptr);
  EXPECT_EQ(note->values, (std::vector<double>{3, 5}));
  EXPECT_EQ(fit_of(answer).proof->kind, Proof::Kind::flat);
}

// 28 units fail early, 4128 never: what the rest lives to cannot be known.
TEST(SearchedFits, ReportsAPopulationThatNoFailureReaches) {
  test::RandomNumbers random(28);
  Rows rows = test::draws(random, test::weibull(1.6, 300), 28);
  for (int i = 0; i < 43; ++i) rows.push_back({static_cast<float>(4000 + 10 * i), 0, 96});
  const Fit failing = contained_weibull(rows, by_likelihood(model_code::weibull5c));
  const double share = 28.0 / (28 + 43 * 96);
  // All carriers have failed long before the first suspension, so both parts stand alone.
  const double cured = failing.quality + 28 * std::log(share) + 43 * 96 * std::log1p(-share);
  for (const std::int16_t model : {model_code::weibull5c, model_code::weibull7}) {
    SCOPED_TRACE(find_model(model)->command_name);
    const FitAnswer answer = fit_rows(rows, censored(model));
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

// Eight failures of 28 units on a line: that the rest never fails is no better than W2P.
TEST(SearchedFits, AShareAloneThatGainsNothingIsToldSo) {
  Rows rows;
  for (int i = 1; i <= 8; ++i) rows.push_back({100.0F * static_cast<float>(i), 1});
  rows.push_back({900, 0, 20});
  const FitAnswer answer = fit_rows(rows, censored(model_code::weibull5c));
  const Note* note = note_of(answer, NoteCode::no_second_population);
  ASSERT_NE(note, nullptr);
  EXPECT_NEAR(
      note->values.at(0),
      fit_of(answer).quality - fit_of(fit_rows(rows, censored(model_code::weibull2))).quality,
      1e-6);
}

// The best that a search of its own with thousands of starts found, by rr, mle, rrs and mle
// with suspensions: bench/convergence --table --samples 2 --most 120 --seed 1.
TEST(SearchedFits, ReachesTheBestKnownAnswer) {
  const std::tuple<std::int16_t, std::uint64_t, std::array<double, 4>> cases[] = {
      {290, 100003, {0.990843424, -419.195025, 0.988222426, -419.195025}},
      {290, 100004, {0.916248747, -112.082836, 0.916248747, -113.628183}},
      {354, 100003, {0.991300678, -271.024122, 0.986784627, -271.024122}},
      {354, 100004, {0.989230272, -183.992698, 0.985655699, -183.992698}},
      {482, 100003, {0.996640645, -177.135333, 0.991625536, -177.135333}},
      {482, 100004, {0.992490884, -811.479853, 0.996765687, -819.482083}}};
  for (const auto& [model, seed, known] : cases) {
    const Rows rows = test::mixture_sample(seed, model, 120).rows;
    auto best = known.begin();
    for (const Asked& asked : ways_of(model)) {
      SCOPED_TRACE(asked.name() + " seed " + std::to_string(seed));
      const double grain = asked.by_likelihood() ? 0.05 : 1e-4;
      EXPECT_GE(fit_of(fit_rows(rows, asked)).quality, *best++ - grain);
    }
  }
}

/// The likelihood of a W3T at a given t0, by the best Weibull of t - t0.
double profile(const Sample& sample, double t0) {
  const Life life = test::best_weibull(sample, false, t0);
  return static_cast<double>(test::ln_likelihood_of(life, sample, false));
}

struct Maximum {
  double height = -HUGE_VAL, clearest = 0;  ///< above its neighbours on the grid
};

/// The highest interior maximum of the profile by ln of the distance from the first failure.
Maximum highest_maximum(const Sample& sample) {
  const double first = outer_time(sample, sample.time.front());
  const double range = outer_time(sample, sample.time.back()) - first;
  std::vector<double> heights;
  for (double distance = 1e-4; distance < 100; distance *= 1.15)
    heights.push_back(profile(sample, first - distance * range));
  Maximum found;
  for (std::size_t i = 1; i + 1 < heights.size(); ++i) {
    const double rise = std::min(heights[i] - heights[i - 1], heights[i] - heights[i + 1]);
    if (rise < 0) continue;
    found.height = std::max(found.height, heights[i]);
    found.clearest = std::max(found.clearest, rise);
  }
  return found;
}

TEST(SearchedFits, MinimumLifeByLikelihoodMayLieFarBelowTheFirstFailure) {
  Rows rows;  // the Gumbel at the end of all t0 stands 0.002 lower
  for (const float time : {27.1516F, 53.56633F, 59.78384F, 66.32462F, 69.5115F, 88.58526F,
                           89.14636F, 94.83425F, 102.20929F, 103.538F, 112.19908F, 118.45635F})
    rows.push_back({time, 1});
  const Fit fit = fit_of(fit_rows(rows, by_likelihood(model_code::weibull3)));
  EXPECT_NEAR(fit.quality, -55.5314, 1e-4);
  EXPECT_LT(fit.life.rows.at(0).T0, -800);
}

TEST(SearchedFits, MinimumLifeByLikelihoodIsTheHighestInteriorMaximumOrNone) {
  int fitted = 0, refused = 0;
  const Asked asked = by_likelihood(model_code::weibull3);
  for (std::uint64_t seed = 1; seed <= 16; ++seed) {
    SCOPED_TRACE(seed);
    test::RandomNumbers random(seed);
    const Life truth = test::weibull(random.uniform(0.8, 4), 1000, 800);
    const Sample sample =
        make_sample(test::draws(random, truth, random.whole(15, 60)), RankKind::benard);
    const Maximum highest = highest_maximum(sample);
    const FitAnswer answer = fit_sample(sample, asked);
    if (const Fit* fit = answer.fit()) {
      ++fitted;
      EXPECT_GE(fit->quality, highest.height - 1e-6);
      EXPECT_NEAR(fit->quality, profile(sample, fit->life.rows.at(0).T0), 1e-6);
      ASSERT_TRUE(fit->proof);
      expect_proven(*fit, sample, test::request_of(asked));
    } else {
      ++refused;
      EXPECT_EQ(answer.refusal()->code, RefusalCode::no_interior_maximum);
      EXPECT_EQ(answer.refusal()->values.size(), 1u);
      EXPECT_LT(highest.clearest, 1e-6) << "a maximum stands inside";
    }
  }
  EXPECT_GT(fitted, 2);
  EXPECT_GT(refused, 0);
}

}  // namespace
}  // namespace tavlo
