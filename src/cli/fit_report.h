// Fit report: what `fit` prints for one file, as a table for people or as JSON.
#pragma once

#include <string>
#include <vector>

#include "cli/arguments.h"
#include "cli/fitting.h"

namespace tavlo::cli {

/// Names of the two parameters of a family, for JSON and for people.
struct ParameterNames {
  const char* first_key;
  const char* second_key;
  const char* first_heading;
  const char* second_heading;
};
const ParameterNames& parameter_names(Family family);

/// All that is told of one file.
struct FitReport {
  std::string file;
  const FitArguments& arguments;
  Session& session;
  const CliPrompts& prompts;
  const std::vector<FitOutcome>& outcomes;
};

/// One JSON object without a line end.
std::string fit_json(const FitReport& report);

/// Lines with a table for each family among the fits.
std::string fit_table(const FitReport& report);

}  // namespace tavlo::cli
