// Mode ranks: the position that each failure has within its own failure mode,
// for fits by failure mode.
#pragma once

#include "fit/sample.h"

namespace tavlo {

/// Fills `mode_ordinate` of every row with failures whose mode is 1 to `modes`: the Weibull
/// ordinate of the Benard position of its adjusted rank, where failures of other modes count
/// as suspensions and the units are all of the set. Infinite where the rank has no ordinate
/// (below 0 at a rank of 0 or less); 0 on the other rows. Needs the totals.
void rank_failure_modes(Sample& sample);

}  // namespace tavlo
