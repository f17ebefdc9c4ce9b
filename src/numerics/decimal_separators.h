// Decimal separators: the system's decimal and list characters, taken from two numbers as
// the system writes them.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "numerics/number_reading.h"

namespace tavlo {

/// `grouped` is 1234.567 with two decimals and grouped digits, `half` is -0.5. The second
/// character of the one and the third of the other count, if they are neither digits nor
/// signs. `ask` asks the person for a decimal character; after three times without an
/// answer it is a full stop. Characters beyond ASCII are not known to the readers of
/// numbers: a decimal one is asked for, a blank one becomes a blank.
NumberPunctuation GetDecimalSeparators(const std::string& grouped, const std::string& half,
                                       const std::function<std::optional<std::string>()>& ask);

}  // namespace tavlo
