#include "fit/door/fit_by_mode.h"

#include "fit/door/fits.h"

namespace tavlo {
namespace {

using test::fit_rows;
using test::Rows;

/// The rows with the failures of the other modes standing as suspensions.
Rows only_mode(Rows rows, int mode) {
  for (SampleRow& row : rows) {
    if (row.mode != mode) row.suspensions += std::exchange(row.failures, 0);
    row.mode = 0;
  }
  return rows;
}

// Ties of different modes rank by their own order, so times are all different. The ranks of
// a sample are floats, those within a mode are not.
TEST(FitByMode, EachModeIsFittedAsIfTheOthersWereSuspensions) {
  test::RandomNumbers random(77);
  int compared = 0;
  for (int round = 0; round < 120; ++round) {
    const Rows rows = test::weibull_rows(random, random.whole(6, 60), random.log_uniform(0.5, 8),
                                         1000, {.digits = 7, .share_suspended = 0.3, .modes = 3});
    for (const std::int16_t method : test::all_methods) {
      const FitAnswer answer =
          fit_rows(rows, {.model = model_code::by_failure_mode, .method = method}, 3);
      if (!answer.fit()) continue;
      const Fit& fit = *answer.fit();
      ASSERT_EQ(fit.life.model, model_code::by_failure_mode);
      ASSERT_EQ(fit.life.rows.size(), 3u);
      ASSERT_EQ(fit.modes.size(), 3u);
      for (std::size_t m = 0; m < 3; ++m) {
        EXPECT_EQ(fit.modes[m].mode, static_cast<int>(m) + 1);
        const FitAnswer own =
            fit_rows(only_mode(rows, fit.modes[m].mode), {.method = fit.modes[m].method});
        ASSERT_EQ(own.fit() == nullptr, fit.modes[m].refusal.has_value()) << round;
        if (!own.fit()) continue;
        ++compared;
        const FitParam& alone = own.fit()->life.rows[0];
        EXPECT_LT(test::relative_difference(fit.life.rows[m].Shape, alone.Shape), 1e-5) << round;
        EXPECT_LT(test::relative_difference(fit.life.rows[m].Scale, alone.Scale), 1e-5) << round;
        EXPECT_LT(test::relative_difference(fit.modes[m].quality, own.fit()->quality), 1e-5);
      }
    }
  }
  EXPECT_GT(compared, 800);
}

TEST(FitByMode, WhatCannotBeFittedIsNamedAndTheRestGoesOn) {
  struct Case {
    const char* what;
    Rows rows;
    std::int16_t method;
    std::vector<Note> notes;
    int not_fitted;  ///< mode, or 0
  };
  const auto rr = method_code::x_on_y, rrs = method_code::y_on_x;
  const auto left_out = [](double mode, RefusalCode code) {
    return Note{NoteCode::mode_not_fitted, 0, {mode, static_cast<double>(code)}};
  };
  using enum RefusalCode;
  const Note by_likelihood{NoteCode::likelihood_for_one_mode, 0, {2}};
  const Note counted{NoteCode::counted_rows, 0, {}};
  const Rows inside = {{10, 1, 0, 1}, {20, 1, 0, 2}, {30, 1, 0, 1}, {40, 1, 0, 1}};
  const Rows last_row = {{10, 1, 0, 1}, {30, 1, 0, 1}, {40, 3, 0, 2}};
  const Rows tied = {{10, 1, 0, 2}, {20, 1, 0, 1}, {20, 1, 0, 1}, {30, 1, 0, 2}};
  const Case cases[] = {
      {"one failure with later units goes by likelihood", inside, rr, {by_likelihood}, 0},
      {"units of one row are one row", last_row, rrs, {counted, left_out(2, too_few_failures)}, 2},
      {"equal times leave the other mode its fit", tied, rr, {left_out(1, no_spread)}, 1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    const FitAnswer answer = fit_rows(c.rows, {model_code::by_failure_mode, c.method}, 2);
    EXPECT_EQ(answer.notes, c.notes);
    const Fit fit = test::fit_of(answer);
    ASSERT_EQ(fit.modes.size(), 2U);
    for (int mode = 1; mode <= 2; ++mode) {
      const auto m = static_cast<std::size_t>(mode - 1);
      EXPECT_EQ(fit.modes[m].refusal.has_value(), c.not_fitted == mode);
      EXPECT_EQ(fit.life.rows[m] == FitParam{}, c.not_fitted == mode);
    }
  }
}

}  // namespace
}  // namespace tavlo
