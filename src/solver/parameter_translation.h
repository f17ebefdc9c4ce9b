// Parameter translation: moves a model's parameters between their names and the
// vector X that the minimiser moves, and keeps them within reason on the way.
#pragma once

#include "solver/solver.h"

namespace tavlo {

/// Directions of TranslateParams.
namespace translation {
inline constexpr int parameters_to_x = 1;
inline constexpr int logarithms_to_x = 2;
inline constexpr int x_to_parameters = 3;
inline constexpr int x_logarithms_to_parameters = 4;
}  // namespace translation

/// Cleans the parameters up (negative to 0, the share within 0.001 and 0.999,
/// overflowed values to usual ones), then moves them for the model of K
/// parameters. Fails per slot: a slot that can't be moved keeps its value.
void TranslateParams(Solver& solver, int direction, int K, ParameterVector& X);

/// Forgets all solutions: slot 0 becomes SolutionTable::unsolved, the rest 0.
void XrefZero(Solver& solver);

}  // namespace tavlo
