// Chart shape: gives a chart the proportions of the picture that it is made for, so
// that nothing has to be stretched and letters have a size that suits the picture.
#pragma once

#include "project/chart_records.h"

namespace tavlo {

/// Gives the chart box the proportions of a picture of `width` by `height`, which are
/// pixels or any other unit, up to 5 to 1. It keeps its area, and with it the size of
/// letters on the picture; the plot box takes what the margins leave. Marks and moved
/// boxes keep their places on the plot. Nothing happens without a width or height.
void give_shape(Chart& chart, int width, int height);

}  // namespace tavlo
