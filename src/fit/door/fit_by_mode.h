// Fit by failure mode: one Weibull for each mode, the failures of the others standing as
// suspensions.
#pragma once

#include "fit/answer.h"

namespace tavlo {

/// Fits each mode that can be fitted, by the request's method; a mode whose failures stand
/// at one time by maximum likelihood, with a note. Row and ModeFit i - 1 belong to mode i; a
/// mode without a fit has its refusal, a note, and a row of zeros: the life leaves it out,
/// which is noted too. The quality is that of the last mode fitted. Refused when no mode can be.
FitAnswer fit_by_mode(const Sample& sample, const FitRequest& request);

}  // namespace tavlo
