// Bracketed secant: one step of the search for the x at which a rising function
// reaches a target.
#pragma once

#include "solver/solver.h"

namespace tavlo {

struct SecantBracket {
  double xLo = 0, yLo = 0, xHi = 0, yHi = 0;
};

/// Narrows the bracket by the point (x, y) and moves x to the next trial; closes
/// the bracket when y is the target.
void Xnew(double target, double& x, double y, SecantBracket& bracket);

}  // namespace tavlo
