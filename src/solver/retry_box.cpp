#include "solver/solver.h"

namespace tavlo {
namespace {

constexpr double seconds_between_equal_boxes = 5;
constexpr int cancelled = 2;

bool box_is_wanted(const SolverState& state, int run_time_number, double now) {
  if (state.abort_flag == cancelled) return false;
  const bool repeated = run_time_number == state.retry_error;
  return !repeated || now - state.retry_seconds > seconds_between_equal_boxes;
}

}  // namespace

int ReportRetryBox(Solver& solver, int run_time_number, const std::string& text) {
  SolverState& state = solver.state;
  state.failed_steps += 1;
  if (solver.quiet || !box_is_wanted(state, run_time_number, solver.clock.steady_seconds()))
    return state.abort_flag;
  const BoxAnswer answer =
      solver.prompts.show({"*** Tavlo Error ***",
                           text + "\nChoose Retry to Continue, or Cancel to Exit the subroutine.",
                           BoxIcon::exclamation, BoxButtons::retry_cancel});
  if (answer == BoxAnswer::cancel) state.abort_flag = cancelled;
  state.retry_error = run_time_number;
  state.retry_seconds = solver.clock.steady_seconds();  // the time to answer doesn't count
  return state.abort_flag;
}

}  // namespace tavlo
