#include "solver/best_answer.h"

#include "solver/further_starts.h"
#include "solver/main_loop.h"
#include "solver/parameter_translation.h"
#include "solver/regular_maximum.h"
#include "solver/sound_answer.h"
#include "solver/starting_values.h"
#include "solver/thinned_sample.h"

namespace tavlo {
namespace {

constexpr int largest_whole_sample = 500;  // failures; more are thinned for the search
constexpr int thinned_failures = 400;
constexpr int middle_failures = 20000;  // between the thinned sample and a far larger one
constexpr int polishing_runs = 2;
constexpr double gain = 1e-9;

bool is_mixture(int K) { return K == 4 || K == 5 || K == 7; }

/// A fit starts from the plot and not from what another method has found, or the
/// answer would depend on the order of the fits.
void forget_other_fits(SolverState& state) {
  const int K = state.data.K;
  if (!is_mixture(K)) return;
  for (int slot = 0; slot <= 7; ++slot)
    state.table(K, state.data.Method, slot) = state.table(K, 0, slot);
  state.table(K, state.data.Method, 0) = 2;  // a start, not a solution
  state.table(K, state.data.Method, 8) = 0;
}

Solver quiet_twin(Solver& solver, SolverState& state, EventLoop& event_loop) {
  return {state, solver.errors, solver.prompts, event_loop, solver.clock, true};
}

/// The solution that the table holds, with its quality in slot 0.
int restore_solution(Solver& solver, int K, const ParameterVector& solution, ParameterVector& X) {
  X = solution;
  TranslateParams(solver, translation::x_to_parameters, K, X);
  solver.params.SumSq = solution[0];
  return static_cast<int>(solution[8]);
}

ParameterVector solution_of(const Solver& solver, int K) {
  ParameterVector X{};
  for (int slot = 0; slot <= 8; ++slot)
    X[static_cast<std::size_t>(slot)] = solver.table(K, solver.data.Method, slot);
  return X;
}

/// MainLoop for W3T. A solution of the same points stands: MainLoop would go on from
/// it, by X on Y towards another goal and away from it.
int fit_minimum_life(Solver& solver, int M, ParameterVector& X) {
  const ParameterVector before = solution_of(solver, 3);
  if (before[8] > 0) return restore_solution(solver, 3, before, X);
  int status = 0;
  MainLoop(solver, M, 3, X, status);
  return status;
}

/// The likelihood of W3T has no upper limit; the answer is its regular maximum, which
/// is found without the minimiser. Only where there is none MainLoop goes as far as it
/// can.
int fit_minimum_life_by_likelihood(Solver& solver, int M, ParameterVector& X) {
  const auto maximum = regular_maximum(solver.state.block, M);
  solver.state.starts.interior_maximum = maximum.has_value();
  if (!maximum) return fit_minimum_life(solver, M, X);
  if (!accepts_likelihood_warning(solver)) return status_cancelled;
  X = {0, maximum->beta, maximum->eta, maximum->t0};
  TranslateParams(solver, translation::x_to_parameters, 3, X);
  int status = status_evaluate;
  GetEstimate(solver, M, 3, X, status);
  constexpr int converged = 1;
  store_solution(solver, 3, X, converged);
  return converged;
}

int fit_whole(Solver& solver, int M, ParameterVector& X) {
  SolverState& state = solver.state;
  const int K = state.data.K;
  state.starts = {.tried = 1, .agreed = 1};
  if (K == 3)
    return state.data.Method == solver_method::mle ? fit_minimum_life_by_likelihood(solver, M, X)
                                                   : fit_minimum_life(solver, M, X);
  int status = 0;
  MainLoop(solver, M, K, X, status);
  if (is_mixture(K) && status >= 0 && !solver.aborted())
    state.starts = try_further_starts(solver, M, K, X, status).report;
  return status;
}

/// An optimum taken from a sample of the rows to all of them.
struct Polished {
  ParameterVector X{};
  double quality = 0;
  int info = 0;
};

Polished polish_on_all_rows(Solver& solver, const ParameterVector& start) {
  const int K = solver.data.K;
  Polished polished{start, 0, 0};
  polished.info = minimise_from(solver, solver.data.M, K, polished.X, polishing_runs);
  polished.quality = solver.params.SumSq;
  return polished;
}

/// The optimum of a sample that lies between: it saves steps on all rows.
ParameterVector polish_on_middle_sample(Solver& solver, const ParameterVector& start) {
  if (solver.data.N < 4 * middle_failures) return start;
  SolverState sample = thinned_sample(solver.state, middle_failures);
  AbortMirror turns(solver.event_loop, solver.state, sample);
  Solver twin = quiet_twin(solver, sample, turns);
  ParameterVector X{};
  WeibullStatistics(twin, X);
  return polish_on_all_rows(twin, start).X;
}

Polished evaluated_on_all_rows(Solver& solver, const ParameterVector& start) {
  Polished answer{start, 0, 0};
  int M = solver.data.M;
  int status = status_evaluate;
  TranslateParams(solver, translation::x_to_parameters, solver.data.K, answer.X);
  GetEstimate(solver, M, solver.data.K, answer.X, status);
  answer.quality = solver.params.SumSq;
  return answer;
}

/// Whether steps on all rows could bring the other optimum up to the best. The optimum
/// of the thinned sample lies about K / 2 in its ln L below, which is 0.01 a row; the
/// limits are some times that.
bool may_catch_up(const SolverData& data, const Polished& best, const Polished& other) {
  const bool likelihood = data.Method == solver_method::mle;
  const double limit = likelihood ? 0.05 * data.M : 0.02;
  return best.quality - other.quality <= limit;
}

/// The report speaks of all rows, so the other optimum is evaluated on them too; where
/// it comes close it is polished, and may turn out to be the better one.
Polished with_runner_up(Solver& quiet, const Polished& best, const ParameterVector& runner_up) {
  OldStartsReport& report = quiet.state.starts;
  if (!report.has_runner_up) return best;
  Polished other = evaluated_on_all_rows(quiet, polish_on_middle_sample(quiet, runner_up));
  if (may_catch_up(quiet.data, best, other)) other = polish_on_all_rows(quiet, other.X);
  const bool sound = flaw_of(quiet.params, quiet.data, quiet.data.K) == Flaw::none;
  if (sound && other.quality > best.quality + gain) {
    report.runner_up = best.quality;
    report.agreed = 1;
    return other;
  }
  report.has_runner_up = sound && best.quality - other.quality > gain;
  report.runner_up = other.quality;
  return best;
}

int fit_thinned(Solver& solver, ParameterVector& X) {
  SolverState sample = thinned_sample(solver.state, thinned_failures);
  AbortMirror turns(solver.event_loop, solver.state, sample);
  Solver twin = quiet_twin(solver, sample, turns);
  WeibullStatistics(twin, X);
  const int K = solver.data.K;
  int M = sample.data.M;
  int status = 0;
  MainLoop(twin, M, K, X, status);
  if (status < 0 || solver.aborted()) return status_cancelled;
  const StartsOutcome outcome = try_further_starts(twin, M, K, X, status);

  Solver quiet = quiet_twin(solver, solver.state, solver.event_loop);
  const Polished best = polish_on_all_rows(quiet, polish_on_middle_sample(quiet, X));
  solver.state.starts = outcome.report;
  const Polished answer = with_runner_up(quiet, best, outcome.runner_up);
  if (solver.aborted()) return status_cancelled;
  X = answer.X;
  TranslateParams(solver, translation::x_to_parameters, K, X);
  solver.params.SumSq = answer.quality;
  solver.state.starts.sound = flaw_of(solver.params, solver.data, K) == Flaw::none;
  store_solution(solver, K, X, answer.info);
  return answer.info;
}

}  // namespace

int find_best_answer(Solver& solver, ParameterVector& X) {
  SolverData& data = solver.data;
  // Emptied by now where the points are new; the first fit prepares all models.
  WeibullStatistics(solver, X);
  if (data.N < 1) return status_cancelled;
  if (solver.table(data.K, 0, 0) > 0) {
    forget_other_fits(solver.state);
    X = solution_of(solver, data.K);
    if (data.M >= 7) TranslateParams(solver, translation::x_to_parameters, data.K, X);
  }
  if (solver.aborted()) return status_cancelled;
  if (is_mixture(data.K) && data.N > largest_whole_sample) return fit_thinned(solver, X);
  return fit_whole(solver, data.CensoredLikelihood ? data.M : data.N, X);
}

}  // namespace tavlo
