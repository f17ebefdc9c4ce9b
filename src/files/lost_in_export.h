// Lost in export: what a data file can't hold of a data set and of its fits, in plain words,
// so that nobody takes an export for a save.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "project/project.h"

namespace tavlo {

/// What is lost of data set `set`, from 1, in the data notation: "comments", "2 fits" ...; empty
/// when nothing is. Looks and the log are not counted: no data file has a place for them.
std::vector<std::string> lost_in_notation(const Project& project, int set = 1);

/// The same in separated text.
std::vector<std::string> lost_in_separated_text(const Project& project, int set = 1);

/// Whether there is any row in what was made for export: one without any could only take the
/// place of an old file that has some.
bool holds_rows(std::string_view bytes, bool is_separated_text);

}  // namespace tavlo
