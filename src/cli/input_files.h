// Input files: the data sets that are named on the command line, brought into a
// session and ranked.
#pragma once

#include <optional>
#include <string>

#include "cli/arguments.h"
#include "project/session.h"

namespace tavlo::cli {

/// Reads FILE into data set 1 of the session and ranks it. What is wrong, as
/// "FILE:LINE: what" or "FILE: what", when that can't be done.
std::optional<std::string> load_data(Session& session, const CommonArguments& common,
                                     const std::string& file);

}  // namespace tavlo::cli
