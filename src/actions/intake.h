// Intake: brings the records in step with a changed sheet before anything is
// calculated from them.
#pragma once

#include "project/session.h"

namespace tavlo {

/// Ends a pending edit, reads and ranks the rows if they have changed, answers the requests
/// of the existing fits anew, and lists short data sets in the log. `clean` comes back true
/// when nothing had to be done. False, after a box, when a cell can't be read: there is
/// nothing to calculate from then.
bool CheckDirtyData(Session& session, int data_index, bool& clean);

/// The action of the panel's button: intake, fit, report, and of a fit that is new to its set
/// the table of all of them. Does nothing while busy; without a model it asks for one in the
/// log.
void CheckAndFit(Session& session, int fit_index);

}  // namespace tavlo
