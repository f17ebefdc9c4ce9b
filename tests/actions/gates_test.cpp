// Every box of the door to all fits, for every model, method and number of
// failures, by a table of its own.
#include "actions/gates.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "actions/dispatch.h"
#include "actions/ranking.h"
#include "support/test_world.h"

namespace tavlo {
namespace {

using test::TestWorld;

enum class Outcome { pass, stop, doubt };

/// A row of the gates, as the manual has it. `doubt_below` 0: never.
struct GateRow {
  std::vector<int> codes;
  double stop_below;
  bool stop_at_limit;
  double doubt_below;
  std::string stop_title, stop_text, doubt_title, doubt_text;

  Outcome outcome(int method, double n) const {
    const bool two_parameters = stop_at_limit;
    if (two_parameters && method == 1) return Outcome::pass;
    if (two_parameters ? n <= stop_below : n < stop_below) return Outcome::stop;
    return n < doubt_below ? Outcome::doubt : Outcome::pass;
  }
};

std::string points_needed(const std::string& parameters, const std::string& preferred) {
  return "At least " + parameters + " points are needed to do a " + parameters +
         " parameter Weibull.  At least " + preferred + " points are preferred.\nFit Cancelled";
}

std::string failures_preferred(const std::string& preferred, const std::string& parameters) {
  return "At least " + preferred + " failures are preferred for a " + parameters +
         " parameter Weibull.  The program may not converge.  Be careful with your interpretation "
         "of the fit.\nClick 'OK' to continue, 'Cancel' to cancel analysis.";
}

std::string insufficient(const std::string& parameters) {
  return "Insufficient points for " + parameters + " Parameter Weibull";
}

const char* const insufficient_for_fit = "Insufficient points for Fit";
const char* const may_be = "May Be Insufficient points for Fit";

const GateRow gates[] = {
    {{98, 546, 610},
     1,
     true,
     0,
     insufficient_for_fit,
     "At least 2 points are needed to do a 2 parameter Weibull.\n(If MLE, then at least 1 failure "
     "and 1 right tail suspension.)\nFit Cancelled",
     "",
     ""},
    {{162, 226, 986},
     3,
     false,
     21,
     insufficient("3"),
     points_needed("3", "21"),
     "Maybe Insufficient points for Fit",
     failures_preferred("21", "3")},
    {{290},
     4,
     false,
     30,
     insufficient("4"),
     points_needed("4", "30"),
     may_be,
     failures_preferred("25", "4")},
    {{354, 418},
     5,
     false,
     40,
     insufficient("5"),
     points_needed("5", "40"),
     may_be,
     failures_preferred("40", "5")},
    {{482},
     7,
     false,
     50,
     insufficient("7"),
     points_needed("7", "50"),
     may_be,
     failures_preferred("50", "7")},
    {{857, 922, 1057, 1137},
     2,
     false,
     0,
     insufficient_for_fit,
     "At least 2 points are needed to do a fit.\nFit Cancelled",
     "",
     ""},
    {{674, 738, 802}, 1, false, 0, "", "", "", ""},
    {{1152, 1216}, -1, false, 0, "", "", "", ""},
};

/// Boxes behind the gate of a model that has no routine for the method.
std::string refusal(int code, int method) {
  const bool solver_refuses = code == 226 || code == 418 || (method == 1 && code >= 1152);
  if (solver_refuses) return "model not programmed";
  if (method != 1 && code == 986) return "3Par LN not programmed";
  if (method != 1 && code == 1152) return "Custom not programmed";
  if (method == 1 && (code == 857 || code == 922))
    return "MLE for Normal, LogNormal not programmed in Fit_Distribution";
  if (method == 1 && code == 986) return "MLE 3Par LN not programmed in Fit_Distribution";
  if (method == 1 && (code == 1057 || code == 1137))
    return "MLE Gumbel not programmed in Fit_Distribution";
  return {};
}

bool goes_to_the_solver(int code) {
  return code == 162 || code == 290 || code == 354 || code == 482;
}

/// Failures of one unit, the last of a fraction; a likelihood gets a unit that
/// outlives them.
void put_data(TestWorld& world, double failures, bool suspension) {
  std::vector<test::Point> points;
  for (double left = failures; left > 0; left -= 1)
    points.push_back({10.0 * static_cast<double>(points.size() + 1), std::min(left, 1.0)});
  if (suspension || failures == 0) points.push_back({1000, 0, 1});
  DataSet data = test::make_data(points);
  data.UniqueId = world.session.gData(1).UniqueId;
  Make_Ranks(world.session.errors, true, data);
  world.session.gData(1) = data;
}

struct Request {
  int code;
  int method;
  double failures;
};

void ask(TestWorld& world, const Request& request) {
  auto code = static_cast<std::int16_t>(request.code);
  Fit_Distribution(world.session, 1, 1, code, static_cast<std::int16_t>(request.method), false,
                   false);
}

/// What comes behind an open gate.
void expect_routine(TestWorld& world, const Request& request) {
  const std::string words = refusal(request.code, request.method);
  if (!words.empty()) world.prompts.expect_box("", words);
  const bool fixed = request.code == 674 || request.code == 738 || request.code == 802;
  if (fixed) world.prompts.expect_line("Enter Weibull Slope", "1.5");
  if (request.code == 1216 && request.method != 1)
    world.prompts.expect_box("", "Fit_ByMode model not programmed yet");
  const bool no_failures = request.method == 1 && request.failures == 0 && words.empty();
  if (no_failures) world.prompts.expect_box("", "There is no failure among the data.");
}

/// Behind the gate of the solver only its doubt counts here.
void expect_solver(TestWorld& world, const GateRow& gate, const Request& request, Outcome outcome) {
  const std::size_t before = world.prompts.shown().size();
  world.prompts.accept_all();
  ask(world, request);
  const auto& shown = world.prompts.shown();
  const bool doubted = shown.size() > before && shown[before].title == gate.doubt_title &&
                       shown[before].text == gate.doubt_text;
  EXPECT_EQ(doubted && !gate.doubt_title.empty(), outcome == Outcome::doubt);
}

void expect_boxes(const GateRow& gate, const Request& request) {
  TestWorld world;
  put_data(world, request.failures, request.method == 1);
  const Outcome outcome = gate.outcome(request.method, request.failures);
  if (outcome == Outcome::stop) {
    if (!gate.stop_title.empty()) world.prompts.expect_box(gate.stop_title, gate.stop_text);
    ask(world, request);
    EXPECT_EQ(world.session.gFit(1).nFits, 0);
    for (const Box& box : world.prompts.shown()) EXPECT_EQ(box.text, gate.stop_text);
    return;
  }
  if (outcome == Outcome::doubt) {
    world.prompts.expect_box(gate.doubt_title, gate.doubt_text, BoxAnswer::cancel);
    ask(world, request);
    EXPECT_EQ(world.session.fit_doubts_warned, 0) << "a refused doubt comes again";
  }
  if (goes_to_the_solver(request.code)) return expect_solver(world, gate, request, outcome);
  if (outcome == Outcome::doubt) world.prompts.expect_box(gate.doubt_title, gate.doubt_text);
  expect_routine(world, request);
  ask(world, request);
  for (const Box& box : world.prompts.shown())
    if (box.title.starts_with("May")) {
      EXPECT_EQ(box.text, gate.doubt_text);
    }
}

TEST(Door, EveryModelMethodAndNumberOfFailuresHasItsBoxes) {
  for (const GateRow& gate : gates)
    for (const int code : gate.codes)
      for (const int method : {0, 1, 2})
        for (const double failures :
             {0.0, 0.5, 1.0,  1.5,  1.9,  2.0,  2.5,  3.0,  3.5,  4.0,  4.9,  5.0,
              6.0, 7.0, 20.0, 20.5, 21.0, 24.0, 29.0, 30.0, 39.0, 40.0, 49.0, 50.0}) {
          SCOPED_TRACE(std::to_string(code) + " by " + std::to_string(method) + " with " +
                       std::to_string(failures));
          expect_boxes(gate, {code, method, failures});
        }
}

TEST(Door, ADoubtIsRaisedOnceInARun) {
  test::ScriptedPrompts prompts;
  int warned = 0;
  prompts.expect_box("Maybe Insufficient points for Fit", "At least 21 failures");
  EXPECT_TRUE(passes_gate(prompts, 162, 0, 20, warned));
  EXPECT_TRUE(passes_gate(prompts, 226, 1, 3, warned)) << "the models share it";
  prompts.expect_box(may_be, "At least 25 failures");
  EXPECT_TRUE(passes_gate(prompts, 290, 0, 29, warned));
}

}  // namespace
}  // namespace tavlo
