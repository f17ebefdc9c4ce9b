// Tie order: at one time, failures stand ahead of suspensions.
#pragma once

#include <span>

#include "project/records.h"

namespace tavlo {

/// Puts rows of one and the same X in order. Told by exchanges of neighbours, a
/// row with a suspension (of 1 unit or more) gives way to a row with failures
/// behind it, unless both rows hold failures and suspensions. The result is
/// where repeated passes of such exchanges come to rest, in linear time. Rows
/// that never give way to each other keep their order.
void order_tied_rows(std::span<DataPoint> rows);

}  // namespace tavlo
