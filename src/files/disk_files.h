// DiskFiles: the files of the computer, for every front end that runs outside a
// test. Only regular files are read: a folder, a pipe or a device is refused
// before it is opened, so nothing hangs or runs without end.
#pragma once

#include "ports/file_system.h"

namespace tavlo {

/// The largest file that is read as data.
inline constexpr std::uint64_t largest_data_file = std::uint64_t{256} << 20;

class DiskFiles : public FileSystem {
 public:
  FileResult read_whole(const std::string& path, std::uint64_t limit, std::string& bytes) override;

  /// Writes a new file in the target's folder, flushes it to the disk and gives
  /// it the target's name. Permissions of an old file are kept; a link stays and
  /// the file that it names is replaced.
  FileResult write_whole(const std::string& path, std::string_view bytes) override;

  bool exists(const std::string& path) override;
};

/// The words for "more than `limit` bytes".
FileResult too_large(std::uint64_t limit);

}  // namespace tavlo
