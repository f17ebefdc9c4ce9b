// Classical fits: one-population models fitted by regression on paper or by
// maximum likelihood.
#pragma once

#include "numerics/error_reporter.h"
#include "ports/prompts.h"
#include "project/records.h"

namespace tavlo {

/// Fits a Weibull to ranked data by the method of `fit`; `index` 1 regresses on
/// the whole set, 2 on the ranks within the failure mode of row 0. The row's
/// `Shape` on entry is the fixed slope, or -1 for a free one. On success fills
/// the row, Quality and Status; failures are reported and Status stays.
void Fit_Wb123(ErrorReporter& reporter, Prompts& prompts, DataSet& data, FitResult& fit, int index);

}  // namespace tavlo
