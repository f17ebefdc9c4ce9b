#include "files/disk_files.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <limits>
#include <memory>
#include <optional>
#include <utility>

namespace tavlo {

namespace {

/// A file descriptor that closes itself.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() { close_now(); }
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }

  int number() const { return number_; }
  explicit operator bool() const { return number_ >= 0; }

  /// False when the system reports a write that failed late.
  bool close_now() {
    const int number = number_;
    number_ = -1;
    return number < 0 || ::close(number) == 0;
  }

 private:
  int number_;
};

FileFault fault_of(int error) {
  switch (error) {
    case ENOENT:
    case ENOTDIR: return FileFault::not_found;
    case EACCES:
    case EPERM:
    case EROFS: return FileFault::no_permission;
    case ENOSPC:
    case EDQUOT: return FileFault::disk_full;
    case EFBIG: return FileFault::too_large;
    case EISDIR: return FileFault::not_a_regular_file;
    case EEXIST: return FileFault::exists_already;
    default: return FileFault::device_error;
  }
}

FileResult system_fault(const char* prefix, int error) {
  if (error == ELOOP) return {FileFault::device_error, "this link leads back to itself"};
  switch (fault_of(error)) {
    case FileFault::not_found: return {FileFault::not_found, "there is no such file or folder"};
    case FileFault::no_permission:
      return {FileFault::no_permission, std::string(prefix) + " is not permitted"};
    case FileFault::disk_full: return {FileFault::disk_full, "the disk is full"};
    case FileFault::exists_already:
      return {FileFault::exists_already, "there is a file or folder of this name already"};
    default: break;
  }
  return {fault_of(error), std::string(prefix) + " failed: " + std::strerror(error)};
}

const char* kind_words(mode_t mode) {
  if (S_ISDIR(mode)) return "this is a folder, not a file";
  if (S_ISFIFO(mode)) return "this is a pipe, not a file";
  if (S_ISSOCK(mode)) return "this is a socket, not a file";
  return "this is a device, not a file";
}

FileResult require_regular(const struct stat& status) {
  if (S_ISREG(status.st_mode)) return {};
  return {FileFault::not_a_regular_file, kind_words(status.st_mode)};
}

FileResult status_of(const std::string& path, struct stat& status) {
  return ::stat(path.c_str(), &status) == 0 ? FileResult() : system_fault("reading", errno);
}

/// Opens a file for reading that the path was seen to be. Without waiting: it may
/// have become a pipe meanwhile.
Descriptor open_regular(const std::string& path, FileResult& result) {
  struct stat status {};
  result = status_of(path, status);
  if (result) result = require_regular(status);
  if (!result) return Descriptor(-1);
  Descriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  if (!file) result = system_fault("reading", errno);
  return file;
}

/// Reads the first bytes of a stream, less where it ends.
FileResult read_start(int file, std::string& bytes) {
  constexpr std::size_t enough = 4096;
  bytes.resize(enough);
  for (std::size_t filled = 0;;) {
    const ssize_t got = ::read(file, bytes.data() + filled, enough - filled);
    if (got < 0) return system_fault("reading", errno);
    filled += static_cast<std::size_t>(got);
    if (got > 0 && filled < enough) continue;
    bytes.resize(filled);
    return {};
  }
}

/// So that the byte that shows a file to be too large still has a number.
constexpr std::uint64_t longest_text = std::numeric_limits<std::ptrdiff_t>::max() / 2;

/// Reads to the end behind what `bytes` holds, at most `limit` bytes in all. `expected` makes
/// room at the start.
FileResult read_to_end(int file, std::size_t expected, std::uint64_t limit, std::string& bytes) {
  const std::size_t most = static_cast<std::size_t>(std::min(limit, longest_text)) + 1;
  std::size_t filled = bytes.size();
  if (filled > limit) return too_large(limit);
  bytes.resize(std::min(std::max(expected, filled) + 1, most));  // one more shows the end
  for (;;) {
    const ssize_t got = ::read(file, bytes.data() + filled, bytes.size() - filled);
    if (got < 0) return system_fault("reading", errno);
    filled += static_cast<std::size_t>(got);
    if (filled > limit) return too_large(limit);
    if (got == 0) break;
    if (filled == bytes.size()) bytes.resize(std::min(filled * 2, most));  // it grows meanwhile
  }
  bytes.resize(filled);
  return {};
}

/// A pipe that never ends would be read for as long as a project may be.
FileResult require_source_of(const StreamLimit& limit, const struct stat& status) {
  FileResult result = limit.is_project ? require_regular(status) : FileResult();
  if (!result) result.message = "a project is read from a file only; " + result.message;
  return result;
}

