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
  /// Compares on about `most_rows` of the rows, or on all where they are no more.
  StartComparison(const MixtureRows& rows, Populations populations,
                  std::size_t most_rows = comparing_rows);

  /// A point without a value on the rows will be left out.
  void add(MixturePoint point);

  /// The points that fit best, no two alike, the best first.
  std::vector<MixturePoint> best(std::size_t most);

  /// The best of each place, no two with all their lives at the same: where many units fail
  /// at one time, spikes of every slope and share would crowd out all else.
  std::vector<MixturePoint> best_of_places(std::size_t most);

 private:
  /// Values all points; they share the cores.
  void evaluate();
  template <class Alike>
  std::vector<MixturePoint> best_unlike(std::size_t most, Alike&& alike);

  struct Candidate {
    MixturePoint point;
    double value = 0;
  };

  MixtureRows rows_;
  std::unique_ptr<Objective> objective_;
  std::vector<Candidate> all_;
};

}  // namespace tavlo
