// Row faults: tells the user which row has no place on the paper of a model.
#pragma once

#include "numerics/error_reporter.h"
#include "project/records.h"

namespace tavlo {

/// Adds a line that names the first row whose X has no logarithm, if there is
/// one, by its order number of entry.
void add_zero_time_line(ErrorReporter& reporter, const DataSet& data);

/// The same for the first failure whose rank is no probability: fewer than 0.3
/// units in all, or a fraction of one under exact ranks, can bring one.
void add_rank_line(ErrorReporter& reporter, const DataSet& data);

}  // namespace tavlo
