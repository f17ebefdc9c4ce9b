// The standard normal distribution and its inverse.
#pragma once

#include "numerics/error_reporter.h"

namespace tavlo {

/// P(Z <= z). Hart et al., Computer Approximations, algorithm 5666 up to
/// |z| = 5.03, continued fractions beyond. Absolute error below 4e-16.
double fd_NormCDF(ErrorReporter& reporter, double z);

/// z with P(Z <= z) = p for 1e-198 < p < 1; otherwise code 1001 is reported and
/// 0 returned. Wichura's AS 241 (PPND16) with the switch to the far tail at
/// 1e-11 and 1 - 1e-11. Relative error below 2e-15.
double fd_NormZ(ErrorReporter& reporter, double p);

/// z with P(Z <= z) = p for 0 < p < 1, without a word: error 5 outside.
double normal_quantile(double p);

}  // namespace tavlo
