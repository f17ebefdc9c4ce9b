// Path test: whether a folder is there and files can be made in it, found by making one.
// A file or link that stands there already is never touched, whatever its name.
#pragma once

#include <string>

#include "files/path_system.h"
#include "ports/file_system.h"

namespace tavlo {

struct PathWorld {
  FileSystem& files;
  Environment environment;
  const PathSystem& system;
};

struct PathTest {
  bool exists = false;
  bool writable = false;
};

/// Brings `path` to its normal form and, unless `skip`, tests it. Both answers are false
/// for an empty path. What fails on the way is not told: the path is then not writable.
PathTest fn_PathTest(const PathWorld& world, std::string& path, bool skip = false);

}  // namespace tavlo
