// Fitting text: words that would run over their room are written smaller, and
// cut where no size that can be read is small enough.
#pragma once

#include <string>

#include "chart/record/canvas.h"

namespace tavlo {

/// The text, or its beginning and an ellipsis, no wider than `room` logical units
/// in the font of the item; `scale` is units a point.
std::string cut_to_width(TextMeasure& measure, std::string text, const ChartItem& item, double room,
                         double scale = units_per_point);

/// The item with its text in `Text2` no wider than `room`: first in smaller letters,
/// down to 8 points, then cut.
ChartItem fitted_to_width(TextMeasure& measure, ChartItem item, double room);

}  // namespace tavlo
