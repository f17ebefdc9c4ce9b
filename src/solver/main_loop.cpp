#include "solver/main_loop.h"

#include <cmath>
#include <vector>

#include "numerics/real.h"
#include "solver/levenberg_marquardt.h"
#include "solver/minimum_life.h"
#include "solver/parameter_translation.h"
#include "solver/starting_values.h"

namespace tavlo {
namespace {

constexpr const char* place = "in MainLoop (Go) routine";

constexpr double first_factor = 0.2;  // bounds of the first step, relative to X
constexpr double small_factor = 0.1;

// Findto tells success by an r squared up to 1; its failures are negative, and
// pass too: the evaluation at their t0 shows what they are worth.
constexpr double largest_r_squared = 1.000001;

/// What the attempts of one fit share.
struct Attempt {
  Attempt(Solver& the_solver, int rows, int the_K, ParameterVector& the_X)
      : solver(the_solver),
        M(rows),
        K(the_K),
        X(the_X),
        fvec(static_cast<std::size_t>(rows > 0 ? rows : 0) + 1),
        fjac(rows > 0 ? rows : 0, the_K) {}

  Solver& solver;
  int M;
  int K;
  ParameterVector& X;
  std::vector<double> fvec;
  JacobianMatrix fjac;
  VariableScales diag{};
  int mode = scaling_mode::internal;
  double factor = first_factor;
  int info = 0;
  int pass = 0;
};

/// The minimiser leaves the parameters at its last trial, which it may have
/// rejected; what follows reads them, so they are brought to its best X.
void run_core(Attempt& attempt) {
  LMDER(attempt.solver, attempt.M, attempt.K, attempt.X, attempt.fvec, attempt.fjac, attempt.diag,
        attempt.mode, attempt.factor, attempt.info);
  TranslateParams(attempt.solver, attempt.solver.data.TransMode + 2, attempt.K, attempt.X);
  attempt.pass += 1;
}

void evaluate_once(Attempt& attempt) {
  int status = status_evaluate;
  GetEstimate(attempt.solver, attempt.M, attempt.K, attempt.X, status);
}

/// A regression that converged in its parameters runs once more in their
/// logarithms; a likelihood, whose Jacobian knows no logarithms, just once more.
void polish(Attempt& attempt) {
  SolverData& data = attempt.solver.data;
  const int own_mode = data.TransMode;
  const bool parameters = own_mode != 1 || data.Method == solver_method::mle;
  data.TransMode = parameters ? 1 : 2;
  TranslateParams(attempt.solver, data.TransMode, attempt.K, attempt.X);
  run_core(attempt);
  data.TransMode = own_mode;
}

/// A second attempt from the pattern search, each variable scaled by its size.
void retry_with_own_scales(Attempt& attempt) {
  attempt.M = std::abs(attempt.M);
  int status = -1;
  GetEstimate(attempt.solver, attempt.M, attempt.K, attempt.X, status);
  attempt.mode = scaling_mode::given;
  for (int i = 1; i <= attempt.K; ++i) {
    const auto slot = static_cast<std::size_t>(i);
    attempt.diag[slot] = 1;  // kept where X is 0
    step(attempt.solver, place,
         [&] { attempt.diag[slot] = abs(1 / Real(attempt.X[slot])).value(); });
  }
  run_core(attempt);
}

void minimise(Attempt& attempt) {
  run_core(attempt);
  if (attempt.info < -2) {  // no code of the minimiser is this low; kept for a new one
    attempt.factor = small_factor;
    int status = attempt.info;
    GetEstimate(attempt.solver, attempt.M, attempt.K, attempt.X, status);
    run_core(attempt);
  }
  if (attempt.info >= 2)
    retry_with_own_scales(attempt);
  else if (attempt.pass == 1 && attempt.info >= 0)
    polish(attempt);
}

/// True when the fit may go on. Shown once in a run.
bool accepts_likelihood_warning(Solver& solver) {
  if (solver.state.minimum_life_warned || solver.quiet) return true;
  solver.state.minimum_life_warned = true;
  const BoxAnswer answer =
      solver.prompts.show({"3 Parameter MLE Warning.",
                           "Warning!  Some three parameter Weibull data sets\n"
                           " may not converge with MLE, especially under\n"
                           " the following conditions:\n"
                           " 1. Small sample size (<50 failures), or\n"
                           " 2. Multiple failures at same time.\n"
                           "Compare your results to the 'X on Y Rank Regression' results.\n"
                           "(This special warning applies to 3 parameter MLE fits.)\n"
                           "'OK' to continue, 'Cancel' to stop MLE solution.",
                           BoxIcon::exclamation, BoxButtons::ok_cancel});
  return answer != BoxAnswer::cancel;
}

void warn_of_alternate_method(Solver& solver) {
  if (solver.quiet) return;
  solver.prompts.show({"3 Parameter does not Converge!",
                       "Warning! The solution did not converge.  Trying alternate "
                       "method of solution.  Check your results for validity.",
                       BoxIcon::exclamation, BoxButtons::ok_cancel});
}

/// Searches t0 by the correlation of the line. The result becomes X and the
/// parameters.
void search_minimum_life(Attempt& attempt) {
  Solver& solver = attempt.solver;
  const bool x_on_y = solver.data.Method == solver_method::x_on_y;
  T0Trial trial{};
  Findto(solver, solver.state.block, trial, x_on_y ? t0_kind::x_on_y : t0_kind::y_on_x);
  attempt.X[1] = solver.params.BetaA = trial[t0_trial::slope];
  attempt.X[2] = solver.params.EtaA = trial[t0_trial::life];
  attempt.X[3] = solver.params.Extra = trial[t0_trial::t0];
  solver.params.SumSq = trial[t0_trial::r_squared];
}

/// The start of K = 3. False when the minimiser is not to run: the search has
/// solved the regression (info 1) or the user has cancelled (info -1).
bool start_minimum_life(Attempt& attempt) {
  Solver& solver = attempt.solver;
  if (solver.table(3, solver.data.Method, 8) > 0) {  // solved before: on from there
    TranslateParams(solver, translation::parameters_to_x, 3, attempt.X);
    return true;
  }
  search_minimum_life(attempt);
  if (solver.params.SumSq > largest_r_squared) {
    warn_of_alternate_method(solver);
    return true;
  }
  if (solver.data.Method != solver_method::mle) {
    attempt.info = 1;
    return false;
  }
  evaluate_once(attempt);
  if (accepts_likelihood_warning(solver)) return true;
  attempt.info = status_cancelled;
  return false;
}

/// Brings X back to parameters and evaluates them once.
void conclude(Attempt& attempt) {
  TranslateParams(attempt.solver, translation::parameters_to_x, attempt.K, attempt.X);
  evaluate_once(attempt);
  TranslateParams(attempt.solver, translation::parameters_to_x, attempt.K, attempt.X);
}

}  // namespace

void store_solution(Solver& solver, int K, const ParameterVector& X, int info) {
  SolutionTable& table = solver.table;
  const int method = solver.data.Method;
  for (int i = 1; i <= 7; ++i) table(K, method, i) = X[static_cast<std::size_t>(i)];
  for (int m = 1; info == 1 && m <= 3; ++m) {
    if (!(table(K, m, 0) > SolutionTable::unsolved)) continue;
    for (int i = 1; i <= 7; ++i) table(K, m, i) = X[static_cast<std::size_t>(i)];
  }
  table(K, method, 0) = solver.params.SumSq;
  table(K, method, 8) = info < 1 ? 0 : info;
}

void MainLoop(Solver& solver, int& M, int K, ParameterVector& X, int& status) {
  Attempt attempt(solver, M, K, X);
  if (K != 3) {
    GetEstimate(solver, attempt.M, K, X, status);
    if (status == status_evaluate) return;
  }
  if (K != 3 || start_minimum_life(attempt)) minimise(attempt);
  conclude(attempt);
  store_solution(solver, K, X, attempt.info);
  M = attempt.M;
  status = attempt.info;
}

int minimise_from(Solver& solver, int M, int K, ParameterVector& X, int runs) {
  constexpr int out_of_evaluations = 5;
  Attempt attempt(solver, M, K, X);
  TranslateParams(solver, translation::x_to_parameters, K, X);
  do {
    run_core(attempt);
  } while (attempt.info == out_of_evaluations && attempt.pass < runs && !solver.aborted());
  conclude(attempt);
  return attempt.info;
}

}  // namespace tavlo
