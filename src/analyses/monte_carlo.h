// MonteCarlo: samples from a life instead of from the field: points drawn at random, or
// standing exactly on the line of the life, with suspensions as planned.
#pragma once

#include <cstdint>
#include <optional>
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

/// Why a plan can't be sampled.
enum class PlanFault {
  model,   ///< one that is not sampled
  number,  ///< a parameter that is no finite number
  scale,   ///< eta, the median, sigma or Del not above 0, or Xi of 0
  slope,   ///< beta not above 0, or sdF not above 1
  shares,  ///< below 0, of a row that is a risk alone, or their sum is not 1
  size,    ///< below 1
};

/// True for a model that samples are drawn from.
bool is_sampled(std::int16_t model);

/// Nothing for a plan that can be sampled.
std::optional<PlanFault> fault_of(const SamplePlan& plan);

/// Points in ascending order of the chances that they stand for.
struct DrawnPoints {
  std::vector<float> times;  ///< one a point that is left
  SuspendedPoints suspended;
  std::int64_t unreached = 0;  ///< points whose time the search did not find

  std::int32_t size() const { return static_cast<std::int32_t>(times.size()); }

  /// As rows of a sheet.
  std::vector<SampleRow> rows() const;
};

/// Draws the sample of a plan without fault. The same states of `random` give the same
/// points on every machine and any number of threads. Error 6 for a time beyond single
/// precision.
DrawnPoints draw_points(const SamplePlan& plan, WichmannHill& random, Entropy& chance);

}  // namespace tavlo
