// The Levenberg-Marquardt parameter: how much of the scaled variables is added to
// the linear problem so that its step has the length delta. MINPACK's lmpar.
#pragma once

#include "solver/jacobian_matrix.h"
#include "solver/solver.h"
#include "solver/variable_vector.h"

namespace tavlo {

/// Finds par >= 0 and the solution `x` of A x = b, sqrt(par) D x = 0, such that
/// either par = 0 and |D x| - delta <= 0.1 delta, or the two differ by at most 0.1
/// delta; ten trials at most. Arguments as for QRSOLV; `par` is the first guess on
/// entry. False after a failure that has been reported.
bool LMPAR(Solver& solver, int K, JacobianMatrix& fjac, const PivotList& ipvt,
           const VariableVector& diag, const VariableVector& qtb, double delta, double& par,
           VariableVector& x, VariableVector& sdiag);

}  // namespace tavlo
