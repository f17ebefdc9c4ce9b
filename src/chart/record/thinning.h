// Thinning: leaves out the points of a polyline that nobody would miss.
#pragma once

#include <vector>

#include "chart/record/drawing_record.h"

namespace tavlo {

/// The points that are needed to stay within `tolerance` units of the line: at
/// most `tolerance` points of a chord lie exactly that far off, none farther.
/// First and last stay. A spike between two points at the same place is lost.
std::vector<drawing::Place> thin_line(const std::vector<drawing::Place>& line, int tolerance);

}  // namespace tavlo
