// Slope question: the slope of a model that fixes it, asked of the user.
#pragma once

#include <optional>

#include "numerics/error_reporter.h"
#include "numerics/number_reading.h"
#include "ports/prompts.h"

namespace tavlo {

/// Asks for a slope, offering `suggestion`, with all its digits, if it is above 0. The
/// size of the number entered, as it was entered; nothing when it is 0, as an empty, a
/// cancelled or an unreadable entry is.
std::optional<double> ask_slope(Prompts& prompts, ErrorReporter& reporter,
                                const NumberPunctuation& punctuation, double suggestion);

}  // namespace tavlo
