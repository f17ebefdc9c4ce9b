// Fit aside: a fit on a thread of its own, so that the windows stay alive however long a part
// of it takes that can't be interrupted. Whatever the fit asks comes from the calling thread.
#pragma once

#include "fit/answer.h"
#include "fit/companion.h"
#include "fit/request.h"
#include "fit/sample.h"

namespace tavlo {

/// fit(sample, request, companion), with the same bits. The companion is called from this
/// thread alone: its turn() every few milliseconds until the answer is there.
FitAnswer fit_aside(const Sample& sample, const FitRequest& request, Companion& companion);

}  // namespace tavlo
