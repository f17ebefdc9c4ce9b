// Further starts: a mixture has many local optima, and the answer of MainLoop is
// the one nearest to its start. Here the minimiser runs again from other starts,
// and the best answer stands.
#pragma once

#include "solver/solver.h"

namespace tavlo {

struct StartsOutcome {
  OldStartsReport report;
  ParameterVector runner_up{};  ///< the best other optimum, where there is one
};

/// Tries further starts for K = 4, 5 or 7 after MainLoop has left its answer in X
/// and the parameters (`info` its status). A sound answer (see sound_answer.h)
/// that is better by more than 1e-9 replaces X, the parameters and the row of the
/// SolutionTable. The starts are the most promising of a large pool (see
/// start_pool.h), the best answer with populations exchanged, and random steps from
/// the best with a fixed seed; their number is fixed, not timed, so that two machines agree, and it
/// ends after six starts in a row without gain. No boxes. Returns what it found.
StartsOutcome try_further_starts(Solver& solver, int M, int K, ParameterVector& X, int info);

}  // namespace tavlo
