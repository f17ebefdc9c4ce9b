// Chart tips: what a part of a chart is and what can be done with it, for the person whose
// pointer rests there.
#pragma once

#include <QString>

#include "workspace/chart/chart_stage.h"

namespace tavlo {

/// The tool tip of a pixel; empty where there is nothing to say.
QString chart_tip(ChartStage& stage, const QPointF& at);

}  // namespace tavlo
