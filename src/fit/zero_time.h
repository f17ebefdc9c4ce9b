// Zero time: tells the user which row has no logarithm.
#pragma once

#include "numerics/error_reporter.h"
#include "project/records.h"

namespace tavlo {

/// Adds a line that names the first row whose X has no logarithm, if there is
/// one, by its order number of entry.
void add_zero_time_line(ErrorReporter& reporter, const DataSet& data);

}  // namespace tavlo
