// Dashes: a broken line as pieces of solid ones. A pen of a metafile can be broken only
// where it is one unit wide, so the dashes of a wider one are drawn one by one.
#pragma once

#include <cstdint>
#include <vector>

#include "chart/record/drawing_record.h"

namespace tavlo {

/// Whether a pen style of the records is broken: 1 dash, 2 dot, 3 dash-dot, 4 dash-dot-dot.
bool is_broken(std::int32_t style);

/// The dashes of a line of that style and width along its places, the first from its
/// beginning on. They are for a pen with round ends, which reach half a width further. A
/// style that isn't broken gives the whole line.
std::vector<std::vector<drawing::Place>> dashes_of(const std::vector<drawing::Place>& places,
                                                   std::int32_t style, double width);

}  // namespace tavlo