/// The part of a read that does not depend on the path.
FileResult read_open_file(int file, const LimitOfStream& limit_of, std::string& bytes) {
  bytes.clear();
  struct stat status {};
  if (::fstat(file, &status) != 0) return system_fault("reading", errno);
  if (S_ISDIR(status.st_mode)) return {FileFault::not_a_regular_file, kind_words(status.st_mode)};
  FileResult result = read_start(file, bytes);
  const StreamLimit limit = limit_of(bytes);
  if (result) result = require_source_of(limit, status);
  const bool sized = S_ISREG(status.st_mode);
  constexpr std::size_t step = std::size_t{1} << 16;
  const std::size_t expected = sized ? static_cast<std::size_t>(status.st_size) : step;
  if (result && sized && expected > limit.bytes) result = too_large(limit.bytes);
  if (result) result = read_to_end(file, expected, limit.bytes, bytes);
  if (!result) std::string().swap(bytes);
  return result;
}

FileResult write_all(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t put = ::write(file, bytes.data(), bytes.size());
    if (put < 0 && errno == EINTR) continue;
    if (put < 0) return system_fault("writing", errno);
    bytes.remove_prefix(static_cast<std::size_t>(put));
  }
  return {};
}

/// True as well where the file system knows no flushing: nothing failed to be written.
bool flush(int file) {
  return ::fsync(file) == 0 || errno == EINVAL || errno == ENOTSUP || errno == ENOSYS;
}

FileResult flush_and_close(Descriptor& file) {
  if (!flush(file.number()) || !file.close_now()) return system_fault("writing", errno);
  return {};
}

FileResult copy_all(int from, int to) {
  std::string part(std::size_t{1} << 16, '\0');
  for (;;) {
    const ssize_t got = ::read(from, part.data(), part.size());
    if (got == 0) return {};
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return system_fault("reading", errno);
    const std::string_view filled(part.data(), static_cast<std::size_t>(got));
    if (FileResult written = write_all(to, filled); !written) return written;
  }
}

std::string folder_of(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

using Status = struct stat;

/// A file to be written, behind all links.
struct Target {
  std::string path;
  bool is_dangling = false;   ///< a link names it, and it is not there
  std::optional<Status> old;  ///< of the file that is there
};

/// The place behind links, also where the last one names what is not there: a link stays one.
FileResult go_behind_links(Target& target) {
  for (;;) {  // a ring of links is a fault of realpath
    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(target.path.c_str(), nullptr),
                                                           &std::free);
    if (real) target.path = real.get();
    if (real) return {};
    if (errno != ENOENT) return system_fault("writing", errno);
    std::string next(PATH_MAX, '\0');
    const ssize_t size = ::readlink(target.path.c_str(), next.data(), next.size());
    if (size < 0) return {};
    next.resize(static_cast<std::size_t>(size));
    target.path = next.starts_with('/') ? next : folder_of(target.path) + "/" + next;
    target.is_dangling = true;
  }
}

/// The mask can only be read by setting it, for all threads: that is done once, at the
/// start, where no other thread can make a file meanwhile.
mode_t read_mask() {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return mask;
}
const mode_t mask_at_start = read_mask();

/// Permissions of the old file, or those that a new file gets.
mode_t wanted_mode(const std::optional<struct stat>& old) {
  return old ? old->st_mode & 07777 : static_cast<mode_t>(0666) & ~mask_at_start;
}

/// A rename needs leave of the folder only; a file that is itself protected is
/// refused here.
FileResult require_replaceable(const std::string& path, const struct stat& old) {
  if (FileResult regular = require_regular(old); !regular) return regular;
  if (::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0)
    return system_fault("writing", errno);
  return {};
}

/// Where a path leads to, if what stands there may be replaced.
FileResult find(Target& target) {
  if (FileResult found = go_behind_links(target); !found) return found;
  Status status{};
  if (::stat(target.path.c_str(), &status) != 0)
    return errno == ENOENT ? FileResult() : system_fault("writing", errno);
  target.old = status;
  return require_replaceable(target.path, status);
}

/// A name that nobody types: files of this form are removed when they are left behind.
constexpr std::string_view beside_start = ".tavlo-save-";
constexpr std::string_view beside_letters = "XXXXXX";
constexpr std::string_view beside_end = ".tmp~";

