// Fit_Line: the door to the mixture solver. Loads the points of a data set, has
// the best answer found and writes it into the fit record when it may stand.
#pragma once

#include <cstdint>

#include "project/session.h"

namespace tavlo {

/// Fits a mixture model (or the two- or three-parameter Weibull) to the ranked
/// points of gData(data_index) and writes quality, status, rows and the report on
/// the starts into its slot of gFit(fit_index); a slot is added when the model has
/// none by this method. An answer that fails a gate leaves status and rows as they
/// were, and Views::status tells why; a cancelled fit leaves all records. MLE
/// takes suspensions in when the solver's CensoredLikelihood is on.
void Fit_Line(Session& session, int data_index, int fit_index, std::int16_t model_code,
              std::int16_t method_code);

}  // namespace tavlo
