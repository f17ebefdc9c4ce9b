// Gates: whether a data set has enough failures for a model, and the words when
// it hasn't.
#pragma once

#include "life/models.h"
#include "ports/prompts.h"

namespace tavlo {

/// True when the fit may go on. Shows a stop or asks a doubt where the model's
/// gate says so; `failures` counts failed units only. A doubt that the user
/// accepted sets its flag in `warned` and is not raised again.
bool passes_gate(Prompts& prompts, int model_code, int method_code, double failures, int& warned);

}  // namespace tavlo
