// Scale choice: an axis gets another kind of scale.
#pragma once

#include "project/chart_records.h"

namespace tavlo {

/// Gives the axis (0 is X, 1 is Y) the scale of `code`, see life/models.h. Limits
/// that have no place on the new scale become the factory's.
void choose_scale(ChartAxis& axis, int code);

/// Whether a limit may be stored for a scale: it has a place there, or is the 1 of a
/// probability, which is held just below.
bool is_limit(int code, double value);

}  // namespace tavlo
