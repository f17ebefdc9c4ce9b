// Regular maximum: the minimum life of a three-parameter Weibull by maximum
// likelihood. The likelihood has no upper limit where t0 comes up to the first
// time with a slope below 1, so its answer is a local maximum with t0 below the
// first time (Smith, Biometrika 72, 1985). It is found on the profile of the
// likelihood over t0, which is one-dimensional and cheap.
#pragma once

#include <optional>

#include "project/solver_state.h"

namespace tavlo {

struct RegularMaximum {
  double beta = 0;
  double eta = 0;
  double t0 = 0;  ///< below the first time
  double ln_likelihood = 0;
};

/// The highest local maximum of the likelihood of the block's first `rows` rows
/// (failures, then suspensions) with t0 below every time; nothing when there is
/// none, which small samples and slopes near or below 1 bring about.
std::optional<RegularMaximum> regular_maximum(const RegressBlock& block, int rows);

}  // namespace tavlo
