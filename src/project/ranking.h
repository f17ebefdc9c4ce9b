// Ranking: gives every row of a data set its plotting position.
#pragma once

#include "numerics/error_reporter.h"
#include "project/records.h"

namespace tavlo {

/// Ranks the rows 1..Count: orders ties (failures ahead of suspensions), totals row
/// 0, and writes Y, XT(2), YT(2) and the extent of the failures. Adjusted ranks when
/// there is a suspension, otherwise exact median ranks, or Benard's approximation
/// when `benard`. A set whose row 0 holds rank_state::untouchable bits is left as it
/// is. Failures are reported as "Median Rank Error: " with the row that causes them.
void Make_Ranks(ErrorReporter& reporter, bool benard, DataSet& data);

/// Adds a line that names the first row whose X has no logarithm, if there is one.
void add_zero_time_line(ErrorReporter& reporter, const DataSet& data);

}  // namespace tavlo
