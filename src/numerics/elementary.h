// Elementary routines with guarded ranges: logarithm, rounding to significant
// digits, clamping, and the ratio behind r squared. Their odd limits are relied
// on by charts and reports and are kept on purpose.
#pragma once

#include "numerics/error_reporter.h"

namespace tavlo {

/// Base 10 logarithm of |x|, held within -709 and 709; fd_log10(0) is that of
/// 1.2e-308. The constant 0.434294481903252 has 15 digits, so exact negative
/// decades come out just below a whole number; axis limits depend on it.
double fd_log10(ErrorReporter& reporter, double x);

struct Rounded {
  double value = 0;
  double lower = 0;  ///< neighbour at or below on the grid of these digits
  double upper = 0;  ///< neighbour above
};

/// `value` at |digits| significant digits (0 counts as 1, at most 15). A
/// positive value goes to its nearer neighbour, ties down; a negative value is
/// always cut towards zero: kept on purpose, every Ln(L) shown depends on it.
Rounded fd_Round(ErrorReporter& reporter, double value, int digits);

struct Bounded {
  double value = 0;
  int status = 0;  ///< -2 below, -1 at low, 0 inside, 1 at high, 2 above
};

/// `x` held within low and high; the tests run in the order of the statuses.
Bounded fd_Bound(ErrorReporter& reporter, double low, double x, double high);

double fd_Max(ErrorReporter& reporter, double a, double b);
double fd_Min(ErrorReporter& reporter, double a, double b);

/// 1 - numerator / denominator, guarded for a vanishing denominator.
double fd_RSquared(ErrorReporter& reporter, double numerator, double denominator);

}  // namespace tavlo
