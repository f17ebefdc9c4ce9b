#include "files/disk_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>

namespace tavlo {

namespace {

/// A file descriptor that closes itself.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() { close_now(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

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
    default: return FileFault::device_error;
  }
}

FileResult system_fault(const char* prefix, int error) {
  switch (fault_of(error)) {
    case FileFault::not_found: return {FileFault::not_found, "there is no such file or folder"};
    case FileFault::no_permission:
      return {FileFault::no_permission, std::string(prefix) + " is not permitted"};
    case FileFault::disk_full: return {FileFault::disk_full, "the disk is full"};
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

/// The part of a read that does not depend on the path.
FileResult read_open_file(int file, std::uint64_t limit, std::string& bytes) {
  struct stat status {};
  if (::fstat(file, &status) != 0) return system_fault("reading", errno);
  if (FileResult regular = require_regular(status); !regular) return regular;
  if (static_cast<std::uint64_t>(status.st_size) > limit) return too_large(limit);
  std::size_t filled = 0;
  bytes.resize(static_cast<std::size_t>(status.st_size) + 1);  // one more shows the end
  for (;;) {
    const ssize_t got = ::read(file, bytes.data() + filled, bytes.size() - filled);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return system_fault("reading", errno);
    filled += static_cast<std::size_t>(got);
    if (filled > limit) return too_large(limit);
    if (got == 0) break;
    if (filled == bytes.size()) bytes.resize(filled * 2);  // it grows while it is read
  }
  bytes.resize(filled);
  return {};
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

/// Where the bytes finally go: behind links, if the path is one.
std::string behind_links(const std::string& path) {
  const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr),
                                                         &std::free);
  return real ? std::string(real.get()) : path;
}

std::string folder_of(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

/// Permissions of the old file, or those that a new file gets. The mask can
/// only be read by setting it.
mode_t wanted_mode(const std::optional<struct stat>& old) {
  if (old) return old->st_mode & 07777;
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return static_cast<mode_t>(0666) & ~mask;
}

/// A rename needs leave of the folder only; a file that is itself protected is
/// refused here.
FileResult require_replaceable(const std::string& path, const struct stat& old) {
  if (FileResult regular = require_regular(old); !regular) return regular;
  if (::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0)
    return system_fault("writing", errno);
  return {};
}

/// A file beside the target that vanishes unless it is given the target's name.
class FileBeside {
 public:
  explicit FileBeside(const std::string& folder)
      : name_(folder + "/.tavlo-XXXXXX"),
        file_(::mkostemp(name_.data(), O_CLOEXEC)),
        error_(errno) {}
  ~FileBeside() {
    if (exists_) ::unlink(name_.c_str());
  }
  FileBeside(const FileBeside&) = delete;
  FileBeside& operator=(const FileBeside&) = delete;

  FileResult fill(std::string_view bytes, mode_t mode) {
    if (!file_) return system_fault("writing in this folder", error_);
    if (::fchmod(file_.number(), mode) != 0) return system_fault("writing", errno);
    if (FileResult written = write_all(file_.number(), bytes); !written) return written;
    if (::fsync(file_.number()) != 0 || !file_.close_now()) return system_fault("writing", errno);
    return {};
  }

  FileResult rename_to(const std::string& target) {
    if (std::rename(name_.c_str(), target.c_str()) != 0) return system_fault("writing", errno);
    exists_ = false;
    return {};
  }

 private:
  std::string name_;
  Descriptor file_;
  int error_;
  bool exists_ = static_cast<bool>(file_);
};

/// Makes a rename last through a power cut. A file system that can't is no
/// reason to call the save failed.
void flush_folder(const std::string& folder) {
  const Descriptor directory(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (directory) ::fsync(directory.number());
}

}  // namespace

FileResult too_large(std::uint64_t limit) {
  return {FileFault::too_large,
          "the file is too large (at most " + std::to_string(limit >> 20) + " MiB)"};
}

FileResult DiskFiles::read_whole(const std::string& path, std::uint64_t limit, std::string& bytes) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return system_fault("reading", errno);
  if (FileResult regular = require_regular(status); !regular) return regular;
  const Descriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  if (!file) return system_fault("reading", errno);
  FileResult result = read_open_file(file.number(), limit, bytes);
  if (!result) bytes.clear();
  return result;
}

FileResult DiskFiles::write_whole(const std::string& path, std::string_view bytes) {
  const std::string target = behind_links(path);
  std::optional<struct stat> old(std::in_place);
  if (::stat(target.c_str(), &*old) != 0) old.reset();
  if (old)
    if (FileResult fine = require_replaceable(target, *old); !fine) return fine;
  const std::string folder = folder_of(target);
  FileBeside beside(folder);
  if (FileResult filled = beside.fill(bytes, wanted_mode(old)); !filled) return filled;
  if (FileResult renamed = beside.rename_to(target); !renamed) return renamed;
  flush_folder(folder);
  return {};
}

bool DiskFiles::exists(const std::string& path) { return ::access(path.c_str(), F_OK) == 0; }

}  // namespace tavlo
