// Data notes: what a person must know beside the numbers of a fit that follows from its
// data, its request and the numbers alone. They need no search, so a fit that comes from
// a file gets them anew.
#pragma once

#include <span>
#include <vector>

#include "fit/answer.h"

namespace tavlo {

/// The notes on a fit of the sample whose numbers are `rows`, in the person's unit; of a fit
/// by failure mode row i is that of modes[i], else `modes` is empty.
std::vector<Note> data_notes(const Sample& sample, const FitRequest& request,
                             std::span<const FitParam> rows, std::span<const ModeFit> modes);

}  // namespace tavlo
