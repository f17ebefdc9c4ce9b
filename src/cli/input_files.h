// Input files: the files that are named on the command line, whatever program they come from:
// projects, data files of other programs, and texts with data. What a file is shows in its
// content. Whatever gives bytes is read: files, pipes, standard input.
#pragma once

#include <optional>
#include <string>

#include "cli/arguments.h"
#include "files/point_list.h"
#include "project/project.h"

namespace tavlo::cli {

struct InputFile {
  enum class Kind {
    text,     ///< one data set without a name
    foreign,  ///< data sets without names of another program, with fits to be made
    project
  };
  Kind kind = Kind::text;
  DataRows rows;         ///< of a text
  Project project;       ///< of any other: each data set has its fits at its place
  bool is_utf8 = false;  ///< it says so at its beginning

  int sets() const { return kind == Kind::text ? 1 : project.data.bound(); }
};

/// Reads FILE ("-" is standard input), which must have the data set that is asked for. What
/// is wrong, as "FILE:LINE: what" or "FILE: what", when that can't be done.
std::optional<std::string> read_file(const CommonArguments& common, const std::string& file,
                                     InputFile& input);

}  // namespace tavlo::cli
