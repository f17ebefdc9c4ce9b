// Ranking: reads the rows of a data set, and gives every row its plotting position.
#pragma once

#include "numerics/error_reporter.h"
#include "project/records.h"

namespace tavlo {

/// Reads the rows: the sample of the set is then that of the rows as they stand. Adjusted
/// ranks when there is a suspension, otherwise exact median ranks, or Benard's
/// approximation when `benard`; a set with ranks of its own keeps them. Failures are
/// reported as "Median Rank Error: " with the row that causes them.
void Make_Ranks(ErrorReporter& reporter, bool benard, DataSet& data);

/// Adds a line that names the first row whose X has no logarithm, if there is one.
void add_zero_time_line(ErrorReporter& reporter, const DataSet& data);

}  // namespace tavlo
