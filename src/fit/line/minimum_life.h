// Minimum life: the t0 of a three-parameter Weibull at which the line through ln(t - t0)
// correlates best.
#pragma once

#include "fit/companion.h"
#include "fit/line/paper.h"
#include "fit/row_fit.h"

namespace tavlo {

/// Searches the t0 of the best r squared, from 0 on, and gives its line, regressed either
/// way. The best t0 is the same both ways: r squared does not depend on the direction.
/// Refused where the best t0 is the first failure itself. Without a lower end of a bracket
/// within 300 trials the last trial stands: the correlation still rises far below all
/// times.
RowAnswer fit_minimum_life_line(const Sample& sample, bool x_on_y, Companion& companion);

/// The t0 at which the straight line through two trials reaches the target, kept off the
/// ends of the bracket when the target is inside it: a trial that creeps along an end would
/// never close the other side. `count` is the number of steps so far.
double BoxEstValue(double t0_a, double value_a, double t0_b, double value_b, double target,
                   int count);

}  // namespace tavlo
