// Sound answers: which optima of a mixture mean something. The likelihood of a
// mixture has no upper limit where one population shrinks to a spike on a single
// time, and a regression may spend a population on one point of the plot; such
// optima describe nothing and do not count.
#pragma once

#include "project/solver_state.h"

namespace tavlo {

enum class Flaw {
  none,
  undefined,             ///< a parameter or a density that is no number, or an eta of 0
  density_above_one,     ///< MLE: a failure with a density above 1 per unit of time
  reliability_replaced,  ///< MLE: a row where the reliability is 0 and stands at 1e-18
  steep_population,      ///< a beta above 50
  empty_population,      ///< a population that holds less than two failures
};

/// The first flaw of the parameters as an answer for the points in `data`, K =
/// 4, 5 or 7 (other models have none). A failure belongs to each population by
/// the share that this population has in the density at its time.
Flaw flaw_of(const SolverParams& params, const SolverData& data, int K);

}  // namespace tavlo
