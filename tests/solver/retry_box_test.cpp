#include <gtest/gtest.h>

#include "numerics/real.h"
#include "residual_world.h"

namespace tavlo {
namespace {

struct RetryBoxTest : testing::Test, test::ResidualWorld {
  void expect(BoxAnswer answer = BoxAnswer::retry) {
    world.prompts.expect_box("*** Tavlo Error ***",
                             "Overflow\nin Xnew routine\nChoose Retry to Continue, or Cancel to "
                             "Exit the subroutine.",
                             answer);
  }
  int report(int number = run_time::overflow) {
    return ReportRetryBox(solver, number, "Overflow\nin Xnew routine");
  }
};

TEST_F(RetryBoxTest, is_a_retry_box_with_an_exclamation_icon) {
  expect();
  EXPECT_EQ(report(), 0);
  const Box& box = world.prompts.shown().front();
  EXPECT_EQ(box.icon, BoxIcon::exclamation);
  EXPECT_EQ(box.buttons, BoxButtons::retry_cancel);
}

TEST_F(RetryBoxTest, same_number_waits_five_seconds) {
  expect();
  report();
  world.clock.advance(5);
  report();
  world.clock.advance(0.1);
  expect();
  report();
  expect();
  report(run_time::division_by_zero);  // another number comes at once
  EXPECT_EQ(world.prompts.shown().size(), 3u);
}

TEST_F(RetryBoxTest, cancel_ends_and_silences) {
  expect(BoxAnswer::cancel);
  EXPECT_EQ(report(), 2);
  world.clock.advance(60);
  EXPECT_EQ(report(run_time::division_by_zero), 2);
}

TEST_F(RetryBoxTest, a_raised_flag_is_returned_but_does_not_silence) {
  solver.state.abort_flag = 1;
  expect();
  EXPECT_EQ(report(), 1);
}

TEST_F(RetryBoxTest, a_quiet_trial_shows_nothing_and_leaves_no_trace) {
  solver.quiet = true;
  EXPECT_EQ(report(), 0);
  solver.quiet = false;
  expect();
  report();
}

TEST_F(RetryBoxTest, a_step_reports_and_goes_on) {
  double target = 3;
  world.prompts.expect_box("", "Division by zero\nin Test routine\nChoose", BoxAnswer::retry);
  step(solver, "in Test routine", [&] { target = (1 / Real(0)).value(); });
  EXPECT_EQ(target, 3);
}

}  // namespace
}  // namespace tavlo
