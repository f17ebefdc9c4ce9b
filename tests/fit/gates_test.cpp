#include "fit/gates.h"

#include <gtest/gtest.h>

#include "support/test_world.h"

namespace tavlo {
namespace {

enum class Gate { pass, stop, silent_stop, doubt };

struct Row {
  std::vector<int> codes;
  double failures;
  Gate gate;
  const char* title;
  const char* text;
};

const Row rows[] = {
    {{98, 546, 610}, 1.5, Gate::pass, "", ""},
    {{98, 546, 610},
     1,
     Gate::stop,
     "Insufficient points for Fit",
     "At least 2 points are needed to do a 2 parameter Weibull.\n(If MLE, then at least 1 failure "
     "and 1 right tail suspension.)\nFit Cancelled"},
    {{162, 226, 986},
     2,
     Gate::stop,
     "Insufficient points for 3 Parameter Weibull",
     "At least 3 points are needed to do a 3 parameter Weibull.  At least 21 points are "
     "preferred.\nFit Cancelled"},
    {{162, 226, 986},
     20,
     Gate::doubt,
     "Maybe Insufficient points for Fit",
     "At least 21 failures are preferred for a 3 parameter Weibull.  The program may not "
     "converge.  Be careful with your interpretation of the fit.\nClick 'OK' to continue, "
     "'Cancel' to cancel analysis."},
    {{162, 226, 986}, 21, Gate::pass, "", ""},
    {{290},
     29,
     Gate::doubt,
     "May Be Insufficient points for Fit",
     "At least 25 failures are preferred for a 4 parameter Weibull.  The program may not "
     "converge."},
    {{290}, 3.5, Gate::stop, "Insufficient points for 4 Parameter Weibull", "At least 30 points"},
    {{354, 418}, 39, Gate::doubt, "May Be", "At least 40 failures are preferred for a 5 param"},
    {{354, 418}, 4, Gate::stop, "Insufficient points for 5 Parameter Weibull", "At least 5 points"},
    {{482}, 49, Gate::doubt, "May Be", "At least 50 failures are preferred for a 7 param"},
    {{482}, 6, Gate::stop, "Insufficient points for 7 Parameter Weibull", "At least 7 points"},
    {{857, 922, 1057, 1137},
     1.9,
     Gate::stop,
     "Insufficient points for Fit",
     "At least 2 points are needed to do a fit.\nFit Cancelled"},
    {{857, 922, 1057, 1137}, 2, Gate::pass, "", ""},
    {{674, 738, 802}, 1, Gate::pass, "", ""},
    {{674, 738, 802}, 0.5, Gate::silent_stop, "", ""},
    {{1152, 1216, 0, 7}, 0, Gate::pass, "", ""},
};

TEST(Gates, EveryModelHasItsStopAndItsDoubt) {
  for (const Row& row : rows) {
    for (const int code : row.codes) {
      test::ScriptedPrompts prompts;
      int warned = 0;
      if (row.gate == Gate::stop) prompts.expect_box(row.title, row.text);
      if (row.gate == Gate::doubt) prompts.expect_box(row.title, row.text, BoxAnswer::cancel);
      EXPECT_EQ(passes_gate(prompts, code, 0, row.failures, warned), row.gate == Gate::pass)
          << code << " with " << row.failures;
      EXPECT_EQ(warned, 0) << "a refused doubt comes again";
      if (row.gate != Gate::doubt) continue;
      prompts.expect_box(row.title, row.text, BoxAnswer::ok);
      EXPECT_TRUE(passes_gate(prompts, code, 0, row.failures, warned));
      EXPECT_TRUE(passes_gate(prompts, code, 0, row.failures, warned)) << "asked once in a run";
    }
  }
}

TEST(Gates, MaximumLikelihoodOfTwoParametersAlwaysPasses) {
  test::ScriptedPrompts prompts;
  int warned = 0;
  for (const int code : {98, 546, 610}) EXPECT_TRUE(passes_gate(prompts, code, 1, 0, warned));
}

}  // namespace
}  // namespace tavlo
