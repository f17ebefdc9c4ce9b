// The boxes that a person meets on the way to a fit, word for word, by tables of their own.
#include <gtest/gtest.h>

#include "actions/fit_world.h"
#include "actions/fitting_companion.h"
#include "actions/words.h"
#include "numerics/number_text.h"
#include "support/case_list.h"

namespace tavlo {
namespace {

using test::FitWorld;

/// The gate of some models: numbers of failures at its limits, and its boxes.
struct Gate {
  std::string codes;
  double stopped, passed, doubted;  ///< 0: no doubt; otherwise `passed` is doubted too
  std::string stop_title, stop_text, doubt_title, doubt_text;
};

Gate gate_of(const std::vector<std::string>& row) {
  const auto number = [&](std::size_t i) { return *parse_number(row[i]); };
  return {row[0], number(1), number(2), number(3), row[4], row[5], row[6], row[7]};
}

bool names(const std::string& list, int code) {
  return (" " + list + " ").find(" " + std::to_string(code) + " ") != std::string::npos;
}

/// What a model without a routine for the method says behind its gate.
std::string unavailable(int code, int method) {
  for (const auto& row : test::case_list("missing_methods.txt"))
    if (names(row[0], code) && names(row[1], method)) return row[2];
  return "";
}

/// Failures of one unit, the last of a fraction, and a unit that outlives them.
std::vector<test::Point> points_of(double failures) {
  std::vector<test::Point> points;
  for (double left = failures; left > 0; left -= 1)
    points.push_back({100.0 + 10.0 * static_cast<double>(points.size()), std::min(left, 1.0)});
  points.push_back({5000, 0, 1});
  return points;
}

// A doubt about a fit that would be searched is answered with Cancel.
void expect_gate(const Gate& gate, std::int16_t code, std::int16_t method, double failures) {
  SCOPED_TRACE(std::to_string(code) + " by " + std::to_string(method) + " with " +
               std::to_string(failures));
  FitWorld world(points_of(failures));
  const std::string words = unavailable(code, method);
  EXPECT_EQ(find_model(code)->is_fitted_by(method), words.empty()) << code << " " << method;
  const bool one_is_enough = names(gate.codes, 98) && method == 1;
  bool goes_on = failures > gate.stopped || one_is_enough;
  if (!goes_on && !gate.stop_title.empty())
    world.prompts.expect_box(gate.stop_title, gate.stop_text);
  if (goes_on && gate.doubted > 0) {
    goes_on = !words.empty();
    world.prompts.expect_box(gate.doubt_title, gate.doubt_text,
                             goes_on ? BoxAnswer::ok : BoxAnswer::cancel);
  }
  if (goes_on && names(gate.codes, 674)) world.prompts.expect_line("Enter Weibull Slope", "3.5");
  if (goes_on && !words.empty()) world.prompts.expect_box("", words);
  world.fit(code, method);
  world.prompts.verify();
  EXPECT_EQ(world.fits().nFits, goes_on && words.empty() ? 1 : 0);
  if (!goes_on) {
    EXPECT_EQ(world.session.fitting.doubts_warned, 0) << "a refused doubt comes again";
  }
  for (const Box& box : world.prompts.shown()) EXPECT_FALSE(box.text.empty());
}

TEST(Door, EveryGateHasItsBoxesAtItsLimits) {
  int met = 0;
  for (const auto& row : test::case_list("fit_gates.txt"))
    for (const Model& model : models())
      for (const std::int16_t method : std::initializer_list<std::int16_t>{0, 1, 2})
        for (const Gate gate = gate_of(row);
             const double failures : {gate.stopped, gate.passed, gate.doubted})
          if (failures > 0 && names(gate.codes, model.code))
            ++met, expect_gate(gate, model.code, method, failures);
  EXPECT_GE(met, 17 * 3 * 2);
}

TEST(Door, ADoubtIsRaisedOnceInARunAndSharedByItsModels) {
  test::TestWorld world;
  const auto accepts = [&](int code, Doubt doubt) {
    return FittingCompanion(world.session, *find_model(code)).doubt(doubt);
  };
  world.prompts.expect_box("Maybe Insufficient points for Fit", "At least 21 failures");
  EXPECT_TRUE(accepts(162, Doubt::few_failures));
  EXPECT_TRUE(accepts(226, Doubt::few_failures));
  world.prompts.expect_box("May Be Insufficient points for Fit", "At least 25 failures");
  EXPECT_TRUE(accepts(290, Doubt::few_failures));
  world.prompts.expect_box("3 Parameter MLE Warning.", "1. Small sample size (<50 failures), or\n",
                           BoxAnswer::cancel);
  EXPECT_FALSE(accepts(162, Doubt::minimum_life_by_likelihood));
  EXPECT_TRUE(accepts(162, Doubt::minimum_life_by_likelihood)) << "the warning comes once";
}

// The same fault within five seconds of the last answer goes on without a box.
TEST(Door, AFaultIsShownAgainAfterFiveSecondsAndCancelEndsTheFit) {
  test::TestWorld world;
  FittingCompanion companion(world.session, *find_model(290));
  const RunTimeError overflow(run_time::overflow);
  const auto expect = [&](BoxAnswer answer) {
    world.prompts.expect_box("*** Tavlo Error ***",
                             "Overflow\nin XonY Function routine\nChoose Retry to Continue, or "
                             "Cancel to Exit the subroutine.",
                             answer);
  };
  expect(BoxAnswer::retry);
  EXPECT_TRUE(companion.fault("in XonY Function routine", overflow));
  world.clock.advance(5);
  EXPECT_TRUE(companion.fault("in XonY Function routine", overflow));
  EXPECT_FALSE(companion.stop_wanted());
  world.clock.advance(0.1);
  expect(BoxAnswer::cancel);
  EXPECT_FALSE(companion.fault("in XonY Function routine", overflow));
  EXPECT_TRUE(companion.stop_wanted());
  EXPECT_FALSE(companion.fault("elsewhere", RunTimeError(11))) << "no box after a Cancel";
  companion.turn();
  EXPECT_EQ(world.event_loop.turns, 1);
}

TEST(Words, EveryRefusalAndNoteHasPlainWordsAndNamesItsRow) {
  const DataSet data = test::make_data({{100, 1, 0, 1}, {-5}});
  for (int code = 0; code <= static_cast<int>(RefusalCode::stopped); ++code) {
    const Refusal refusal{static_cast<RefusalCode>(code), {2, -5}};
    const std::string reason = refusal_reason(refusal, data);
    EXPECT_GT(reason.size(), 8u) << code;
    EXPECT_EQ(reason.find('.', reason.size() - 1), std::string::npos) << reason;
    if (refusal.code == RefusalCode::time_not_above_zero ||
        refusal.code == RefusalCode::rank_off_paper) {
      EXPECT_TRUE(reason.starts_with("row 2 has ")) << reason;
    }
  }
  for (int code = 0; code <= static_cast<int>(NoteCode::better_beyond_fence); ++code) {
    const std::string words = note_sentence({static_cast<NoteCode>(code), 98, {1, 0}}, data);
    EXPECT_TRUE(words.ends_with(".")) << words;
    EXPECT_EQ(words.find_first_of("{}"), std::string::npos) << words;
    EXPECT_EQ(words.find("Click"), std::string::npos);
  }
}

}  // namespace
}  // namespace tavlo
