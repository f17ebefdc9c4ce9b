// Automatic limits of the axes.
#pragma once

#include "project/session.h"

namespace tavlo {

/// Sets the limits of both axes from the data sets that the chart shows, where
/// the automatic flags are on. Only rows with failures count; without any the
/// limits stay. A failure is reported and leaves the limits of that axis.
void SetAutoScale(Session& session, Chart& chart);

}  // namespace tavlo
