// RunsRecords: the parameters that planned runs gave as records of the project. Each of a fit
// becomes a data set with a row a run, and those of one name stand on one chart.
#pragma once

#include "analyses/planned_runs.h"
#include "project/session.h"

namespace tavlo {

/// The most rows that the sets of one test have together. The sheets, their samples and a step
/// of the history hold them all.
inline constexpr std::size_t most_run_rows = 1'000'000;

/// Adds the data sets, with a fit set each, and the charts. Where the values are more than
/// `most_rows`, each set holds as many of its own, evenly spaced in their order; log and charts
/// say so.
void add_run_records(Session& session, const RunPlan& plan, const RunsReport& report,
                     std::size_t most_rows = most_run_rows);

}  // namespace tavlo
