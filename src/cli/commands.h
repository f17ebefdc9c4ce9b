// Commands: what tavlo-cli does once its arguments are understood. Results go to standard
// output, messages to standard error; a file that fails does not keep the others from being
// done.
#pragma once

#include "cli/arguments.h"

namespace tavlo::cli {

ExitCode run(const FitArguments& arguments);
ExitCode run(const RankArguments& arguments);
ExitCode run(const CompareArguments& arguments);
ExitCode run(const ChartArguments& arguments);
ExitCode run(const ReportArguments& arguments);
ExitCode run(const ConvertArguments& arguments);
ExitCode run(const BatchArguments& arguments);
ExitCode run(const SampleArguments& arguments);

}  // namespace tavlo::cli
