// PlannedTest: a test planned before it is made, as a person meets it: the sample is drawn and
// fitted many times, and how far the answers spread is told.
#pragma once

#include "analyses/planned_runs.h"
#include "project/session.h"

namespace tavlo {

/// Makes the runs of a plan (its first run is the sample already in the project) and puts what
/// came of them behind what the project holds: tables in the log, and for the parameters data
/// sets and charts. It is part of the step of the command at work. Escape
/// (Progress::stop_wanted) ends it with the runs made so far. The windows stay alive meanwhile,
/// so they are told first what the command has changed until then. `random` is left behind the
/// last run made.
void make_planned_test(Session& session, const RunPlan& plan, WichmannHill& random);

}  // namespace tavlo
