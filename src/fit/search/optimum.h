// Optimum: where a run of the minimiser ended, judged: an optimum counts only inside the
// fence and with its proof. Likelihoods of mixtures rise without limit on spikes outside it.
#pragma once

#include <optional>
#include <vector>

#include "fit/minimiser/newton.h"
#include "fit/mixture/mixture_rows.h"
#include "fit/mixture/populations.h"

namespace tavlo {

/// What counts as an answer, free of units.
struct Fence {
  static constexpr double fewest_failures = 2;  ///< expected, of a population that has any
  static constexpr double highest_share = 0.999;
  double steepest = 50;  ///< slope
  double lowest_share = 0.001;

  /// `usual` is the slope of one Weibull on the same rows.
  static Fence around(double usual);
};

struct Optimum {
  MixturePoint point;
  double value = 0;  ///< of the objective, see objective.h
  SmallMatrix hessian;
  bool at_bound = false;  ///< of the share
  double decrement = 0;
  double curvature = 0;
};

/// The largest decrement of a proven optimum: what two proven values may differ by without
/// one being better.
double proving_gain(const MixtureRows& rows);

/// The proven optimum to which a run from `start` leads; nothing where it ends on a spike,
/// on a ridge or nowhere, or where a slow run can't get below `to_beat`.
/// `ridge` takes the value of an end that has no proof.
std::optional<Optimum> optimum_from(const MixtureRows& rows, const MixturePoint& start,
                                    const Fence& fence,
                                    double to_beat = -std::numeric_limits<double>::infinity(),
                                    double* ridge = nullptr);

/// Where a short run from `start` has come to, with the value there; nothing where it left
/// for a spike.
struct Sketch {
  MixturePoint point;
  double value = 0;
};
std::optional<Sketch> sketch_from(const MixtureRows& rows, const MixturePoint& start,
                                  const Fence& fence);

/// The one rule by which two ends are one optimum: the distance of their parameters means
/// next to nothing at the precision of the fit.
bool is_same_optimum(const MixtureRows& rows, const Optimum& a, const Optimum& b);

}  // namespace tavlo
