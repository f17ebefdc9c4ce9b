// Mixture functions: the fraction failed at a time, for every stored fit, and
// the Weibull ordinates.
#pragma once

#include "life/weibull_ordinate.h"
#include "numerics/error_reporter.h"
#include "project/records.h"

namespace tavlo {

/// Fraction failed of a Weibull mixture at time x, held within 1e-14 and
/// 0.99999999999999. At or below a term's T0 (and above 0) the term adds its
/// whole fraction: kept on purpose, charts start a three-parameter line there.
double fd_Wbl(ErrorReporter& reporter, const FitResult& fit, double x);

/// Fraction failed of any model at x, by the fit's model code.
double Fd_YofX(ErrorReporter& reporter, const FitResult& fit, double x);

}  // namespace tavlo
