// Input files: the data that are named on the command line. Whatever gives bytes is read:
// files, pipes, standard input.
#pragma once

#include <optional>
#include <string>

#include "cli/arguments.h"
#include "files/point_list.h"

namespace tavlo::cli {

/// Reads FILE ("-" is standard input) into `data`. What is wrong, as "FILE:LINE: what" or
/// "FILE: what", when that can't be done.
std::optional<std::string> read_rows(const CommonArguments& common, const std::string& file,
                                     DataRows& data);

}  // namespace tavlo::cli
