// Recent files: the last ten project files, the newest first, and how a file is named where
// there is little room.
#pragma once

#include <string>

#include "project/settings.h"

namespace tavlo {

/// Puts the file at place 1; it stands in the list once, and the last of ten goes.
void add_recent_file(Settings& settings, const std::string& path);

/// The name of a file with as much of its folder as 40 characters hold, or none.
std::string short_file_name(const std::string& path);

/// The name of a file without its folder.
std::string bare_file_name(const std::string& path);

/// The same without its ending: what data from it are called.
std::string file_title(const std::string& path);

}  // namespace tavlo
