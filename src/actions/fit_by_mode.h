// Fit by failure mode: one Weibull for each mode, the failures of the others
// standing as suspensions.
#pragma once

#include "numerics/error_reporter.h"
#include "ports/prompts.h"
#include "project/records.h"

namespace tavlo {

/// Fits row m of `fit` to the failures of mode m, for each mode of ranked data.
/// A mode with fewer than two rows of failures is fitted by maximum likelihood,
/// after a box, unless the last row of the data is of that mode: then a box ends
/// the routine, and the fit keeps the code of a plain Weibull; so does a mode that
/// can't be fitted, without Status. `nRows` stays 1, so reports show the first
/// mode only; both are kept on purpose.
void Fit_by_Mode(ErrorReporter& reporter, Prompts& prompts, DataSet& data, FitResult& fit);

}  // namespace tavlo
