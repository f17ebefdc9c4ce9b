// Fit groups: a table of many data sets, told apart by one column, and an answer for each. The
// rows stand in memory once; groups are fitted on all cores and told in the order in which they
// came first.
#pragma once

#include "cli/arguments.h"
#include "cli/exit_code.h"

namespace tavlo::cli {

/// `arguments.by` names the column.
ExitCode fit_groups(const FitArguments& arguments);

}  // namespace tavlo::cli
