// What the minimiser keeps for each variable, in slots 1 to K.
#pragma once

#include <array>

namespace tavlo {

/// The most variables that a model has.
inline constexpr int most_variables = 7;

using VariableVector = std::array<double, most_variables + 1>;

/// Column order of a factored Jacobian: its column j is the variable ipvt[j].
using PivotList = std::array<int, most_variables + 1>;

}  // namespace tavlo
