// Library list: the libraries that a person has, in a file of the settings folder that holds
// the name of a folder on each line.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ports/file_system.h"

namespace tavlo {

/// The folders in the order of the file; none without a file. A line that names a file counts
/// as its folder.
std::vector<std::string> read_library_list(FileSystem& files, const std::string& ini_folder);

/// The last folder of the list that has a library in it: the one to open at the start.
std::optional<std::string> last_library(FileSystem& files, const std::vector<std::string>& list);

/// Makes a folder the last of the list.
FileResult remember_library(FileSystem& files, const std::string& ini_folder,
                            const std::string& folder);

}  // namespace tavlo
