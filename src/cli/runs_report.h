// RunsReport on the command line: how far the answers of planned runs spread.
#pragma once

#include "analyses/planned_runs.h"

namespace tavlo::cli {

/// One JSON object on a line.
void print_runs_json(const RunPlan& plan, const RunsReport& report);

/// A table a fit.
void print_runs_table(const RunPlan& plan, const RunsReport& report);

}  // namespace tavlo::cli
