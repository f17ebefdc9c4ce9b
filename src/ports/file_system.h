// FileSystem: the few things that the program does with files. Every failure
// is a value with words for the user; nothing here throws.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tavlo {

enum class FileFault {
  none,
  not_found,
  not_a_regular_file,
  no_permission,
  too_large,
  disk_full,
  device_error
};

struct FileResult {
  FileFault fault = FileFault::none;
  std::string message;  ///< what is wrong, in the user's words; empty on success
  explicit operator bool() const { return fault == FileFault::none; }
};

class FileSystem {
 public:
  virtual ~FileSystem() = default;

  /// Reads a regular file whole into `bytes`, at most `limit` bytes.
  virtual FileResult read_whole(const std::string& path, std::uint64_t limit,
                                std::string& bytes) = 0;

  /// Writes beside the target, flushes and renames: on any failure the old
  /// file is whole.
  virtual FileResult write_whole(const std::string& path, std::string_view bytes) = 0;

  virtual bool exists(const std::string& path) = 0;
};

}  // namespace tavlo
