// RunsLog: the report of planned runs in the log.
#pragma once

#include "analyses/planned_runs.h"
#include "project/session.h"

namespace tavlo {

/// How many runs were made and, for each fit, how many of them it answers and a table of how
/// far its parameters, B-lives and r squared spread, beside what the sampled life has.
void log_runs(Session& session, const RunPlan& plan, const RunsReport& report);

}  // namespace tavlo
