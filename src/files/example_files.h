// Example files: the data that come with the program, wherever it was installed or built.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ports/host.h"

namespace tavlo {

/// The paths of the examples by name: data alone, which are opened as a project without a
/// file, so that no save can replace one. Empty where they were not installed.
std::vector<std::string> example_files(Host& host, FileSystem& files);

/// The folder of the sample library; nothing where it was not installed.
std::optional<std::string> sample_library(Host& host, FileSystem& files);

}  // namespace tavlo
