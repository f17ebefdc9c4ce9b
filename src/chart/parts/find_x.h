// fd_FindX: the time at which a fitted model reaches a fraction failed.
#pragma once

#include "numerics/error_reporter.h"
#include "project/records.h"

namespace tavlo {

/// x with F(x) = y, searched from the bracket xa, xb (widened where it has to
/// be). `success` turns true only when x is that solution; otherwise the end
/// where the search stopped comes back.
double fd_FindX(ErrorReporter& reporter, const FitResult& fit, double y, double xa, double xb,
                double x_tolerance, double y_tolerance, bool& success);

}  // namespace tavlo
