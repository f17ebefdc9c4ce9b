// Dispatch: the one door to all fitting, for windows, command line and analyses.
#pragma once

#include <cstdint>

#include "project/session.h"

namespace tavlo {

/// Fits `model_code` by `method_code` to gData(data_index) and keeps the result
/// in gFit(fit_index): gates on the number of failures, finds or makes the slot,
/// fits, refreshes the grid, and on request redraws the last chart and writes
/// the log. A request that stands calculated already is shown again. The model
/// code may be changed (a fixed slope of 1 is the exponential).
void Fit_Distribution(Session& session, int data_index, int fit_index, std::int16_t& model_code,
                      std::int16_t method_code, bool draw, bool report);

}  // namespace tavlo
