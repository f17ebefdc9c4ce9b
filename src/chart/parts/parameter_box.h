// Parameter box: the table of fitted values in the corner of the plot.
#pragma once

#include <vector>

#include "chart/parts/crowding.h"
#include "chart/parts/plot_sets.h"
#include "chart/record/canvas.h"

namespace tavlo {

/// Draws a heading for each data set ("N" failures, "S" suspensions) and, for
/// each of its fits, the names of the parameters, the populations and the
/// quality. At most 50 lines; nothing when no fit is on the chart. A box that
/// the user hasn't moved goes to the place in the plot where the least of
/// `content`, the points and lines of the chart, would be hidden. Notes its area.
/// Letters shrink where the table is longer than the plot, and where a smaller box
/// hides less.
void draw_parameter_box(Canvas& canvas, const Session& session, const std::vector<PlotSet>& sets,
                        const Obstacles& content);

}  // namespace tavlo
