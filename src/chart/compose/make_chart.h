// fl_Make_WMF: composes a whole chart into a drawing record.
#pragma once

#include "chart/record/drawing_record.h"
#include "project/session.h"

namespace tavlo {

/// Draws gChart(chart_index) as it stands: boxes, titles, grids, data points and
/// fit lines. Run SetAutoScale first when data or fits have changed. A failure
/// is reported and leaves what had been drawn until then.
DrawingRecord fl_Make_WMF(Session& session, int chart_index);

/// The same with room for the names of the Greek letters, which a metafile has in their
/// place.
DrawingRecord make_metafile_drawing(Session& session, int chart_index);

/// The same for a chart that need not be one of the session's; questions and
/// failures go to `prompts` and `errors`.
DrawingRecord compose_chart(Session& session, const Chart& chart, Prompts& prompts,
                            ErrorReporter& errors);

/// A drawing of the chart that bears no such sign, with the sign that data have changed since:
/// nothing else of a drawing depends on that.
DrawingRecord with_out_of_date_sign(Session& session, const Chart& chart,
                                    const DrawingRecord& drawing);

}  // namespace tavlo
