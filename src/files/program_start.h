// Program start: runs another program on its own, as a desktop does. It gets neither
// this program's open files nor its signals nor its terminal, and leaves no trace here
// when it ends.
#pragma once

#include <string>
#include <vector>

#include "ports/file_system.h"

namespace tavlo {

/// Starts the program at `path`. A fault when the system refuses to run it.
FileResult start_on_its_own(const std::string& path, const std::vector<std::string>& arguments);

}  // namespace tavlo
