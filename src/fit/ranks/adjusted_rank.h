// AdjustedRank: the order number of the failures of a set whose suspensions
// leave the risk set along the way (Johnson's mean order numbers). One failure
// moves the rank by (N + 1 - Rank) / (Rem + 1), Rem being the units at risk.
#pragma once

#include "numerics/rounding.h"

namespace tavlo {

/// Benard's approximation of the median rank of an order number among `units`.
inline double benard_rank(double order, double units) { return (order - 0.3) / (units + 0.4); }

/// `rank` moved by `steps` failures, `at_risk_and_one` being Rem + 1 before them.
/// N + 1 - Rank shrinks by Rem / (Rem + 1) at each failure while Rem falls by 1, so a row of
/// any count is one product; it agrees with unit steps to rounding (a few 1e-16), and a count
/// of 1e15 takes no longer than one. More failures than units at risk, which only counts that
/// differ by more than the digits of a number can bring, are all of them.
inline double rank_after(double rank, double steps, double at_risk_and_one, double units_and_one) {
  const double share = steps < at_risk_and_one ? steps / at_risk_and_one : 1.0;
  return rank + (units_and_one - rank) * share;
}

/// Failures count by whole units: 2.5 take 2 steps, 0.5 take none and so repeat
/// the last rank. Kept on purpose: stored ranks depend on it.
inline double whole_steps(double fails) { return fails == 1.0 ? 1.0 : IntFloor(fails); }

class AdjustedRank {
 public:
  explicit AdjustedRank(double units) : units_and_one_(units + 1), at_risk_and_one_(units + 1) {}

  /// Ranks failures (above 0) and gives the rank of the last one.
  double fail(double fails) {
    const double steps = whole_steps(fails);
    if (steps < 1) return rank_;
    rank_ = rank_after(rank_, steps, at_risk_and_one_, units_and_one_);
    at_risk_and_one_ -= steps;
    return rank_;
  }

  /// Units that leave the risk set when X moves on.
  void hold_back(double units) { pending_ += units; }

  void move_on() {
    at_risk_and_one_ -= pending_;
    pending_ = 0;
  }

 private:
  double units_and_one_;
  double at_risk_and_one_;
  double rank_ = 0;
  double pending_ = 0;
};

}  // namespace tavlo
