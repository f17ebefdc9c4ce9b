// Mode ranks: the position that each failure has within its own failure mode,
// for fits by failure mode.
#pragma once

#include "project/records.h"

namespace tavlo {

/// Writes YT(2) of every row with failures whose Mode is 1..nModes: the Weibull
/// coordinate of the Benard position of its adjusted rank, where failures of
/// other modes count as suspensions and N is all units of the set. Row 0 holds
/// the totals already. Error 5 at a rank that has no Weibull coordinate.
void rank_failure_modes(DataSet& data);

}  // namespace tavlo
