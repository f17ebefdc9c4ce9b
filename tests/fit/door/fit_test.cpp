// Laws of all fits at the door: units, order, weights, refusals, hostile numbers.
#include "fit/door/fit.h"

#include <charconv>
#include <sstream>

#include "fit/door/fits.h"
#include "fit/parallel.h"
#include "support/case_list.h"

namespace tavlo {
namespace {

using test::Asked;
using test::classical_fits;
using test::fit_rows;
using test::Rows;
using test::searched_fits;

Rows some_rows(test::RandomNumbers& random, int round) {
  return test::weibull_rows(random, random.whole(4, 50), random.log_uniform(0.4, 20), 1000,
                            {.digits = random.whole(2, 6),
                             .share_suspended = round % 3 * 0.2,
                             .fractions = round % 4 == 0,
                             .modes = 2});
}

/// The life that times 2^exponent larger should give.
FitParam scaled_row(FitParam row, Family family, int exponent) {
  const bool divides = family != Family::normal && family != Family::lognormal;
  if (!is_unreached(row)) row.Scale = std::ldexp(row.Scale, divides ? -exponent : exponent);
  row.T0 = std::ldexp(row.T0, exponent);
  if (family == Family::gumbel) row.Shape = std::ldexp(row.Shape, exponent);
  if (family == Family::normal) row.Shape = std::ldexp(row.Shape, -exponent);
  return row;
}

/// `failures` take part in the likelihood; 0 in a regression, which shifts by nothing.
void expect_scaled(const FitAnswer& scaled, const FitAnswer& plain, double failures, int exponent) {
  ASSERT_EQ(scaled.fit() == nullptr, plain.fit() == nullptr);
  EXPECT_EQ(scaled.notes, plain.notes);
  if (!plain.fit()) {
    EXPECT_EQ(scaled.refusal()->code, plain.refusal()->code);
    return;
  }
  const Fit &one = *scaled.fit(), &other = *plain.fit();
  ASSERT_EQ(one.life.rows.size(), other.life.rows.size());
  for (std::size_t i = 0; i < other.life.rows.size(); ++i)
    EXPECT_EQ(one.life.rows[i],
              scaled_row(other.life.rows[i], find_model(other.life.model)->family, exponent));
  EXPECT_EQ(one.proof, other.proof);
  ASSERT_EQ(one.starts.has_value(), other.starts.has_value());
  if (one.starts) {
    EXPECT_EQ(one.starts->tried, other.starts->tried);
    EXPECT_EQ(one.starts->agreed, other.starts->agreed);
  }
  if (!one.modes.empty()) return;  // each has a quality of its own kind
  const double shift = failures * exponent * std::log(2.0);
  const double size = failures == 0 ? 0 : std::fabs(other.quality) + std::fabs(shift);
  EXPECT_NEAR(one.quality, other.quality - shift, 1e-12 * size);
}

void expect_free_of_units(const Rows& rows, const Asked& asked, std::vector<int> exponents) {
  SCOPED_TRACE(asked.name());
  const FitAnswer plain = fit_rows(rows, asked, 2);
  const double failures = make_sample(rows, RankKind::benard).total_failures;
  for (const int exponent : exponents)
    expect_scaled(fit_rows(test::in_unit(rows, exponent), asked, 2), plain,
                  asked.by_likelihood() ? failures : 0, exponent);
}

TEST(Fit, DependsOnTheUnitOfTimeOnlyByItsPowerOfTwo) {
  test::RandomNumbers random(11);
  for (int round = 0; round < 40; ++round) {
    const Rows rows = some_rows(random, round);
    for (const Asked& asked : classical_fits())
      expect_free_of_units(rows, asked, {-110, -30, 1, 7, 100});
  }
  for (const Asked& asked : searched_fits())
    for (const std::uint64_t seed : {1u, 2u})
      expect_free_of_units(test::mixture_sample(seed, asked.model, 60).rows, asked, {-20, -13, 20});
}

/// A refusal names its row as entered, as does the note of a mode's refusal.
FitAnswer without_row_numbers(FitAnswer answer) {
  if (auto* refusal = std::get_if<Refusal>(&answer.result)) refusal->values.clear();
  if (auto* fit = std::get_if<Fit>(&answer.result))
    for (ModeFit& mode : fit->modes)
      if (mode.refusal) mode.refusal->values.clear();
  for (Note& note : answer.notes)
    if (note.code == NoteCode::mode_not_fitted) note.values.resize(2);
  return answer;
}

/// Of rows without ties, which rank by their order of entry.
void expect_free_of_order(test::RandomNumbers& random, const Rows& rows, const Asked& asked) {
  SCOPED_TRACE(asked.name());
  Rows shuffled = rows;
  test::shuffle(random, shuffled);
  set_threads(1);
  const FitAnswer expected = fit_rows(rows, asked, 2);
  set_threads(2);
  const FitAnswer answer = fit_rows(shuffled, asked, 2);
  EXPECT_EQ(fit_rows(rows, asked, 2), expected);
  set_threads(0);
  EXPECT_EQ(without_row_numbers(answer), without_row_numbers(expected));
}

// The preset tsan runs it too.
TEST(Fit, InAnyOrderParallelOrAloneHasTheSameBits) {
  test::RandomNumbers random(12);
  for (int round = 0; round < 40; ++round) {
    Rows rows = some_rows(random, round);
    for (std::size_t i = 0; i < rows.size(); ++i)
      rows[i].time = static_cast<float>(i * i + 10 * i + 7);
    for (const Asked& asked : classical_fits()) expect_free_of_order(random, rows, asked);
  }
  for (const Asked& asked : searched_fits())
    expect_free_of_order(
        random, test::draws(random, test::random_life(random, asked.model), 40, 0.3), asked);
}

/// `heavy` are the rows with `factor` times as many units.
void expect_weights(const Rows& rows, const Rows& heavy, double factor, const Asked& asked,
                    double digits) {
  SCOPED_TRACE(asked.name() + " x " + std::to_string(factor));
  const FitAnswer one = fit_rows(rows, asked), other = fit_rows(heavy, asked);
  ASSERT_EQ(one.fit() == nullptr, other.fit() == nullptr);
  if (!one.fit()) return;
  EXPECT_NEAR(other.fit()->quality / factor, one.fit()->quality,
              std::min(digits, 1e-6) * std::max(1.0, std::fabs(one.fit()->quality)));
  ASSERT_EQ(one.fit()->life.rows.size(), other.fit()->life.rows.size());
  for (std::size_t i = 0; i < one.fit()->life.rows.size(); ++i) {
    const FitParam &a = one.fit()->life.rows[i], &b = other.fit()->life.rows[i];
    EXPECT_LT(test::relative_difference(a.Scale, b.Scale), digits);
    EXPECT_LT(test::relative_difference(a.Shape, b.Shape), digits);
  }
}

TEST(Fit, CountsAreWeightsOfTheLikelihood) {
  test::RandomNumbers random(13);
  for (int round = 0; round < 60; ++round) {
    const Rows counted =
        test::weibull_rows(random, random.whole(4, 30), 2, 1000, {.share_suspended = 0.4});
    Rows listed;
    for (const SampleRow& row : counted) {
      for (int k = 0; k < row.failures; ++k) listed.push_back({row.time, 1, 0, 0});
      for (int k = 0; k < row.suspensions; ++k) listed.push_back({row.time, 0, 1, 0});
    }
    for (const std::int16_t code : {model_code::weibull2, model_code::weibayes}) {
      const Asked asked{code, method_code::mle, 2.5};
      expect_weights(counted, listed, 1, asked, 1e-12);
      expect_weights(counted, test::weighted(counted, 4e14), 4e14, asked, 1e-12);
    }
  }
  const Rows mixed = test::draws(random, test::weibull5c(3, 1000, 1.5, 60, 0.25), 80, 0.4);
  Rows twice;
  for (const SampleRow& row : mixed) twice.insert(twice.end(), 2, row);
  for (const std::int16_t model : {model_code::weibull5c, model_code::weibull7})
    for (const bool censored : {false, true}) {
      const Asked asked{.model = model, .method = method_code::mle, .censored = censored};
      expect_weights(mixed, twice, 2, asked, 1e-3);
      for (const double factor : {0.75, 1e6, 1e13})
        expect_weights(mixed, test::weighted(mixed, factor), factor, asked, 1e-3);
    }
}

/// The number with which the text begins, with a full stop in every locale.
double number_of(std::string_view text) {
  double number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

/// Of "100x3 >200": failures, and units that run on.
Rows rows_of(const std::string& text) {
  Rows rows;
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    const bool runs_on = word.starts_with('>');
    const std::size_t cross = word.find('x');
    const double units = cross == word.npos ? 1 : number_of(word.substr(cross + 1));
    rows.push_back({static_cast<float>(number_of(word.substr(runs_on))), runs_on ? 0 : units,
                    runs_on ? units : 0});
  }
  return rows;
}

TEST(Fit, EveryRefusalHasItsReason) {
  for (const auto& row : test::case_list("fit_refusals.txt")) {
    SCOPED_TRACE(row[0] + " by " + row[1] + " " + row[2]);
    Asked asked{static_cast<std::int16_t>(std::stoi(row[1])),
                static_cast<std::int16_t>(std::stoi(row[2]))};
    if (!row[3].empty()) asked.slope = number_of(row[3]);
    const FitAnswer answer = fit_rows(rows_of(row[0]), asked);
    ASSERT_TRUE(answer.refusal());
    EXPECT_EQ(static_cast<int>(answer.refusal()->code), std::stoi(row[4]));
    ASSERT_EQ(answer.refusal()->values.size(), row.size() - 5);
    for (std::size_t i = 5; i < row.size(); ++i)
      EXPECT_NEAR(answer.refusal()->values[i - 5], number_of(row[i]), 1e-7);
  }
}

// A fit of anything ends, with numbers that can be read and quantiles that ascend, or with
// a reason.
TEST(Fit, HostileNumbersEndInNumbersOrAReason) {
  const float times[] = {-3e38F, -1, 0, 1e-45F, 1e-38F, 0.999999F, 1, 1.000001F, 7, 1e20F, 3e38F};
  const double counts[] = {0, 0, 1e-300, 0.1, 0.5, 1, 1, 1, 2, 1e15, 1e300};
  test::RandomNumbers random(14);
  int fitted = 0;
  for (int round = 0; round < 3000; ++round) {
    Rows rows;
    const int kind = random.whole(0, 3);  // plain counts, or times above 0, in most rounds
    for (int i = random.whole(0, 7); i >= 0; --i)
      rows.push_back({times[random.whole(kind == 0 ? 0 : 3, 10)],
                      counts[random.whole(0, kind == 1 ? 10 : 7)],
                      counts[random.whole(0, kind == 1 ? 10 : 7)],
                      static_cast<std::int16_t>(random.whole(0, 2))});
    std::vector<Asked> fits = round % 25 == 0 ? searched_fits() : classical_fits();
    for (Asked& asked : fits) {
      asked.ranks = round % 2 == 0 ? RankKind::benard : RankKind::exact;
      asked.slope = random.log_uniform(1e-6, 1e6);
      const FitAnswer answer = fit_rows(rows, asked, 2);
      if (!answer.fit()) continue;
      ++fitted;
      const Fit& fit = *answer.fit();
      EXPECT_TRUE(std::isfinite(fit.quality));
      for (const FitParam& row : fit.life.rows)
        EXPECT_TRUE(std::isfinite(row.Scale) && std::isfinite(row.Shape) && std::isfinite(row.T0));
      double last = -HUGE_VAL;
      for (const double p : {0.01, 0.5, 0.99})
        if (const auto x = quantile(fit.life, p)) {
          EXPECT_LE(last, *x);
          last = *x;
        }
    }
  }
  EXPECT_GT(fitted, 10000);
}

struct Impatient : Companion {
  int turns = 0;
  void turn() override { ++turns; }
  bool stop_wanted() override { return turns > 2; }
};

TEST(Fit, EndsWhenThePersonWantsItToEnd) {
  const Sample sample =
      make_sample(test::mixture_sample(4, model_code::weibull7).rows, RankKind::benard);
  for (const Asked& asked : {Asked{model_code::weibull7, method_code::mle},
                             Asked{model_code::weibull5c}, Asked{model_code::weibull3}}) {
    SCOPED_TRACE(asked.name());
    Impatient companion;
    const FitAnswer answer = fit(sample, test::request_of(asked), companion);
    ASSERT_TRUE(answer.refusal());
    EXPECT_EQ(answer.refusal()->code, RefusalCode::stopped);
  }
}

struct Asking : Companion {
  std::vector<Doubt> asked;
  std::size_t accepts = 9;
  bool doubt(Doubt code) override {
    asked.push_back(code);
    return asked.size() <= accepts;
  }
};

TEST(Fit, DoubtsAreAskedOnceAndFewFailuresNoted) {
  const std::vector<Doubt> all = {Doubt::few_failures, Doubt::minimum_life_by_likelihood};
  std::vector<double> times;
  for (int i = 0; i < 20; ++i) times.push_back(100 + i * i);
  const FitRequest request = test::request_of({model_code::weibull3, method_code::mle});
  for (const std::size_t accepts : {0u, 1u, 2u}) {
    Asking companion;
    companion.accepts = accepts;
    const FitAnswer answer =
        fit(make_sample(test::failures_at(times), request.ranks), request, companion);
    EXPECT_EQ(companion.asked, std::vector<Doubt>(all.begin(), all.begin() + (accepts ? 2 : 1)));
    EXPECT_EQ(answer.refusal() && answer.refusal()->code == RefusalCode::stopped, accepts < 2);
  }
  const Note noted{NoteCode::few_failures, 0, {20, 21}};
  EXPECT_EQ(fit_rows(test::failures_at(times), {model_code::weibull3}).notes,
            std::vector<Note>{noted});
}

TEST(Fit, CountedRowsAreNotedWhereRanksDependOnThem) {
  const std::vector<Note> noted = {{NoteCode::counted_rows, 0, {}}}, none;
  const Rows counted = {{10, 2}, {20, 1}};
  EXPECT_EQ(fit_rows(counted, {}).notes, noted);
  EXPECT_EQ(fit_rows({{10, 1e15}, {20, 2e15}, {30, 0, 1e15}}, {}).notes, noted);
  EXPECT_EQ(fit_rows({{10, 1}, {20, 1.5}, {30, 0, 1}}, {}).notes, none) << "no whole unit to list";
  const Asked by_mode{model_code::by_failure_mode};
  Rows modes = {{10, 2, 0, 2}, {20, 1, 0, 1}, {30, 1, 0, 1}, {90, 0, 5, 0}};
  EXPECT_EQ(fit_rows(modes, by_mode, 2).notes.size(), 1u) << "counted where no line is";
  modes[1].failures = 2;
  EXPECT_EQ(fit_rows(modes, by_mode, 2).notes.front(), noted.front());
  EXPECT_EQ(fit_rows(counted, {model_code::weibull2, method_code::mle}).notes, none);
  EXPECT_EQ(fit_rows({{10, 1}, {20, 1}, {20, 1}, {30, 0, 7}}, {}).notes, none);
}

TEST(Fit, RanksOfAnotherKindThanAskedForAreNotTaken) {
  const Sample sample = make_sample(test::failures_at({1, 2, 3}), RankKind::benard);
  EXPECT_EQ(*test::fit_sample(sample, {.ranks = RankKind::exact}).refusal(),
            (Refusal{RefusalCode::arithmetic, {5}}));
}

}  // namespace
}  // namespace tavlo
