// Minimum life: the t0 of a three-parameter Weibull at which the line through
// ln(t - t0) correlates best.
#pragma once

#include <array>

#include "solver/solver.h"

namespace tavlo {

/// Slots of a trial.
namespace t0_trial {
enum Slot { t0, slope, derivative, life, r_squared, sum_x, sum_xx, sum_xy, sum_y, sum_yy };
}  // namespace t0_trial
using T0Trial = std::array<double, 10>;

/// Line kinds of RegressT0.
namespace t0_kind {
inline constexpr int keep_y_sums = 0;
inline constexpr int x_on_y = 1;
inline constexpr int y_on_x = 2;
}  // namespace t0_kind

/// r squared of a search that failed: the best t0 lies at the first time itself;
/// no lower end of a bracket within 300 trials (the trial is still usable); no
/// convergence within 300 trials.
namespace t0_failure {
inline constexpr double at_first_time = -1;
inline constexpr double no_bracket = -10;
inline constexpr double no_convergence = -100;
}  // namespace t0_failure

/// The line of the block's points at the trial's t0: slope, life, r squared and
/// the derivative by t0 of its sum of squares, which has the opposite sign of
/// that of r squared (below 0: t0 wants to rise). Fills LnT, counts N and S, and
/// takes Y from F; kind `keep_y_sums` relies on those of the last call and leaves
/// slope, life and derivative. A row with F outside (0, 1) is a suspension, and
/// an F of 1 or more moves to the next whole number. Error 5 when a time is not
/// above t0; the trial then stays as it was.
void RegressT0(Solver& solver, RegressBlock& block, T0Trial& trial, int kind);

/// Searches the t0 of the best r squared, from the trial's t0 on, and leaves its
/// line of the given kind in the trial and in SolverParams. See t0_failure for
/// the values of r squared that tell a failure. The best t0 is the same for both
/// kinds: r squared does not depend on the direction.
void Findto(Solver& solver, RegressBlock& block, T0Trial& trial, int kind);

/// The t0 at which the straight line through two trials reaches the target,
/// kept off the ends of the bracket when the target is inside it: a trial that
/// creeps along an end would never close the other side. `count` is the number of
/// steps so far.
double BoxEstValue(double t0_a, double value_a, double t0_b, double value_b, double target,
                   int count);

}  // namespace tavlo
