// FileSystem: the few things that the program does with files. Every failure
// is a value with words for the user; nothing here throws.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tavlo {

enum class FileFault {
  none,
  not_found,
  not_a_regular_file,
  not_a_folder,
  exists_already,
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

struct FileFacts {
  std::uint64_t size = 0;         ///< in bytes
  double seconds_since_1970 = 0;  ///< of the last change, in universal time
  bool is_folder = false;
  bool is_own = true;         ///< belongs to the person who runs the program
  bool is_read_only = false;  ///< may not be written by that person
};

/// The most bytes that are read of a file whose first few thousand are `start`.
using SizeLimit = std::function<std::uint64_t(std::string_view start)>;

class FileSystem {
 public:
  virtual ~FileSystem() = default;

  /// Reads a regular file whole into `bytes`, where it is no larger than such a file may be.
  virtual FileResult read_whole(const std::string& path, const SizeLimit& limit,
                                std::string& bytes) = 0;

  /// The same, at most `limit` bytes whatever stands in it.
  FileResult read_whole(const std::string& path, std::uint64_t limit, std::string& bytes) {
    return read_whole(
        path, [limit](std::string_view) { return limit; }, bytes);
  }

  /// Writes beside the target, flushes and renames: on any failure the old
  /// file is whole.
  virtual FileResult write_whole(const std::string& path, std::string_view bytes) = 0;

  /// The same for files of the person's; what the file held until then is kept as `path~`, in
  /// place of what was kept there before. On any failure both are as they were.
  virtual FileResult write_keeping_former(const std::string& path, std::string_view bytes) = 0;

  /// Writes a file that must not exist yet. On any other failure there is none afterwards.
  virtual FileResult create_new(const std::string& path, std::string_view bytes) = 0;

  /// Writes a file that must not exist yet and removes it: whether that can be done. What
  /// stands there already is not touched. Nothing need reach the disk.
  virtual FileResult try_out(const std::string& path, std::string_view bytes) = 0;

  /// Writes behind the end of a file, or makes it. On any failure the file ends
  /// where it did.
  virtual FileResult append(const std::string& path, std::string_view bytes) = 0;

  /// Removes a file; a folder is refused.
  virtual FileResult remove(const std::string& path) = 0;

  /// Lets the person who runs the program write the file. A file of someone else's is refused.
  virtual FileResult make_writable(const std::string& path) = 0;

  /// Makes the folder and those above it, for this person alone: the program keeps copies
  /// of projects in them. All is well when it stands already, and it stays as it is.
  virtual FileResult make_folder(const std::string& path) = 0;

  /// The names of the files and folders in a folder, in ascending order.
  virtual FileResult list_folder(const std::string& path, std::vector<std::string>& names) = 0;

  virtual FileResult look_up(const std::string& path, FileFacts& facts) = 0;

  virtual bool exists(const std::string& path) = 0;
};

}  // namespace tavlo