/// Makes a file of a new name in the folder and locks it. Another program's sweep may
/// take the file in the moment between: then the next name is tried. Without success
/// the descriptor is empty and errno says why. A folder without locks goes unlocked.
Descriptor make_locked(const std::string& folder, std::string& name) {
  constexpr int most_attempts = 20;
  for (int attempt = 0; attempt < most_attempts; ++attempt) {
    name = folder + "/";
    name.append(beside_start).append(beside_letters).append(beside_end);
    Descriptor file(::mkostemps(name.data(), static_cast<int>(beside_end.size()), O_CLOEXEC));
    if (!file) return file;
    ::flock(file.number(), LOCK_EX);
    struct stat status {};
    if (::fstat(file.number(), &status) == 0 && status.st_nlink > 0) return file;
  }
  return Descriptor(-1);
}

/// A file beside the target that vanishes unless it is given the target's name. It is
/// locked from its making to the renaming: a lock that can be had shows that the
/// program which made the file has ended.
class FileBeside {
 public:
  explicit FileBeside(const std::string& folder)
      : file_(make_locked(folder, name_)),
        error_(errno),
        lock_(file_ ? ::fcntl(file_.number(), F_DUPFD_CLOEXEC, 0) : -1) {}
  ~FileBeside() {
    if (exists_) ::unlink(name_.c_str());
  }
  FileBeside(const FileBeside&) = delete;
  FileBeside& operator=(const FileBeside&) = delete;

  FileResult fill(std::string_view bytes, mode_t mode) {
    FileResult result = open_for(mode);
    if (result) result = write_all(file_.number(), bytes);
    return result ? flush_and_close(file_) : result;
  }

  /// The bytes of another file, with its permissions and time.
  FileResult fill_from(int from) {
    Status status{};
    if (::fstat(from, &status) != 0) return system_fault("reading", errno);
    FileResult result = open_for(status.st_mode & 07777);
    if (result) result = copy_all(from, file_.number());
    if (!result) return result;
    const timespec times[] = {status.st_atim, status.st_mtim};
    ::futimens(file_.number(), times);  // a file system that keeps no times harms nothing
    return flush_and_close(file_);
  }

  /// Becomes another name of a file that stands. Not every folder can.
  bool become_name_of(const std::string& path) {
    if (exists_) ::unlink(name_.c_str());
    exists_ = exists_ && ::link(path.c_str(), name_.c_str()) == 0;
    return exists_;
  }

  /// Where the target is the same file by another name already, both names stay: this one goes
  /// with the object.
  FileResult rename_to(const std::string& target) {
    if (std::rename(name_.c_str(), target.c_str()) != 0) return system_fault("writing", errno);
    return {};
  }

 private:
  /// A file system without permissions refuses them; the file is this person's alone until then.
  FileResult open_for(mode_t mode) {
    if (!file_) return system_fault("writing in this folder", error_);
    ::fchmod(file_.number(), mode);
    return {};
  }

  std::string name_;
  Descriptor file_;
  int error_;
  Descriptor lock_;  ///< keeps the lock when the file is closed
  bool exists_ = static_cast<bool>(file_);
};

bool is_beside_name(std::string_view name) {
  return name.starts_with(beside_start) && name.ends_with(beside_end) &&
         name.size() == beside_start.size() + beside_letters.size() + beside_end.size();
}

/// True for a file of this person that no living program holds. Where locks are unknown,
/// age tells.
bool is_left_behind(int file) {
  struct stat status {};
  if (::fstat(file, &status) != 0 || !S_ISREG(status.st_mode)) return false;
  if (status.st_uid != ::geteuid()) return false;
  if (::flock(file, LOCK_EX | LOCK_NB) == 0) return true;
  constexpr std::time_t old_age = 3600;  // seconds
  return errno != EWOULDBLOCK && std::time(nullptr) - status.st_mtime > old_age;
}

struct FolderCloser {
  void operator()(DIR* open) const { ::closedir(open); }
};
using FolderEntries = std::unique_ptr<DIR, FolderCloser>;

FolderEntries open_folder(const std::string& path) {
  return FolderEntries(::opendir(path.c_str()));
}

/// Removes what killed programs left in mid-write. Whatever can't be removed stays.
void sweep(const std::string& folder) {
  const FolderEntries entries = open_folder(folder);
  if (!entries) return;
  while (const dirent* const entry = ::readdir(entries.get())) {
    if (!is_beside_name(entry->d_name)) continue;
    constexpr int flags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    const Descriptor file(::openat(::dirfd(entries.get()), entry->d_name, flags));
    if (file && is_left_behind(file.number())) ::unlinkat(::dirfd(entries.get()), entry->d_name, 0);
  }
}

