// Thinned sample: some hundred rows spread evenly over the ranks stand for all of
// them while the solver looks for the best optimum; all rows only polish it.
#pragma once

#include "ports/event_loop.h"
#include "project/solver_state.h"

namespace tavlo {

/// About `failures` of the failures that `whole` holds in its block, and as large
/// a part of its suspensions, loaded as (time, rank) and not yet prepared.
SolverState thinned_sample(const SolverState& whole, int failures);

/// Carries a set abort flag of one solver into another at each turn.
class AbortMirror : public EventLoop {
 public:
  AbortMirror(EventLoop& turns, const SolverState& from, SolverState& to)
      : turns_(turns), from_(from), to_(to) {}
  void yield() override {
    turns_.yield();
    if (from_.abort_flag > 0) to_.abort_flag = from_.abort_flag;
  }

 private:
  EventLoop& turns_;
  const SolverState& from_;
  SolverState& to_;
};

}  // namespace tavlo
