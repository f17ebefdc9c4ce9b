#include "fit/door/fit_by_mode.h"

#include <gtest/gtest.h>

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
  test::RandomRows random(77);
  int compared = 0;
  for (int round = 0; round < 120; ++round) {
    const Rows rows = random.weibull(random.whole(6, 60), random.log_uniform(0.5, 8), 1000,
                                     {.digits = 7, .share_suspended = 0.3, .modes = 3});
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
    bool first_fitted;
    bool second_fitted;
  };
  const auto not_fitted = [](double mode, RefusalCode code) {
    return Note{NoteCode::mode_not_fitted, 0, {mode, static_cast<double>(code)}};
  };
  const Note by_likelihood{NoteCode::likelihood_for_one_mode, 0, {2}};
  const Note counted{NoteCode::counted_rows, 0, {}};
  const Rows one_inside = {{10, 1, 0, 1}, {20, 1, 0, 2}, {30, 1, 0, 1}, {40, 1, 0, 1}};
  const Case cases[] = {
      {"a single failure with later units goes by likelihood",
       one_inside,
       method_code::x_on_y,
       {by_likelihood},
       true,
       true},
      {"asked for by likelihood it needs no note", one_inside, method_code::mle, {}, true, true},
      {"a single failure that no unit outlives",
       {{10, 1, 0, 1}, {30, 1, 0, 1}, {40, 1, 0, 2}},
       method_code::y_on_x,
       {not_fitted(2, RefusalCode::too_few_failures)},
       true,
       false},
      {"three units in one row are one row",
       {{10, 1, 0, 1}, {30, 1, 0, 1}, {40, 3, 0, 2}},
       method_code::y_on_x,
       {counted, not_fitted(2, RefusalCode::too_few_failures)},
       true,
       false},
      {"equal times of one mode leave the other its fit",
       {{10, 1, 0, 2}, {20, 1, 0, 1}, {20, 1, 0, 1}, {30, 1, 0, 2}},
       method_code::x_on_y,
       {not_fitted(1, RefusalCode::no_spread)},
       false,
       true},
      {"a mode without failures",
       {{10, 1, 0, 1}, {20, 0, 1, 2}, {30, 1, 0, 1}},
       method_code::x_on_y,
       {not_fitted(2, RefusalCode::no_failure)},
       true,
       false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    const FitAnswer answer =
        fit_rows(c.rows, {.model = model_code::by_failure_mode, .method = c.method}, 2);
    ASSERT_TRUE(answer.fit());
    EXPECT_EQ(answer.notes, c.notes);
    const Fit& fit = *answer.fit();
    EXPECT_EQ(!fit.modes[0].refusal, c.first_fitted);
    EXPECT_EQ(!fit.modes[1].refusal, c.second_fitted);
    for (std::size_t m = 0; m < 2; ++m)
      if (fit.modes[m].refusal) {
        EXPECT_EQ(fit.life.rows[m], FitParam{});
      }
  }
}

}  // namespace
}  // namespace tavlo
