// Plotting positions: the cumulative fraction failed that each row of a sample stands for.
#pragma once

#include "fit/sample.h"

namespace tavlo {

/// Fills `rank` from the counts, the totals and the kind of ranks of a sample in order:
/// adjusted ranks when at least one unit is suspended, otherwise exact median ranks of the
/// nearest whole number of failures, or Benard's approximation.
void rank_rows(Sample& sample);

}  // namespace tavlo
