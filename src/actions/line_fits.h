// Line fits: models that are a straight line on their own paper, fitted by
// regression: Normal and LogNormal, and the two Gumbels.
#pragma once

#include "numerics/error_reporter.h"
#include "ports/prompts.h"
#include "project/records.h"

namespace tavlo {

/// Fits a Normal or a LogNormal to ranked data; row 1 gets mu or the median as
/// `Scale` and 1 / sigma as `Shape`. By maximum likelihood nothing is stored.
/// Failures are reported and leave the fit as it was.
void Fit_Norm(ErrorReporter& reporter, Prompts& prompts, DataSet& data, FitResult& fit);

/// Fits a lower or upper Gumbel to ranked data; row 1 gets 1 / Xi as `Scale` and
/// Del as `Shape`. By maximum likelihood, which nobody asks for, zeros stand.
void Fit_Gumbel(ErrorReporter& reporter, Prompts& prompts, DataSet& data, FitResult& fit);

}  // namespace tavlo
