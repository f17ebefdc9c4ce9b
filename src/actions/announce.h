// Announcement: when an action is over, the windows are told what it has changed, each thing
// once. What that is follows from comparing with what they were told last, so that no action
// can forget to say it or say it twice.
#pragma once

#include "project/session.h"

namespace tavlo {

/// Tells the windows what of the project is another than they know: records, sheets, grids
/// of fits, charts that show anything of it, the log. Limits of charts that follow the data
/// are set before.
void announce(Session& session);

}  // namespace tavlo
