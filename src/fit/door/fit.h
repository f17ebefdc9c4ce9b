// Fit: the one door to all fitting. A value computed from values: reentrant, without
// state, and the same bits on every machine and any number of threads.
#pragma once

#include "fit/answer.h"
#include "fit/companion.h"

namespace tavlo {

/// Fits the request's model to the sample by the request's method. `sample.ranks` must
/// be the request's. Doubts and stops are asked of the companion in the stated order,
/// before the long part.
FitAnswer fit(const Sample& sample, const FitRequest& request, Companion& companion);

}  // namespace tavlo
