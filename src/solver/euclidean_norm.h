// Euclidean norm of the minimiser: the plain form, without the scaling against
// overflow and underflow of MINPACK's enorm. Residuals stay far below 1e150.
#pragma once

#include "numerics/error_reporter.h"
#include "solver/solver.h"

namespace tavlo {

/// The root of the sum of squares of vector[1] to vector[count]; slot 0 takes no
/// part. A sum that isn't finite is reported and gives 0.
double fd_Enorm(ErrorReporter& reporter, int count, const double* vector);

/// The same for the minimiser: what isn't finite raises error 6 (overflow) or 5,
/// after fd_Enorm's report unless the solver is quiet.
double euclidean_norm(Solver& solver, int count, const double* vector);

}  // namespace tavlo
