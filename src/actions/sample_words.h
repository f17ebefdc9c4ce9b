// SampleWords: why a sample can't be drawn from what was asked for, in the person's words.
#pragma once

#include <string>

#include "analyses/monte_carlo.h"

namespace tavlo {

/// A sentence without its full stop.
std::string words_of(PlanFault fault, const Model& model);

}  // namespace tavlo
