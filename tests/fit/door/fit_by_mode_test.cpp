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

/// The notes that a fit by mode should have of its modes.
std::vector<Note> notes_of_modes(const Fit& fit, const Rows& rows, std::int16_t method) {
  std::vector<Note> notes;
  std::vector<double> left_out;
  for (const ModeFit& mode : fit.modes) {
    double failures = 0;
    for (const SampleRow& row : rows) failures += row.mode == mode.mode ? row.failures : 0;
    if (mode.refusal) {
      std::vector<double> values = {double(mode.mode), static_cast<double>(mode.refusal->code)};
      values.insert(values.end(), mode.refusal->values.begin(), mode.refusal->values.end());
      notes.push_back({NoteCode::mode_not_fitted, 0, values});
      if (failures > 0) left_out.push_back(mode.mode);
    } else if (mode.method != method) {
      notes.push_back({NoteCode::likelihood_for_one_mode, 0, {double(mode.mode), failures}});
    }
  }
  if (!left_out.empty()) notes.push_back({NoteCode::modes_left_out, 0, left_out});
  return notes;
}

void expect_mode(const Fit& fit, std::size_t m, const Rows& rows, std::int16_t method) {
  const ModeFit& mode = fit.modes[m];
  const Rows own_rows = only_mode(rows, mode.mode);
  const auto failed = std::count_if(own_rows.begin(), own_rows.end(),
                                    [](const SampleRow& row) { return row.failures > 0; });
  EXPECT_EQ(mode.mode, static_cast<int>(m) + 1);
  if (!mode.refusal) {
    EXPECT_EQ(mode.method, failed == 1 ? method_code::mle : method);
  }
  const FitAnswer own = fit_rows(own_rows, {.method = mode.method});
  ASSERT_EQ(own.fit() == nullptr, mode.refusal.has_value());
  EXPECT_EQ(fit.life.rows[m] == FitParam{}, mode.refusal.has_value());
  if (!own.fit()) return;
  const FitParam& alone = own.fit()->life.rows[0];
  EXPECT_LT(test::relative_difference(fit.life.rows[m].Shape, alone.Shape), 1e-5);
  EXPECT_LT(test::relative_difference(fit.life.rows[m].Scale, alone.Scale), 1e-5);
  EXPECT_LT(test::relative_difference(mode.quality.value(), own.fit()->quality), 1e-5);
}

// Ties of different modes rank by their own order, so times are all different. The ranks of
// a sample are floats, those within a mode are not.
TEST(FitByMode, EachModeIsFittedAsIfTheOthersWereSuspensions) {
  test::RandomNumbers random(77);
  std::map<NoteCode, int> noted;
  int fitted = 0;
  for (int round = 0; round < 150; ++round) {
    SCOPED_TRACE(round);
    const Rows rows = test::weibull_rows(random, random.whole(3, round % 2 == 0 ? 60 : 9),
                                         random.log_uniform(0.5, 8), 1000,
                                         {.digits = 7, .share_suspended = 0.3, .modes = 3});
    for (const std::int16_t method : test::all_methods) {
      FitAnswer answer = fit_rows(rows, {model_code::by_failure_mode, method}, 3);
      if (!answer.fit()) continue;
      const Fit& fit = *answer.fit();
      ASSERT_EQ(fit.life.model, model_code::by_failure_mode);
      ASSERT_EQ(fit.life.rows.size(), 3u);
      ASSERT_EQ(fit.modes.size(), 3u);
      ++fitted;
      for (std::size_t m = 0; m < 3; ++m) expect_mode(fit, m, rows, method);
      std::erase_if(answer.notes, [](auto& note) { return note.code == NoteCode::counted_rows; });
      EXPECT_EQ(answer.notes, notes_of_modes(fit, rows, method));
      for (const Note& note : answer.notes) ++noted[note.code];
    }
  }
  EXPECT_GT(fitted, 350);
  EXPECT_GT(noted[NoteCode::mode_not_fitted], 30);
  EXPECT_GT(noted[NoteCode::likelihood_for_one_mode], 30);
}

}  // namespace
}  // namespace tavlo
