// Slope question: the slope of a model that fixes it, asked of the user.
#pragma once

#include <optional>

#include "numerics/number_reading.h"
#include "ports/prompts.h"

namespace tavlo {

/// True for 1e-6 to 1e6: beyond them no life is known, and the arithmetic ends.
bool is_slope(double slope);

/// Asks for a slope, offering `suggestion`, with all its digits, if it is above 0. The
/// size of the number entered; nothing when the question is cancelled or left empty or 0.
/// An entry that is no slope is named, with what is allowed, and asked for again.
std::optional<double> ask_slope(Prompts& prompts, const NumberPunctuation& punctuation,
                                double suggestion);

}  // namespace tavlo
