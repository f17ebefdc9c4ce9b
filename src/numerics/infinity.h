// Infinity by its name.
#pragma once

#include <limits>

namespace tavlo {

inline constexpr double infinity = std::numeric_limits<double>::infinity();

}  // namespace tavlo
