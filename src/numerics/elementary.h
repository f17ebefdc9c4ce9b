// Elementary routines with guarded ranges: the logarithm and rounding to
// significant digits. Their odd limits are relied on by charts and reports and are
// kept on purpose.
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

}  // namespace tavlo
