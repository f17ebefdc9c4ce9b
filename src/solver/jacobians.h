// Jacobians: derivatives of the residuals with respect to the slots of X.
#pragma once

#include "solver/jacobian_matrix.h"
#include "solver/solver.h"

namespace tavlo {

/// fjac(i, j) = d fvec(i) / d X(j), rows 1 to n, columns 1 to K, at the present
/// parameters. JacXonY of K = 5 and 7 is an approximation by design: the core
/// only needs a direction. A row that can't be evaluated is left as it was, without a box.
void JacYonX(Solver& solver, int n, int K, JacobianMatrix& fjac);
void JacXonY(Solver& solver, int n, int K, JacobianMatrix& fjac);
void JacMle(Solver& solver, int n, int K, ParameterVector& X, JacobianMatrix& fjac);

}  // namespace tavlo
