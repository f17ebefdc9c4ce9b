// DiskFiles: the files of the computer, for every front end that runs outside a
// test. A window reads regular files only: a folder, a pipe or a device is refused
// before it is opened, so nothing hangs or runs without end. A command line reads
// whatever gives bytes, up to a limit.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "ports/file_system.h"
#include "project/size_limits.h"

namespace tavlo {

class DiskFiles : public FileSystem {
 public:
  using FileSystem::read_whole;
  FileResult read_whole(const std::string& path, const SizeLimit& limit,
                        std::string& bytes) override;

  /// Writes a new file in the target's folder, flushes it to the disk and gives
  /// it the target's name. Permissions of an old file are kept; a link stays and
  /// the file that it names is replaced. Files that an ended program left in the
  /// folder in mid-write are cleared away.
  FileResult write_whole(const std::string& path, std::string_view bytes) override;

  /// The former file keeps permissions and time. That of a link stands beside the file that it
  /// names.
  FileResult write_keeping_former(const std::string& path, std::string_view bytes) override;

  FileResult create_new(const std::string& path, std::string_view bytes) override;

  FileResult try_out(const std::string& path, std::string_view bytes) override;

  /// Appends of several programs to one file follow each other.
  FileResult append(const std::string& path, std::string_view bytes) override;

  FileResult remove(const std::string& path) override;

  FileResult make_writable(const std::string& path) override;

  FileResult make_folder(const std::string& path) override;

  /// Without the files that a save is writing at the moment.
  FileResult list_folder(const std::string& path, std::vector<std::string>& names) override;

  FileResult look_up(const std::string& path, FileFacts& facts) override;
  bool exists(const std::string& path) override;
};

/// What is read of a stream.
struct StreamLimit {
  std::uint64_t bytes = 0;  ///< at the most
  bool is_project = false;  ///< which is read from a regular file only
};

/// The limit of a stream whose first few thousand bytes are `start`.
using LimitOfStream = std::function<StreamLimit(std::string_view start)>;

/// Reads what a path names, if it only gives bytes: a file, a pipe, /dev/stdin.
/// Waits for a pipe's writer. A signal ends it with a fault.
FileResult read_stream(const std::string& path, const LimitOfStream& limit, std::string& bytes);

/// The same of an open file, as standard input.
FileResult read_stream(int descriptor, const LimitOfStream& limit, std::string& bytes);

/// Where the former file is kept when this one is replaced: beside the file behind all links.
std::string name_of_former(const std::string& path);

/// The words for "more than `limit` bytes".
FileResult too_large(std::uint64_t limit);

}  // namespace tavlo
