#include "fit/door/fit.h"

#include <gtest/gtest.h>

#include "fit/door/fits.h"

namespace tavlo {
namespace {

using test::Asked;
using test::fit_rows;
using test::Rows;

/// Every classical fit.
std::vector<Asked> all_fits() {
  std::vector<Asked> fits;
  for (const std::int16_t method : test::all_methods)
    for (const std::int16_t code :
         {model_code::weibull2, model_code::weibull_12_month, model_code::exponential,
          model_code::rayleigh, model_code::weibayes, model_code::by_failure_mode})
      fits.push_back({code, method, 1.7});
  for (const std::int16_t method : test::regressions)
    for (const std::int16_t code : {model_code::weibull3, model_code::normal, model_code::lognormal,
                                    model_code::gumbel_lower, model_code::gumbel_upper})
      fits.push_back({code, method, 1.7});
  return fits;
}

Rows some_rows(test::RandomRows& random, int round) {
  Rows rows = random.weibull(random.whole(4, 50), random.log_uniform(0.4, 20), 1000,
                             {.digits = random.whole(2, 6),
                              .share_suspended = round % 3 * 0.2,
                              .fractions = round % 4 == 0,
                              .modes = 2});
  return rows;
}

Rows in_unit(Rows rows, int exponent) {
  for (SampleRow& row : rows) row.time = std::ldexp(row.time, exponent);
  return rows;
}

/// The life that times 2^exponent larger should give.
FitParam scaled_row(FitParam row, Family family, int exponent) {
  const bool divides = family != Family::normal && family != Family::lognormal;
  row.Scale = std::ldexp(row.Scale, divides ? -exponent : exponent);
  row.T0 = std::ldexp(row.T0, exponent);
  if (family == Family::gumbel) row.Shape = std::ldexp(row.Shape, exponent);
  if (family == Family::normal) row.Shape = std::ldexp(row.Shape, -exponent);
  return row;
}

/// `failures` take part in the likelihood; 0 in a regression, which shifts by nothing.
void expect_scaled(const FitAnswer& scaled, const FitAnswer& plain, double failures, int exponent) {
  ASSERT_EQ(scaled.fit() == nullptr, plain.fit() == nullptr);
  if (!plain.fit()) {
    EXPECT_EQ(scaled.refusal()->code, plain.refusal()->code);
    return;
  }
  EXPECT_EQ(scaled.notes, plain.notes);
  const Fit &one = *scaled.fit(), &other = *plain.fit();
  ASSERT_EQ(one.life.rows.size(), other.life.rows.size());
  for (std::size_t i = 0; i < other.life.rows.size(); ++i)
    EXPECT_EQ(one.life.rows[i],
              scaled_row(other.life.rows[i], find_model(other.life.model)->family, exponent));
  if (!one.modes.empty()) return;  // each has a quality of its own kind
  const double shift = failures * exponent * std::log(2.0);
  const double size = shift == 0 ? 0 : std::fabs(other.quality) + std::fabs(shift);
  EXPECT_NEAR(one.quality, other.quality - shift, 1e-12 * size);
}

TEST(Fit, DependsOnTheUnitOfTimeOnlyByItsPowerOfTwo) {
  test::RandomRows random(11);
  for (int round = 0; round < 40; ++round) {
    const Rows rows = some_rows(random, round);
    const double failures = make_sample(rows, RankKind::benard).total_failures;
    for (const Asked& asked : all_fits()) {
      SCOPED_TRACE(std::to_string(asked.model) + " by " + std::to_string(asked.method));
      const FitAnswer plain = fit_rows(rows, asked, 2);
      for (const int exponent : {-110, -30, 1, 7, 100})
        expect_scaled(fit_rows(in_unit(rows, exponent), asked, 2), plain,
                      asked.method == method_code::mle ? failures : 0, exponent);
    }
  }
}

// Tied rows of different counts rank by their order of entry, so times are all different.
TEST(Fit, DoesNotDependOnTheOrderOfEntry) {
  test::RandomRows random(12);
  for (int round = 0; round < 40; ++round) {
    Rows rows = some_rows(random, round);
    for (std::size_t i = 0; i < rows.size(); ++i)
      rows[i].time = static_cast<float>(i * i + 10 * i + 7);
    Rows shuffled = rows;
    std::shuffle(shuffled.begin(), shuffled.end(), random.engine());
    for (const Asked& asked : all_fits()) {
      FitAnswer answer = fit_rows(shuffled, asked, 2);
      const FitAnswer expected = fit_rows(rows, asked, 2);
      if (answer.fit()) {
        EXPECT_EQ(answer, expected) << asked.model;
      } else {
        EXPECT_EQ(answer.refusal()->code, expected.refusal()->code);
      }
    }
  }
}

TEST(Fit, CountsAreWeightsOfTheLikelihood) {
  test::RandomRows random(13);
  for (int round = 0; round < 60; ++round) {
    const Rows counted = random.weibull(random.whole(4, 30), 2, 1000, {.share_suspended = 0.4});
    Rows listed;
    for (const SampleRow& row : counted) {
      for (int k = 0; k < row.failures; ++k) listed.push_back({row.time, 1, 0, 0});
      for (int k = 0; k < row.suspensions; ++k) listed.push_back({row.time, 0, 1, 0});
    }
    for (const std::int16_t code : {model_code::weibull2, model_code::weibayes}) {
      const Asked asked{code, method_code::mle, 2.5};
      const FitAnswer one = fit_rows(counted, asked), other = fit_rows(listed, asked);
      ASSERT_EQ(one.fit() == nullptr, other.fit() == nullptr);
      if (!one.fit()) continue;
      const FitParam &a = one.fit()->life.rows[0], &b = other.fit()->life.rows[0];
      EXPECT_LT(test::relative_difference(a.Scale, b.Scale), 1e-12);
      EXPECT_LT(test::relative_difference(a.Shape, b.Shape), 1e-12);
      EXPECT_NEAR(one.fit()->quality, other.fit()->quality, 1e-12 * std::fabs(one.fit()->quality));
    }
  }
  // 1e15 units and a half, the same as 2 and a half by 4e14.
  const Rows few = {{10, 2, 0, 0}, {20, 1, 0, 0}, {30, 0, 0.5, 0}};
  Rows many = few;
  for (SampleRow& row : many) row.failures *= 4e14, row.suspensions *= 4e14;
  const Asked mle{model_code::weibull2, method_code::mle};
  EXPECT_LT(test::relative_difference(fit_rows(few, mle).fit()->life.rows[0].Shape,
                                      fit_rows(many, mle).fit()->life.rows[0].Shape),
            1e-12);
}

TEST(Fit, EveryRefusalHasItsReason) {
  const Rows tied = test::failures_at({100, 100, 100});
  const Rows none = {{100, 0, 1}, {120, 0, 1}};
  const Rows zero = {{0, 0, 1}, {20, 1}, {30, 1}, {40, 1}};
  const Rows negative = {{20, 1}, {-5, 1}, {30, 1}, {40, 1}};
  const Rows fraction = {{1, 0.2}, {2, 1.8}, {3, 1}};
  const Rows spike = {{1, 50}, {1000, 1}, {2000, 0, 950}};
  const auto rr = method_code::x_on_y, mle = method_code::mle, rrs = method_code::y_on_x;
  using enum RefusalCode;
  struct Case {
    Rows rows;
    Asked asked;
    Refusal refusal;
  };
  const Case cases[] = {
      {tied, {model_code::weibull2, rr}, {no_spread, {}}},
      {tied, {model_code::weibull2, rrs}, {no_spread, {}}},
      {tied, {model_code::weibull2, mle}, {slope_without_limit, {}}},
      {tied, {model_code::weibull3, rr}, {no_spread, {1, 3}}},
      {tied, {model_code::normal, rr}, {no_spread, {}}},
      {tied, {model_code::by_failure_mode, rr}, {no_mode_fitted, {}}},
      {test::failures_at({5, 5, 7, 7}), {model_code::weibull3, rr}, {no_spread, {2, 3}}},
      {test::failures_at({1, 1, 1, 1, 1, 1.001, 100}),  // the later t0, the better
       {model_code::weibull3, rrs},
       {no_interior_maximum, {1}}},
      {{{100, 0, 1}, {200, 1}}, {model_code::weibull2, mle}, {slope_without_limit, {}}},
      {none, {model_code::weibull2, mle}, {no_failure, {}}},
      {none, {model_code::weibull2, rr}, {too_few_failures, {0, 2}}},
      {none, {model_code::weibayes, mle, 2}, {too_few_failures, {0, 1}}},
      {{}, {model_code::weibull2, mle}, {no_failure, {}}},
      {{}, {model_code::gumbel_lower, rr}, {too_few_failures, {0, 2}}},
      {{{5, 1}}, {model_code::weibull2, rr}, {too_few_failures, {1, 2}}},
      {{{5, 1}, {6, 1}}, {model_code::weibull3, rr}, {too_few_failures, {2, 3}}},
      {zero, {model_code::weibull2, rr}, {time_not_above_zero, {1, 0}}},
      {zero, {model_code::weibull2, mle}, {time_not_above_zero, {1, 0}}},
      {negative, {model_code::lognormal, rr}, {time_not_above_zero, {2, -5}}},
      {negative, {model_code::by_failure_mode, rr}, {time_not_above_zero, {2, -5}}},
      {fraction, {model_code::weibull2, rr}, {rank_off_paper, {1, double((0.2F - 0.3F) / 3.4F)}}},
      {{{5, 1e15}, {6, 1e15}}, {model_code::normal, rr}, {rank_off_paper, {2, 1}}},
      {spike, {model_code::weibull2, rr}, {scale_beyond_numbers, {}}},
      {spike, {model_code::weibull2, rrs}, {scale_beyond_numbers, {}}},
      {zero, {model_code::weibayes, rr}, {time_not_above_zero, {1, 0}}},
      {{{5, 1}}, {model_code::weibayes, rr}, {slope_missing, {}}},
      {{{5, 1}}, {model_code::weibayes, mle, -2}, {slope_missing, {}}},
      {{{5, 1}}, {model_code::weibayes, mle, HUGE_VAL}, {slope_missing, {}}},
      {negative, {model_code::normal, mle}, {no_such_fit, {}}},
      {negative, {model_code::gumbel_upper, mle}, {no_such_fit, {}}},
      {negative, {model_code::custom, rr}, {no_such_fit, {}}},
      {test::failures_at({1, 2, 3, 4}), {model_code::lognormal3, rr}, {no_such_fit, {}}},
      {test::failures_at({1, 2, 3, 4, 5}), {model_code::weibull5x, mle}, {no_such_fit, {}}},
      {tied, {5, rr}, {no_such_fit, {}}},
      {tied, {model_code::weibull2, 3}, {no_such_fit, {}}},
  };
  for (const Case& c : cases) {
    const FitAnswer answer = fit_rows(c.rows, c.asked);
    ASSERT_TRUE(answer.refusal()) << c.asked.model;
    EXPECT_EQ(answer.refusal()->code, c.refusal.code) << c.asked.model << " " << c.asked.method;
    ASSERT_EQ(answer.refusal()->values.size(), c.refusal.values.size()) << c.asked.model;
    for (std::size_t i = 0; i < c.refusal.values.size(); ++i)
      EXPECT_NEAR(answer.refusal()->values[i], c.refusal.values[i], 1e-7);
  }
}

// A fit of anything ends, with numbers that can be read and quantiles that ascend, or with
// a reason.
TEST(Fit, HostileNumbersEndInNumbersOrAReason) {
  const float times[] = {-3e38F, -1, 0, 1e-45F, 1e-38F, 0.999999F, 1, 1.000001F, 7, 1e20F, 3e38F};
  const double counts[] = {0, 0, 1e-300, 0.1, 0.5, 1, 1, 1, 2, 1e15, 1e300};
  test::RandomRows random(14);
  int fitted = 0;
  for (int round = 0; round < 3000; ++round) {
    Rows rows;
    const int kind = random.whole(0, 3);  // plain counts, or times above 0, in most rounds
    for (int i = random.whole(0, 7); i >= 0; --i)
      rows.push_back({times[random.whole(kind == 0 ? 0 : 3, 10)],
                      counts[random.whole(0, kind == 1 ? 10 : 7)],
                      counts[random.whole(0, kind == 1 ? 10 : 7)],
                      static_cast<std::int16_t>(random.whole(0, 2))});
    for (Asked asked : all_fits()) {
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

struct Asking : Companion {
  std::vector<Doubt> asked;
  bool goes_on = true;
  bool doubt(Doubt code) override {
    asked.push_back(code);
    return goes_on;
  }
};

TEST(Fit, DoubtsAreAskedOnceAndFewFailuresNoted) {
  struct Case {
    int failures;
    std::int16_t method;
    std::vector<Doubt> doubts;
  };
  const Doubt few = Doubt::few_failures, risky = Doubt::minimum_life_by_likelihood;
  const Case cases[] = {{20, method_code::x_on_y, {few}},
                        {21, method_code::x_on_y, {}},
                        {20, method_code::mle, {few, risky}},
                        {21, method_code::mle, {risky}}};
  for (const Case& c : cases)
    for (const bool goes_on : {true, false}) {
      std::vector<double> times;
      for (int i = 0; i < c.failures; ++i) times.push_back(100 + i * i);
      Asking companion;
      companion.goes_on = goes_on;
      FitRequest request;
      request.model = model_code::weibull3;
      request.method = c.method;
      const FitAnswer answer =
          fit(make_sample(test::failures_at(times), request.ranks), request, companion);
      const auto asked = static_cast<std::ptrdiff_t>(goes_on ? c.doubts.size() : 1);
      const auto last = c.doubts.empty() ? c.doubts.end() : c.doubts.begin() + asked;
      EXPECT_EQ(companion.asked, std::vector<Doubt>(c.doubts.begin(), last));
      const bool stopped = !goes_on && !c.doubts.empty();
      EXPECT_EQ(answer.refusal() && answer.refusal()->code == RefusalCode::stopped, stopped);
      const Note noted{NoteCode::few_failures, 0, {20, 21}};
      const bool has_note = !answer.notes.empty() && answer.notes.front() == noted;
      EXPECT_EQ(has_note, answer.fit() && c.failures == 20);
    }
}

TEST(Fit, CountedRowsAreNotedWhereRanksDependOnThem) {
  const std::vector<Note> noted = {{NoteCode::counted_rows, 0, {}}};
  const Rows counted = {{10, 2}, {20, 1}};
  EXPECT_EQ(fit_rows(counted, {}).notes, noted);
  EXPECT_EQ(fit_rows(counted, {model_code::weibull2, method_code::mle}).notes, std::vector<Note>{});
  EXPECT_EQ(fit_rows({{10, 1}, {20, 1}, {20, 1}, {30, 0, 7}}, {}).notes, std::vector<Note>{});
}

TEST(Fit, RanksOfAnotherKindThanAskedForAreNotTaken) {
  Companion companion;
  FitRequest request;
  request.ranks = RankKind::exact;
  const Sample sample = make_sample(test::failures_at({1, 2, 3}), RankKind::benard);
  EXPECT_EQ(*fit(sample, request, companion).refusal(), (Refusal{RefusalCode::arithmetic, {5}}));
}

}  // namespace
}  // namespace tavlo
