// The boxes that a person meets on the way to a fit, word for word, by tables of their own.
#include <gtest/gtest.h>

#include "actions/fit_world.h"
#include "actions/fitting_companion.h"
#include "actions/words.h"

namespace tavlo {
namespace {

using test::FitWorld;

enum class Outcome { pass, stop, doubt };

/// A row of the gates. `doubt_below` 0: never.
struct GateRow {
  std::vector<int> codes;
  double stop_below;
  bool stop_at_limit;
  double doubt_below;
  std::string stop_title, stop_text, doubt_title, doubt_text;

  Outcome outcome(int method, double n) const {
    if (stop_at_limit && method == 1) return Outcome::pass;
    if (stop_at_limit ? n <= stop_below : n < stop_below) return Outcome::stop;
    return n < doubt_below ? Outcome::doubt : Outcome::pass;
  }
};

GateRow mixture_row(std::vector<int> codes, double parameters, double doubt_below,
                    const std::string& doubt_title, const std::string& doubt_names) {
  const std::string p = std::to_string(static_cast<int>(parameters));
  const std::string preferred = std::to_string(static_cast<int>(doubt_below));
  return {std::move(codes),
          parameters,
          false,
          doubt_below,
          "Insufficient points for " + p + " Parameter Weibull",
          "At least " + p + " points are needed to do a " + p + " parameter Weibull.  At least " +
              preferred + " points are preferred.\nFit Cancelled",
          doubt_title,
          "At least " + doubt_names + " failures are preferred for a " + p +
              " parameter Weibull.  The program may not converge.  Be careful with your "
              "interpretation of the fit.\nClick 'OK' to continue, 'Cancel' to cancel analysis."};
}

std::vector<GateRow> gates() {
  const std::string may_be = "May Be Insufficient points for Fit";
  const std::string for_fit = "Insufficient points for Fit";
  return {{{98, 546, 610},
           1,
           true,
           0,
           for_fit,
           "At least 2 points are needed to do a 2 parameter Weibull.\n(If MLE, then at least 1 "
           "failure and 1 right tail suspension.)\nFit Cancelled",
           "",
           ""},
          mixture_row({162, 226, 986}, 3, 21, "Maybe Insufficient points for Fit", "21"),
          mixture_row({290}, 4, 30, may_be, "25"),
          mixture_row({354, 418}, 5, 40, may_be, "40"),
          mixture_row({482}, 7, 50, may_be, "50"),
          {{857, 922, 1057, 1137},
           2,
           false,
           0,
           for_fit,
           "At least 2 points are needed to do a fit.\nFit Cancelled",
           "",
           ""},
          {{674, 738, 802}, 1, false, 0, "", "", "", ""}};
}

/// What a model without a routine for the method says behind its gate.
std::string unavailable(int code, int method) {
  if (code == 226 || code == 418) return "model not programmed";
  if (method != 1) return code == 986 ? "3Par LN not programmed" : "";
  if (code == 857 || code == 922)
    return "MLE for Normal, LogNormal not programmed in Fit_Distribution";
  if (code == 986) return "MLE 3Par LN not programmed in Fit_Distribution";
  return code == 1057 || code == 1137 ? "MLE Gumbel not programmed in Fit_Distribution" : "";
}

/// Failures of one unit, the last of a fraction, and a unit that outlives them.
std::vector<test::Point> points_of(double failures) {
  std::vector<test::Point> points;
  for (double left = failures; left > 0; left -= 1)
    points.push_back({100.0 + 10.0 * static_cast<double>(points.size()), std::min(left, 1.0)});
  points.push_back({5000, 0, 1});
  return points;
}

// A doubt is answered with Cancel, so that no search has to run.
void expect_gate(const GateRow& gate, int code, int method, double failures) {
  FitWorld world(points_of(failures));
  const Outcome outcome = gate.outcome(method, failures);
  const bool is_asked = gate.codes.front() == 674 && outcome == Outcome::pass;
  if (outcome == Outcome::stop && !gate.stop_title.empty())
    world.prompts.expect_box(gate.stop_title, gate.stop_text);
  if (outcome == Outcome::doubt)
    world.prompts.expect_box(gate.doubt_title, gate.doubt_text, BoxAnswer::cancel);
  if (is_asked) world.prompts.expect_line("Enter Weibull Slope", "3.5");
  const std::string words = unavailable(code, method);
  if (outcome == Outcome::pass && !words.empty()) world.prompts.expect_box("", words);
  world.fit(static_cast<std::int16_t>(code), static_cast<std::int16_t>(method));
  world.prompts.verify();
  const bool fitted = outcome == Outcome::pass && words.empty();
  EXPECT_EQ(world.fits().nFits, fitted ? 1 : 0);
  EXPECT_EQ(world.session.fitting.doubts_warned, 0) << "a refused doubt comes again";
  for (const Box& box : world.prompts.shown()) EXPECT_FALSE(box.text.empty());
}

TEST(Door, EveryGateHasItsBoxesAtItsLimits) {
  for (const GateRow& gate : gates())
    for (const int code : gate.codes)
      for (const int method : {0, 1, 2})
        for (const double failures :
             {0.5, 1.0, 2.0, 2.5, 3.0, 4.0, 4.9, 5.0, 6.0, 7.0, 20.5, 21.0, 29.0, 39.0, 49.0}) {
          if (gate.doubt_below > 0 && failures >= gate.doubt_below) continue;
          if (gate.stop_at_limit && method == 1 && failures < 1) continue;
          SCOPED_TRACE(std::to_string(code) + " by " + std::to_string(method) + " with " +
                       std::to_string(failures));
          expect_gate(gate, code, method, failures);
        }
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
      EXPECT_TRUE(reason.starts_with("Row 2: ")) << reason;
    }
  }
  for (int code = 0; code <= static_cast<int>(NoteCode::mode_not_fitted); ++code) {
    const std::string words = note_sentence({static_cast<NoteCode>(code), 98, {1, 0}}, data);
    EXPECT_TRUE(words.ends_with(".")) << words;
    EXPECT_EQ(words.find("Click"), std::string::npos);
  }
}

}  // namespace
}  // namespace tavlo
