// SuspensionPlan: which points of a sample from a model are taken out before they fail.
#pragma once

#include <cstdint>
#include <vector>

#include "analyses/wichmann_hill.h"

namespace tavlo {

/// Numbers of points; what is below 1 asks for none.
struct SuspensionPlan {
  std::int32_t left = 0;               ///< the first points
  std::vector<std::int32_t> points{};  ///< points by their numbers, from 1
  std::int32_t right = 0;              ///< the last points
  bool right_at_last_failure = false;  ///< at the time of the last failure, as one row
  std::int32_t random = 0;             ///< points by chance

  friend bool operator==(const SuspensionPlan&, const SuspensionPlan&) = default;
};

/// What a plan makes of a sample of points in ascending order.
struct SuspendedPoints {
  std::vector<bool> is_suspended;  ///< one a point that is left, from 0
  /// Units that the last point suspends, at the time of the point before it; 0 where each
  /// point stands for itself.
  std::int32_t collapsed = 0;
  std::int64_t count = 0;  ///< suspensions made

  std::int32_t size() const { return static_cast<std::int32_t>(is_suspended.size()); }
};

/// Suspends points of a sample of `size` in the order left, by number, right, random, as far as
/// 2 failures stay, or 1 for a fit by likelihood. The random ones are drawn from a sequence of
/// their own, which starts from the states of `random`.
SuspendedPoints suspend(std::int32_t size, const SuspensionPlan& plan, bool by_likelihood,
                        const WichmannHill& random, Entropy& chance);

}  // namespace tavlo
