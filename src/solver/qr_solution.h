// Least-squares solution of a factored system with a diagonal part added:
// MINPACK's qrsolv.
#pragma once

#include "solver/jacobian_matrix.h"
#include "solver/solver.h"
#include "solver/variable_vector.h"

namespace tavlo {

/// Solves A x = b, D x = 0 in the least-squares sense, where A has been factored
/// by QRFAC into `fjac` (upper triangle with its diagonal) and `ipvt`, D has the
/// diagonal `diag`, and `qtb` holds the first K slots of Q'b. On return `sdiag`
/// has the diagonal of the triangle S of the joint system; the rest of S is below
/// the diagonal of `fjac`, whose upper triangle is as before. Variables without
/// any weight become 0. False after a failure that has been reported.
bool QRSOLV(Solver& solver, int K, JacobianMatrix& fjac, const PivotList& ipvt,
            const VariableVector& diag, const VariableVector& qtb, VariableVector& x,
            VariableVector& sdiag);

}  // namespace tavlo
