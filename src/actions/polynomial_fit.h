// PolyFitD: weighted polynomial least squares on the paper coordinates of a data
// set. A straight line on paper gives the parameters of every classical model.
#pragma once

#include "numerics/error_reporter.h"
#include "numerics/slots.h"
#include "project/records.h"

namespace tavlo {

/// What a fit is asked for beside its coefficients.
struct PolynomialRequest {
  int order = 1;               ///< degree; above 0 regresses Y on X, below 0 X on Y
  int index = 1;               ///< coordinate index: 1 whole set, 2 the failure mode of row 0
  int row_limit = 0;           ///< between 0 and Count: only the rows up to it
  bool all_rows = false;       ///< a row without failures takes part with the weight 1
  bool means_suffice = false;  ///< a system that can't be solved is not reported
};

/// Fits the polynomial; rows weigh as their `Fails`. Writes the weighted means to
/// XT and YT (of the index) of row 0 and element j of `coefficients`, enlarged if
/// shorter than the degree, to the j-th power. `r_squared`: 0 or more on entry
/// asks for it, otherwise it comes back 0. A system whose rows are all equal in X
/// or in Y counts as singular. On failure, which is reported as "Polynomial Fit Subroutine: ",
/// returns false with minus the stage reached in `r_squared`: 1.0 order 0, 1.1
/// and 1.2 arrays, 2.0 moments, 3.0 too few points, 4.0 solution (and 0.01 times
/// the fault of MatSolve less 1000), 5.0 r squared.
bool PolyFitD(ErrorReporter& reporter, DataSet& data, const PolynomialRequest& request,
              Slots<double>& coefficients, double& r_squared);

}  // namespace tavlo
