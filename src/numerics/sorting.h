// Sort_Array: ascending order of a list of values.
#pragma once

#include "numerics/error_reporter.h"
#include "numerics/slots.h"

namespace tavlo {

/// Sorts slots 1 to `count` ascending; a count below 1 or above the bound means
/// the bound. Slot 0 is scratch. A list that holds NaN is refused with error 5.
void Sort_Array(ErrorReporter& reporter, Slots<double>& list, int count = 0);

}  // namespace tavlo