/// Makes a rename last through a power cut. A file system that can't is no
/// reason to call the save failed.
void flush_folder(const std::string& folder) {
  const Descriptor directory(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (directory) ::fsync(directory.number());
}

/// In a folder with the sticky bit nobody can remove a name of another person's file.
bool can_remove_names_of(const std::string& path) {
  Status file{}, folder{};
  if (::lstat(path.c_str(), &file) != 0) return false;
  if (::stat(folder_of(path).c_str(), &folder) != 0) return false;
  return file.st_uid == ::geteuid() || (folder.st_mode & S_ISVTX) == 0;
}

/// What a file holds, kept beside it: by a second name of the file, as that needs no room;
/// where there can be none, or none that could be removed again, in a second file.
class Kept {
 public:
  FileResult keep(const std::string& path) {
    FileResult result;
    from_ = open_regular(path, result);
    if (from_) ::flock(from_.number(), LOCK_EX | LOCK_NB);  // for its second name
    beside_.emplace(folder_of(path));
    if (can_remove_names_of(path) && beside_->become_name_of(path)) return {};
    if (!result) return result;
    beside_.emplace(folder_of(path));
    return beside_->fill_from(from_.number());
  }

  FileResult rename_to(const std::string& path) { return beside_->rename_to(path); }

 private:
  Descriptor from_{-1};
  std::optional<FileBeside> beside_;
};

/// What a file holds, kept under its name and "~" while another one takes its place. What was
/// kept there before stays until that is done.
class Former {
 public:
  explicit Former(const std::string& target) : target_(target) {}

  FileResult keep() {
    FileResult result = copy_.keep(target_);
    if (result) result = replace_earlier();
    if (!result)
      result.message = "the former file can't be kept as " + name_ + ": " + result.message;
    return result;
  }

  /// As if nothing had been kept. False where what was kept before can't be had back.
  bool take_back() {
    if (had_earlier_) return static_cast<bool>(earlier_.rename_to(name_));
    return ::unlink(name_.c_str()) == 0;
  }

  const std::string& name() const { return name_; }

 private:
  FileResult replace_earlier() {
    Status earlier{};
    had_earlier_ = ::lstat(name_.c_str(), &earlier) == 0;
    if (had_earlier_ && ::stat(name_.c_str(), &earlier) == 0)
      if (FileResult fine = require_replaceable(name_, earlier); !fine) return fine;
    if (had_earlier_)
      if (FileResult kept = earlier_.keep(name_); !kept) return kept;
    return copy_.rename_to(name_);
  }

  std::string target_;
  std::string name_ = target_ + "~";
  Kept copy_;
  Kept earlier_;
  bool had_earlier_ = false;
};

/// Fills a file beside what the path names, which `put` is to give its name.
template <class Put>
FileResult replace(const std::string& path, std::string_view bytes, Put put) {
  Target target{path, false, {}};
  FileResult result = find(target);
  if (result) {
    const std::string folder = folder_of(target.path);
    sweep(folder);
    FileBeside next(folder);
    result = next.fill(bytes, wanted_mode(target.old));
    if (result) result = put(next, target);
    if (result) flush_folder(folder);
  }
  if (!result && target.is_dangling)
    result.message = "this is a link to " + target.path + ": " + result.message;
  return result;
}

bool is_folder(const std::string& path) {
  Status status{};
  return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

FileResult not_a_folder() { return {FileFault::not_a_folder, "this is a file, not a folder"}; }

}  // namespace

FileResult too_large(std::uint64_t limit) {
  return {FileFault::too_large,
          "the file is too large (at most " + std::to_string(limit >> 20) + " MiB)"};
}

std::string name_of_former(const std::string& path) {
  Target target{path, false, {}};
  go_behind_links(target);
  return target.path + "~";
}

FileResult DiskFiles::read_whole(const std::string& path, const SizeLimit& limit,
                                 std::string& bytes) {
  FileResult opened;
  const Descriptor file = open_regular(path, opened);
  const auto limit_of = [&limit](std::string_view start) { return StreamLimit{limit(start)}; };
  return opened ? read_open_file(file.number(), limit_of, bytes) : opened;
}

FileResult read_stream(int descriptor, const LimitOfStream& limit, std::string& bytes) {
  return read_open_file(descriptor, limit, bytes);
}

FileResult read_stream(const std::string& path, const LimitOfStream& limit, std::string& bytes) {
  const Descriptor file(::open(path.c_str(), O_RDONLY | O_NOCTTY | O_CLOEXEC));
  return file ? read_stream(file.number(), limit, bytes) : system_fault("reading", errno);
}

FileResult DiskFiles::write_whole(const std::string& path, std::string_view bytes) {
  return replace(path, bytes, [](FileBeside& next, const Target& target) {
    return next.rename_to(target.path);
  });
}

FileResult DiskFiles::write_keeping_former(const std::string& path, std::string_view bytes) {
  return replace(path, bytes, [](FileBeside& next, const Target& target) {
    if (!target.old) return next.rename_to(target.path);
    Former former(target.path);
    FileResult result = former.keep();
    if (!result) return result;
    result = next.rename_to(target.path);
    if (!result && !former.take_back())
      result.message += "; " + former.name() + " now holds the same as the file";
    return result;
  });
}

FileResult DiskFiles::create_new(const std::string& path, std::string_view bytes) {
  Descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
  if (!file) return system_fault("writing", errno);
  FileResult result = write_all(file.number(), bytes);
  if (result) result = flush_and_close(file);
  if (!result) ::unlink(path.c_str());
  return result;
}

FileResult DiskFiles::try_out(const std::string& path, std::string_view bytes) {
  constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
  Descriptor file(::open(path.c_str(), flags, 0600));
  if (!file) return system_fault("writing", errno);
  FileResult result = write_all(file.number(), bytes);
  if (!file.close_now() && result) result = system_fault("writing", errno);
  const FileResult removed = remove(path);
  return result ? removed : result;
}

FileResult DiskFiles::append(const std::string& path, std::string_view bytes) {
  struct stat status {};
  if (::stat(path.c_str(), &status) == 0)
    if (FileResult regular = require_regular(status); !regular) return regular;
  constexpr int flags = O_WRONLY | O_CREAT | O_APPEND | O_NONBLOCK | O_CLOEXEC;
  Descriptor file(::open(path.c_str(), flags, 0666));
  if (!file) return system_fault("writing", errno);
  ::flock(file.number(), LOCK_EX);
  if (::fstat(file.number(), &status) != 0) return system_fault("writing", errno);
  FileResult result = write_all(file.number(), bytes);
  if (!result && ::ftruncate(file.number(), status.st_size) != 0)
    result.message += "; the file ends in the middle of what was to be added";
  if (result && !file.close_now()) result = system_fault("writing", errno);
  return result;
}

FileResult DiskFiles::remove(const std::string& path) {
  struct stat status {};
  const bool found = ::lstat(path.c_str(), &status) == 0;
  if (found && S_ISDIR(status.st_mode)) return require_regular(status);
  return ::unlink(path.c_str()) == 0 ? FileResult() : system_fault("removing", errno);
}

FileResult DiskFiles::make_folder(const std::string& path) {
  for (std::size_t end = 1; end != std::string::npos && !path.empty();) {
    end = path.find('/', end);
    const std::string part = path.substr(0, end);
    if (end != std::string::npos) ++end;
    if (::mkdir(part.c_str(), 0700) == 0) continue;
    const int error = errno;
    if (is_folder(part)) continue;
    return exists(part) ? not_a_folder() : system_fault("making a folder", error);
  }
  return is_folder(path) ? FileResult() : system_fault("making a folder", ENOENT);
}

FileResult DiskFiles::list_folder(const std::string& path, std::vector<std::string>& names) {
  names.clear();
  struct stat status {};
  if (FileResult found = status_of(path, status); !found) return found;
  if (!S_ISDIR(status.st_mode)) return not_a_folder();
  const FolderEntries entries = open_folder(path);
  if (!entries) return system_fault("reading the folder", errno);
  while (const dirent* const entry = ::readdir(entries.get())) {
    const std::string_view name = entry->d_name;
    if (name != "." && name != ".." && !is_beside_name(name)) names.emplace_back(name);
  }
  std::sort(names.begin(), names.end());
  return {};
}

FileResult DiskFiles::make_writable(const std::string& path) {
  struct stat status {};
  if (FileResult found = status_of(path, status); !found) return found;
  const bool done = ::chmod(path.c_str(), (status.st_mode & 07777) | S_IWUSR) == 0;
  return done ? FileResult() : system_fault("writing", errno);
}

FileResult DiskFiles::look_up(const std::string& path, FileFacts& facts) {
  struct stat status {};
  if (FileResult found = status_of(path, status); !found) return found;
  const timespec& changed = status.st_mtim;
  facts.size = static_cast<std::uint64_t>(status.st_size);
  facts.seconds_since_1970 =
      static_cast<double>(changed.tv_sec) + static_cast<double>(changed.tv_nsec) * 1e-9;
  facts.is_folder = S_ISDIR(status.st_mode);
  facts.is_own = status.st_uid == ::geteuid();
  facts.is_read_only = ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0;
  return {};
}

bool DiskFiles::exists(const std::string& path) { return ::access(path.c_str(), F_OK) == 0; }

}  // namespace tavlo
