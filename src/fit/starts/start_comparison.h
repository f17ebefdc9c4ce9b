// Start comparison: tells promising starts from others by their values on a few rows.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "fit/mixture/mixture_rows.h"
#include "fit/mixture/objective.h"
#include "fit/mixture/populations.h"

namespace tavlo {

/// Starts are compared on this many rows.
inline constexpr std::size_t comparing_rows = 64;

/// Each parameter within the distance `near` (of its logarithm, or of the log odds).
bool are_alike(const MixturePoint& a, const MixturePoint& b, double near);

class StartComparison {
 public:
  StartComparison(const MixtureRows& rows, Populations populations);

  /// A point without a value on the rows is left out.
  void add(MixturePoint point);

  /// The points that fit best, no two alike, the best first.
  std::vector<MixturePoint> best(std::size_t most);

 private:
  struct Candidate {
    MixturePoint point;
    double value = 0;
  };

  MixtureRows rows_;
  std::unique_ptr<Objective> objective_;
  std::vector<Candidate> all_;
};

}  // namespace tavlo
