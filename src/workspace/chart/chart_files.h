// Chart files: the chart of a window as a picture file.
#pragma once

#include "chart/record/drawing_record.h"
#include "project/session.h"

namespace tavlo {

/// Asks for a name and saves the drawing of the chart in the format of its extension:
/// PNG (300 pixels an inch), SVG, PDF, and a metafile, which is drawn anew, for every
/// other one. What doesn't work is told; a drawing without a size does nothing.
void save_chart(Session& session, int chart_index, const DrawingRecord& drawing);

}  // namespace tavlo
