// Preview: how a chart would look that a person is still working on.
#pragma once

#include "chart/record/drawing_record.h"
#include "project/session.h"

namespace tavlo {

/// Sets the automatic limits of `chart`, which need not be one of the session's,
/// and composes it. What fails is left out of the drawing and told to nobody: the
/// person hasn't finished.
DrawingRecord preview_chart(Session& session, Chart& chart);

}  // namespace tavlo
