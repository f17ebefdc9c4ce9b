// Replacing a file of the person's: what it held until then is kept beside it, under its
// name and "~". The one way in which projects and exported data are written.
#pragma once

#include "ports/file_system.h"

namespace tavlo {

/// On any failure the file is as it was.
FileResult replace_keeping_former(FileSystem& files, const std::string& path,
                                  std::string_view bytes);

}  // namespace tavlo
