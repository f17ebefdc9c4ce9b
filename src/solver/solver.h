// Solver: the state of the mixture solver together with the parts of the world
// that its routines need. Every routine takes one.
#pragma once

#include <string>
#include <utility>

#include "numerics/error_reporter.h"
#include "numerics/run_time_error.h"
#include "ports/clock.h"
#include "ports/event_loop.h"
#include "ports/prompts.h"
#include "project/solver_state.h"

namespace tavlo {

struct Solver {
  SolverState& state;
  ErrorReporter& errors;
  Prompts& prompts;
  EventLoop& event_loop;
  Clock& clock;
  bool quiet = false;  ///< a trial start: no boxes, failed steps are passed over silently

  SolverParams& params = state.params;
  SolverData& data = state.data;
  SolutionTable& table = state.table;

  bool aborted() const { return state.abort_flag > 0; }
};

/// Reports a failed step in a box with Retry and Cancel; Cancel sets the abort
/// flag to 2. No box while the flag is 2 already, nor for the same run-time error
/// within 5 seconds. `where` reads "in XonY Function routine". Returns the flag.
int ReportRetryBox(Solver& solver, int run_time_number, const std::string& text);

/// One statement of a routine that goes on after a failure: reports and returns.
template <class Statement>
void step(Solver& solver, const char* where, Statement&& statement) {
  try {
    std::forward<Statement>(statement)();
  } catch (const RunTimeError& error) {
    ReportRetryBox(solver, error.number(), std::string(error.what()) + "\n" + where);
  }
}

}  // namespace tavlo
