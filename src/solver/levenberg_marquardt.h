// Levenberg-Marquardt: minimises the sum of squares of ResidualFn. The algorithm
// is MINPACK's lmder (More, Garbow, Hillstrom, ANL-80-74) with its own constants.
#pragma once

#include <vector>

#include "solver/jacobian_matrix.h"
#include "solver/solver.h"
#include "solver/variable_vector.h"

namespace tavlo {

/// Scale factors of the variables, slots 1 to 7.
using VariableScales = VariableVector;

namespace scaling_mode {
inline constexpr int internal = 1;  ///< from the column norms of the Jacobian
inline constexpr int given = 2;     ///< `diag` on entry
}  // namespace scaling_mode

/// Moves X (slots 1 to K) to a least-squares minimum of ResidualFn over rows 1 to M.
/// `mode` is a scaling_mode, `factor` (above 0) limits the first step to that many
/// lengths of the scaled X. `info`: 0 improper input or failed arithmetic, 1 actual
/// and predicted reduction of the sum of squares at most 1e-8, 2 relative step at
/// most 1e-11, 3 both, 4 gradient 0 (also: residuals 0), 5 a hundred evaluations,
/// 6, 7, 8 the tests of 1, 2, 4 at machine precision; negative: stopped by
/// ResidualFn. Whatever the code, X and fvec (slots 1 to M) are the best so far and
/// X[0] is their quality; SolverParams hold the last trial, which may be another.
void LMDER(Solver& solver, int M, int K, ParameterVector& X, std::vector<double>& fvec,
           JacobianMatrix& fjac, VariableScales& diag, int mode, double factor, int& info);

}  // namespace tavlo
