// Fit routines: which routine fits a model by a method, and the words where none
// does.
#pragma once

#include "life/models.h"
#include "project/session.h"

namespace tavlo {

/// Runs the routine of the model on gData(data_index) for `fit`, a slot of
/// gFit(fit_index). False when there is no routine, after saying so.
bool run_routine(Session& session, const Model& model, int data_index, int fit_index,
                 FitResult& fit);

}  // namespace tavlo
