// QR factorisation with column pivoting by Householder reflections: MINPACK's
// qrfac (More, Garbow, Hillstrom, ANL-80-74).
#pragma once

#include "solver/jacobian_matrix.h"
#include "solver/solver.h"
#include "solver/variable_vector.h"

namespace tavlo {

/// Factors the M by K matrix (M >= K) with its columns in the order `ipvt` of
/// decreasing norm. On return `fjac` holds R strictly above its diagonal, the
/// diagonal of R is in `rdiag`, and the columns from the diagonal down hold the
/// reflectors; `acnorm` has the norms of the columns as they came. False after a
/// failure that has been reported: some entry is not finite.
bool QRFAC(Solver& solver, int M, int K, JacobianMatrix& fjac, PivotList& ipvt,
           VariableVector& rdiag, VariableVector& acnorm);

}  // namespace tavlo
