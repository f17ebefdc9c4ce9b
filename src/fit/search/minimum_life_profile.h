// Minimum life profile: the likelihood of a three-parameter Weibull over t0, with beta and
// eta at their best. It has no upper limit where t0 comes up to the first failure with a
// slope below 1, so the answer is a local maximum with t0 below the first failure (Smith,
// Biometrika 72, 1985). The profile is one-dimensional and cheap: a scan of a few rows finds
// where its maxima lie.
#pragma once

#include <vector>

#include "fit/mixture/mixture_rows.h"

namespace tavlo {

/// Times from the first failure on (a suspension may lie before it), with weights.
struct TimesFromFirst {
  WeightedRows failures, suspensions;
};

/// A point of the profile: t0 lies `distance` below the first failure.
struct ProfilePoint {
  double distance = 0;
  double beta = 0;
  double ln_eta = 0;
};

struct ProfileScan {
  std::vector<ProfilePoint> maxima;  ///< a point near each local maximum
  bool rises_outward = false;        ///< the likelihood still rises as t0 goes to -infinity
};

/// Scans distances from 1e-7 to 1e3 times the span of the times; nothing where they have none.
ProfileScan scan_minimum_life(const TimesFromFirst& times);

}  // namespace tavlo
