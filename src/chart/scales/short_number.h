// Short number: a number in the form that takes less room.
#pragma once

#include <string>

namespace tavlo {

/// Up to `digits` significant digits: "606.5", "0.001"; from eight characters on, or where
/// a plain number has an exponent anyway, "2.545E+8" if that is shorter.
std::string short_number(double value, int digits);

}  // namespace tavlo
