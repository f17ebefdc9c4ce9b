// Tie order: at one time, failures stand ahead of suspensions.
#pragma once

#include <cstdint>
#include <span>

#include "fit/sample.h"

namespace tavlo {

/// Puts rows of one and the same time in order; `tied` holds their entry numbers, from 1. Told by
/// exchanges of neighbours, a row with a suspension (of 1 unit or more) gives way to a row with
/// failures behind it, unless both rows hold failures and suspensions. The result is where repeated
/// passes of such exchanges come to rest, in linear time. Rows that never give way to each other
/// keep their order.
void order_tied_rows(std::span<const SampleRow> rows, std::span<std::int32_t> tied);

}  // namespace tavlo
