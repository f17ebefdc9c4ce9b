#include "fit/door/classical_fits.h"

#include "fit/door/fits.h"
#include "support/reference_book.h"

namespace tavlo {
namespace {

using test::Asked;
using test::fit_rows;
using test::Rows;

void expect_row(const FitAnswer& answer, double scale, double shape, double quality,
                double tolerance) {
  ASSERT_TRUE(answer.fit()) << "refused " << int(answer.refusal()->code);
  const FitParam& row = answer.fit()->life.rows.at(0);
  EXPECT_LT(test::relative_difference(row.Scale, scale), tolerance);
  EXPECT_LT(test::relative_difference(row.Shape, shape), tolerance);
  EXPECT_EQ(row.Fraction, 1);
  EXPECT_NEAR(answer.fit()->quality, quality, tolerance * std::max(1.0, std::fabs(quality)));
}

/// The line of a regression, with the slope that the request gives.
void expect_line(const Sample& sample, const Asked& asked) {
  SCOPED_TRACE(asked.name());
  const test::PaperLine line =
      test::line_of(sample, *find_model(asked.model), asked.method, 0, asked.slope.value_or(0));
  expect_row(test::fit_sample(sample, asked), double(line.scale), double(line.shape),
             double(line.r_squared), 1e-9);
}

void expect_likelihood(const Sample& sample, const Asked& asked) {
  SCOPED_TRACE(asked.name());
  const Life life = test::best_weibull(sample, true, 0, asked.slope.value_or(0));
  expect_row(test::fit_sample(sample, asked), life.rows[0].Scale, life.rows[0].Shape,
             double(test::ln_likelihood_of(life, sample, true)), 1e-9);
}

void expect_all_fits(const Rows& rows, RankKind ranks, double slope) {
  const Sample sample = make_sample(rows, ranks);
  for (const std::int16_t method : test::regressions) {
    for (const std::int16_t code :
         {model_code::weibull2, model_code::weibull_12_month, model_code::weibull_360_day,
          model_code::normal, model_code::lognormal, model_code::gumbel_lower,
          model_code::gumbel_upper})
      expect_line(sample, {code, method, {}, ranks});
    expect_line(sample, {model_code::weibayes, method, slope, ranks});
  }
  expect_likelihood(sample, {model_code::weibull2, method_code::mle, {}, ranks});
  expect_likelihood(sample, {model_code::weibayes, method_code::mle, slope, ranks});
}

// Suspensions, ties, fractions of units, narrow and wide data, few and many, both rankings.
TEST(ClassicalFits, AgreeWithIndependentAnswers) {
  test::RandomNumbers random(8);
  int compared = 0;
  for (int round = 0; round < 302; ++round) {
    SCOPED_TRACE(round);
    const bool many = round >= 300;
    const double beta = random.log_uniform(0.3, 50);
    const Rows rows = test::weibull_rows(random, many ? 20003 : random.whole(4, 80), beta,
                                         random.log_uniform(1e-3, 1e6),
                                         {.digits = many ? 7 : random.whole(2, 6),
                                          .share_suspended = round % 4 == 0 ? 0.0 : 0.4,
                                          .fractions = round % 2 == 0});
    const RankKind ranks = round % 3 == 0 && !many ? RankKind::exact : RankKind::benard;
    const FitAnswer first = fit_rows(rows, {.ranks = ranks});
    if (first.refusal()) {  // of a first failure by parts of a unit, or of ties alone
      EXPECT_TRUE(first.refusal()->code == RefusalCode::rank_off_paper ||
                  first.refusal()->code == RefusalCode::no_spread);
      continue;
    }
    ++compared;
    expect_all_fits(rows, ranks, beta);
  }
  EXPECT_GT(compared, 250);
}

// One failure and one suspension: beta ln(t2 / t1) is the root of (1 + y) exp(y) = -y.
TEST(ClassicalFits, LikelihoodInClosedForm) {
  const FitAnswer pair =
      fit_rows({{100, 1}, {200, 0, 1}}, {model_code::weibull2, method_code::mle});
  EXPECT_NEAR(pair.fit()->life.rows[0].Shape, 1.27846454276108 / std::log(2.0), 1e-12);
}

TEST(ClassicalFits, SlopesOfTheModels) {
  using Case = std::tuple<std::int16_t, double, std::int16_t, double>;
  const Rows one = {{100, 1}, {150, 0, 3}};  // one failure is enough for a given slope
  for (const auto& [asked, slope, answered, used] :
       {Case{model_code::exponential, 7, model_code::exponential, 1},
        {model_code::rayleigh, 7, model_code::rayleigh, 2},
        {model_code::weibayes, 1, model_code::exponential, 1},
        {model_code::weibayes, 2, model_code::rayleigh, 2},
        {model_code::weibayes, 0.0234567, model_code::weibayes, 0.0234567}})
    for (const std::int16_t method : test::all_methods) {
      const Fit fit = test::fit_of(fit_rows(one, {asked, method, slope}));
      EXPECT_EQ(fit.life.model, answered);
      EXPECT_EQ(fit.life.rows.at(0).Shape, used);
      EXPECT_TRUE(method == method_code::mle || fit.quality == 1);
    }
}

// Rounding is no spread: the quality of a line through equal times is -1, in any unit, and
// that of a line far off is below.
TEST(ClassicalFits, LinesOfGivenSlopeThatFitBadly) {
  for (const double x : {8660499.0, 123.4, 0.1, 7.7e-5, 1e-30}) {
    Rows rows = test::failures_at({x, x, x});
    rows.push_back({static_cast<float>(2 * x), 0, 2, 0});
    EXPECT_EQ(fit_rows(rows, {model_code::exponential}).fit()->quality, -1) << x;
  }
  const Rows narrow = test::failures_at({90, 95, 100, 105, 110});
  EXPECT_LT(fit_rows(narrow, {model_code::weibayes, method_code::x_on_y, 0.5}).fit()->quality, -1);
}

// A small spread far from zero is where raw moments would lose their digits, and where r
// squared once read exactly 1.
TEST(ClassicalFits, KeepTheirDigitsFarFromZeroAndInSmallUnits) {
  for (const double place : {-1e4, 1e3, 1e6})
    for (const double unit : {1.0, 1.0 / (1 << 30)}) {
      std::vector<double> times;
      for (int i = 0; i < 20; ++i) times.push_back((place + 0.125 * i * (1 + i % 3)) * unit);
      const Sample sample = make_sample(test::failures_at(times), RankKind::benard);
      for (const std::int16_t code : {model_code::normal, model_code::gumbel_upper})
        for (const std::int16_t method : test::regressions) {
          SCOPED_TRACE(place);
          expect_line(sample, {code, method});
          EXPECT_LT(test::fit_sample(sample, {code, method}).fit()->quality, 0.99);
        }
    }
}

}  // namespace
}  // namespace tavlo
