// MonteCarlo: samples from a life instead of from the field: points drawn at random, or
// standing exactly on the line of the life, with suspensions as planned.
#pragma once

#include <cstdint>
#include <vector>

#include "analyses/suspension_plan.h"
#include "fit/companion.h"
#include "fit/sample.h"
#include "life/life.h"

namespace tavlo {

struct SamplePlan {
  Life life;              ///< without rows the points are just numbered
  std::int32_t size = 0;  ///< points, at least 1
  bool is_precise = false;
  RankKind ranks = RankKind::benard;  ///< of the points of a precise sample
  std::int16_t method = 0;            ///< of the fit that the suspensions leave points for
  SuspensionPlan suspensions{};
};

/// Points in ascending order of the chances that they stand for.
struct DrawnPoints {
  std::vector<float> times;  ///< one a point that is left
  SuspendedPoints suspended;

  std::int32_t size() const { return static_cast<std::int32_t>(times.size()); }

  /// As rows of a sheet.
  std::vector<SampleRow> rows() const;
};

/// Draws the sample of a plan. The same states of `random` give the same points on every
/// machine and any number of threads. Error 6 for a time that data can't hold: beyond 3.4e38,
/// or below 1.2e-38 in a life above 0.
DrawnPoints draw_points(const SamplePlan& plan, WichmannHill& random, Entropy& chance);

/// The same in two steps: the chances that the points stand for, ascending, which is all that
/// a sample takes of `random`, and the points, made with the states `behind` them.
std::vector<float> draw_chances(const SamplePlan& plan, WichmannHill& random, Entropy& chance);
DrawnPoints points_of(const SamplePlan& plan, std::vector<float> chances,
                      const WichmannHill& behind, Entropy& chance);

}  // namespace tavlo
