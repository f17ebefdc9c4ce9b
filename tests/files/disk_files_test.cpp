#include "files/disk_files.h"

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/file.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <thread>

#include "support/test_world.h"

namespace tavlo {
namespace {

namespace fs = std::filesystem;

class DiskFilesTest : public testing::Test {
 protected:
  DiskFilesTest() {
    std::string name = (fs::temp_directory_path() / "tavlo-test-XXXXXX").string();
    folder = ::mkdtemp(name.data());
  }
  ~DiskFilesTest() override {
    fs::permissions(folder, fs::perms::owner_all);
    fs::remove_all(folder);
  }
  std::string path(const std::string& name) const { return (folder / name).string(); }
  std::string read(const std::string& name) {
    std::string bytes;
    const FileResult result = files.read_whole(path(name), largest_data_file, bytes);
    return result ? bytes : "fault: " + result.message;
  }
  std::size_t entries() const {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
  }

  fs::path folder;
  DiskFiles files;
};

TEST_F(DiskFilesTest, ReadsWhatWasWritten) {
  const std::string bytes("a\0\r\n\xFF", 5);
  ASSERT_TRUE(files.write_whole(path("new"), bytes));
  EXPECT_EQ(read("new"), bytes);
  ASSERT_TRUE(files.write_whole(path("new"), ""));
  EXPECT_EQ(read("new"), "");
  EXPECT_TRUE(files.exists(path("new")));
  EXPECT_FALSE(files.exists(path("other")));
  EXPECT_EQ(entries(), 1U);
}

TEST_F(DiskFilesTest, KeepsPermissionsAndLinks) {
  ASSERT_TRUE(files.write_whole(path("target"), "old"));
  fs::permissions(path("target"), fs::perms::owner_read | fs::perms::owner_write);
  fs::create_symlink("target", path("link"));
  ASSERT_TRUE(files.write_whole(path("link"), "new"));
  EXPECT_TRUE(fs::is_symlink(path("link")));
  EXPECT_EQ(read("target"), "new");
  EXPECT_EQ(fs::status(path("target")).permissions(),
            fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(DiskFilesTest, OnlyRegularFilesAreReadOrReplaced) {
  ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);
  EXPECT_EQ(read("pipe"), "fault: this is a pipe, not a file");
  EXPECT_EQ(read(""), "fault: this is a folder, not a file");
  EXPECT_EQ(read("missing"), "fault: there is no such file or folder");
  std::string bytes;
  for (const char* device : {"/dev/zero", "/dev/null", "/dev/full"})
    EXPECT_EQ(files.read_whole(device, 10, bytes).fault, FileFault::not_a_regular_file) << device;
  for (const std::string& target : {path("pipe"), path(""), std::string("/dev/full")})
    EXPECT_EQ(files.write_whole(target, "x").fault, FileFault::not_a_regular_file) << target;
  EXPECT_EQ(files.write_whole(path("no/such/folder"), "x").fault, FileFault::not_found);
}

TEST_F(DiskFilesTest, RefusesLargeFilesBeforeReadingThem) {
  ASSERT_TRUE(files.write_whole(path("sparse"), ""));
  fs::resize_file(path("sparse"), std::uintmax_t{1} << 40);
  EXPECT_EQ(read("sparse"), "fault: the file is too large (at most 256 MiB)");
  std::string bytes;
  ASSERT_TRUE(files.write_whole(path("four"), "1234"));
  EXPECT_TRUE(files.read_whole(path("four"), 4, bytes));
  EXPECT_EQ(files.read_whole(path("four"), 3, bytes).fault, FileFault::too_large);
  EXPECT_EQ(bytes, "");
}

TEST_F(DiskFilesTest, AStreamIsWhateverGivesBytes) {
  std::string bytes;
  ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);
  std::thread writer([this] { std::ofstream(path("pipe")) << std::string(200'000, '7'); });
  EXPECT_TRUE(read_stream(path("pipe"), largest_data_file, bytes));
  writer.join();
  EXPECT_EQ(bytes, std::string(200'000, '7'));
  EXPECT_TRUE(read_stream("/dev/null", 10, bytes));
  EXPECT_EQ(bytes, "");
  EXPECT_EQ(read_stream("/dev/zero", 1 << 20, bytes).message,
            "the file is too large (at most 1 MiB)");
  EXPECT_EQ(read_stream(folder.string(), 10, bytes).message, "this is a folder, not a file");
}

// What a killed program left goes with the next save; a file that a living one still
// writes, and whatever has only a similar name, stays.
TEST_F(DiskFilesTest, ASaveSweepsWhatAKilledOneLeft) {
  for (const char* name : {".tavlo-abcdef", ".tavlo-inwork", ".tavlo-longer-name", ".tavlo"})
    std::ofstream(path(name)) << "half";
  const int in_work = ::open(path(".tavlo-inwork").c_str(), O_RDWR);
  ASSERT_EQ(::flock(in_work, LOCK_EX), 0);
  ASSERT_TRUE(files.write_whole(path("file"), "new"));
  EXPECT_FALSE(files.exists(path(".tavlo-abcdef")));
  EXPECT_EQ(entries(), 4U);
  ::close(in_work);
  ASSERT_TRUE(files.write_whole(path("file"), "new"));
  EXPECT_EQ(entries(), 3U);
}

TEST_F(DiskFilesTest, SavesAtTheSameTimeDoNotSweepEachOther) {
  std::atomic<int> failures = 0;
  const auto save_often = [&](const std::string& name) {
    for (int i = 0; i < 100; ++i) failures += files.write_whole(path(name), name) ? 0 : 1;
  };
  std::thread other(save_often, "one");
  save_often("two");
  other.join();
  EXPECT_EQ(failures, 0);
  EXPECT_EQ(entries(), 2U);
}

/// The rights of an ordinary user for as long as it lives, where the tests run
/// as the superuser, whom nothing is forbidden.
class OrdinaryUser {
 public:
  OrdinaryUser() : was_root_(::geteuid() == 0) {
    if (was_root_) changed_ = ::seteuid(65534) == 0;
  }
  ~OrdinaryUser() {
    if (was_root_) changed_ = ::seteuid(0) == 0;
  }

 private:
  bool was_root_;
  bool changed_ = false;
};

TEST_F(DiskFilesTest, ForbiddenFilesAndFoldersAreToldAndUntouched) {
  ASSERT_TRUE(files.write_whole(path("secret"), "old"));
  fs::permissions(path("secret"), fs::perms::none);
  fs::permissions(folder, fs::perms(0555));
  const OrdinaryUser user;
  EXPECT_EQ(read("secret"), "fault: reading is not permitted");
  EXPECT_EQ(files.write_whole(path("secret"), "x").message, "writing is not permitted");
  EXPECT_EQ(files.write_whole(path("new"), "x").message, "writing in this folder is not permitted");
}

// A limit on the size of files stands for a disk that fills up in mid-write.
TEST_F(DiskFilesTest, AWriteThatFailsHalfwayLeavesTheOldFileWhole) {
  ASSERT_TRUE(files.write_whole(path("file"), "old"));
  rlimit before{};
  ::getrlimit(RLIMIT_FSIZE, &before);
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit small{1000, before.rlim_max};
  ::setrlimit(RLIMIT_FSIZE, &small);
  const FileResult result = files.write_whole(path("file"), std::string(5000, 'x'));
  ::setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, handler);
  EXPECT_EQ(result.fault, FileFault::too_large);
  EXPECT_EQ(read("file"), "old");
  EXPECT_EQ(entries(), 1U);
}

TEST_F(DiskFilesTest, EveryOperationDoesWhatItSays) {
  const auto is_there = [&](const std::string& name) { return files.exists(path(name)); };
  EXPECT_TRUE(files.back_up(path("new"))) << "nothing to keep";
  ASSERT_TRUE(files.make_folder(path("a/b//c/")));
  ASSERT_TRUE(files.make_folder(path("a")));
  const std::string bytes("1\0\xFF\n", 4);
  ASSERT_TRUE(files.create_new(path("a/log"), bytes));
  EXPECT_EQ(files.create_new(path("a/log"), "x").message,
            "there is a file or folder of this name already");
  ASSERT_TRUE(files.append(path("a/log"), "2"));
  EXPECT_EQ(read("a/log"), bytes + "2");
  ASSERT_TRUE(files.append(path("a/other"), "first"));
  fs::permissions(path("a/log"), fs::perms(0640));
  fs::last_write_time(path("a/log"), fs::file_time_type::clock::now() - std::chrono::hours(24));
  FileFacts before, after;
  ASSERT_TRUE(files.look_up(path("a/log"), before));
  EXPECT_EQ(before.size, 5U);
  EXPECT_NEAR(before.seconds_since_1970, static_cast<double>(std::time(nullptr)) - 86400, 60);
  for (const char* text : {"second", "third"}) {
    ASSERT_TRUE(files.back_up(path("a/log")));
    ASSERT_TRUE(files.look_up(path("a/log~"), after));
    ASSERT_TRUE(files.write_whole(path("a/log"), text));
  }
  EXPECT_EQ(read("a/log~") + read("a/log"), "secondthird");
  EXPECT_EQ(fs::status(path("a/log~")).permissions(), fs::perms(0640));
  std::ofstream(path("a/.tavlo-inwork")) << "half";
  std::vector<std::string> names;
  ASSERT_TRUE(files.list_folder(path("a"), names));
  EXPECT_EQ(names, (std::vector<std::string>{"b", "log", "log~", "other"}));
  ASSERT_TRUE(files.look_up(path("a/b"), after));
  EXPECT_TRUE(after.is_folder);
  ASSERT_TRUE(files.remove(path("a/log")));
  EXPECT_FALSE(is_there("a/log"));
}

TEST_F(DiskFilesTest, ACopyKeepsItsTime) {
  ASSERT_TRUE(files.write_whole(path("file"), std::string(200'000, 'x')));
  fs::last_write_time(path("file"), fs::file_time_type::clock::now() - std::chrono::hours(24));
  ASSERT_TRUE(files.back_up(path("file")));
  EXPECT_EQ(fs::last_write_time(path("file")), fs::last_write_time(path("file~")));
  EXPECT_EQ(read("file~"), std::string(200'000, 'x'));
}

/// Every operation that can fail, on one path, with its name.
std::vector<std::pair<const char*, std::function<FileResult(FileSystem&, const std::string&)>>>
operations() {
  using Path = const std::string&;
  return {{"read",
           [](FileSystem& f, Path p) {
             std::string b;
             return f.read_whole(p, 99, b);
           }},
          {"write", [](FileSystem& f, Path p) { return f.write_whole(p, "x"); }},
          {"create", [](FileSystem& f, Path p) { return f.create_new(p, "x"); }},
          {"append", [](FileSystem& f, Path p) { return f.append(p, "x"); }},
          {"remove", [](FileSystem& f, Path p) { return f.remove(p); }},
          {"back up", [](FileSystem& f, Path p) { return f.back_up(p); }},
          {"make", [](FileSystem& f, Path p) { return f.make_folder(p); }},
          {"list",
           [](FileSystem& f, Path p) {
             std::vector<std::string> n;
             return f.list_folder(p, n);
           }},
          {"look up", [](FileSystem& f, Path p) {
             FileFacts facts;
             return f.look_up(p, facts);
           }}};
}

/// What each operation says of the path, one line each; "fine" where it succeeds.
std::string said_of(FileSystem& files, const std::string& path) {
  std::string said;
  for (const auto& [name, act] : operations()) {
    const FileResult result = act(files, path);
    EXPECT_EQ(static_cast<bool>(result), result.message.empty()) << name;
    said += std::string(name) + ": " + (result ? "fine" : result.message) + "\n";
  }
  return said;
}

TEST_F(DiskFilesTest, HostilePlacesAreTold) {
  ASSERT_TRUE(files.make_folder(path("folder")));
  ASSERT_TRUE(files.write_whole(path("file"), "x"));
  ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);
  ASSERT_TRUE(files.make_folder(path("file~")));
  EXPECT_EQ(said_of(files, path("folder")),
            "read: this is a folder, not a file\nwrite: this is a folder, not a file\n"
            "create: there is a file or folder of this name already\n"
            "append: this is a folder, not a file\nremove: this is a folder, not a file\n"
            "back up: the former file can't be kept as " +
                path("folder") +
                "~: this is a folder, not a file\nmake: fine\nlist: fine\nlook up: fine\n");
  const std::string missing = "there is no such file or folder\n";
  EXPECT_EQ(said_of(files, path("file/x")),
            "read: " + missing + "write: " + missing + "create: " + missing + "append: " + missing +
                "remove: " + missing + "back up: fine\nmake: this is a file, not a folder\nlist: " +
                missing + "look up: " + missing);
  EXPECT_EQ(files.append(path("pipe"), "x").message, "this is a pipe, not a file");
  EXPECT_EQ(files.append("/dev/full", "x").message, "this is a device, not a file");
  EXPECT_EQ(files.list_folder(path("file"), *std::make_unique<std::vector<std::string>>()).fault,
            FileFault::not_a_folder);
  EXPECT_EQ(files.back_up(path("file")).message,
            "the former file can't be kept as " + path("file") + "~: this is a folder, not a file");
  EXPECT_EQ(files.make_folder("").fault, FileFault::not_found);
  EXPECT_EQ(files.create_new(path(std::string(300, 'n')), "x").message,
            "writing failed: File name too long");
}

TEST_F(DiskFilesTest, LinksAreFollowedButNeverRemovedThrough) {
  ASSERT_TRUE(files.make_folder(path("far")));
  ASSERT_TRUE(files.write_whole(path("far/file"), "old"));
  fs::create_symlink("far/file", path("link"));
  fs::create_symlink("nowhere", path("dangling"));
  fs::create_symlink("far", path("near"));
  ASSERT_TRUE(files.append(path("link"), "er"));
  ASSERT_TRUE(files.back_up(path("link")));
  EXPECT_EQ(read("far/file~"), "older");
  EXPECT_EQ(files.create_new(path("dangling"), "x").fault, FileFault::exists_already);
  EXPECT_TRUE(files.make_folder(path("near/deep")));
  ASSERT_TRUE(files.remove(path("link")));
  ASSERT_TRUE(files.remove(path("near")));
  EXPECT_EQ(read("far/file"), "older");
}

TEST_F(DiskFilesTest, NothingHappensInAReadOnlyFolder) {
  ASSERT_TRUE(files.write_whole(path("file"), "old"));
  fs::permissions(path("file"), fs::perms(0444));
  fs::permissions(folder, fs::perms(0555));
  const OrdinaryUser user;
  EXPECT_EQ(files.append(path("file"), "x").message, "writing is not permitted");
  EXPECT_EQ(files.append(path("new"), "x").message, "writing is not permitted");
  EXPECT_EQ(files.create_new(path("new"), "x").message, "writing is not permitted");
  EXPECT_EQ(files.remove(path("file")).message, "removing is not permitted");
  EXPECT_EQ(files.make_folder(path("a/b")).message, "making a folder is not permitted");
  EXPECT_EQ(files.back_up(path("file")).message, "the former file can't be kept as " +
                                                     path("file") +
                                                     "~: writing in this folder is not permitted");
  EXPECT_EQ(read("file"), "old");
  EXPECT_EQ(entries(), 1U);
}

/// Puts a disk of 64 KiB into the folder, for this process alone.
bool mount_small_disk(const std::string& folder) {
  const auto user = std::to_string(::geteuid());
  if (::unshare(CLONE_NEWNS | (user == "0" ? 0 : CLONE_NEWUSER)) != 0) return false;
  if (user != "0") std::ofstream("/proc/self/uid_map") << "0 " << user << " 1";
  return ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
         ::mount("none", folder.c_str(), "tmpfs", 0, "size=64k") == 0;
}

// In a process of its own, which no other test shares.
TEST_F(DiskFilesTest, AFullDiskIsToldAndEveryFileStaysWhole) {
  constexpr int cannot_mount = 77;
  const pid_t child = ::fork();
  if (child == 0) {
    if (!mount_small_disk(folder.string())) ::_exit(cannot_mount);
    const std::string half(40'000, 'x');
    EXPECT_TRUE(files.write_whole(path("file"), half));
    for (const FileResult& result :
         {files.write_whole(path("file"), half + half), files.append(path("file"), half),
          files.create_new(path("new"), half), files.back_up(path("file"))}) {
      EXPECT_EQ(result.fault, FileFault::disk_full) << result.message;
      EXPECT_TRUE(result.message.ends_with("the disk is full")) << result.message;
    }
    EXPECT_EQ(read("file"), half);
    EXPECT_EQ(entries(), 1U);
    ::_exit(HasFailure() ? 1 : 0);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  if (WEXITSTATUS(status) == cannot_mount) GTEST_SKIP() << "no disk can be mounted here";
  EXPECT_EQ(status, 0);
}

/// "+" for each operation that succeeds, else the kind of its fault.
std::string outcomes_of(FileSystem& files, const std::string& path) {
  std::string kinds;
  for (const auto& [name, act] : operations()) {
    const FileFault fault = act(files, path).fault;
    kinds += fault == FileFault::none ? "+" : std::to_string(static_cast<int>(fault));
  }
  return kinds;
}

// The double does what the disk does, and fails at any operation where a test wants it.
TEST_F(DiskFilesTest, FilesInMemoryAreLikeThoseOnDisk) {
  test::MemoryFiles memory;
  ASSERT_TRUE(files.make_folder(path("a/b")));
  ASSERT_TRUE(memory.make_folder("/a/b"));
  for (const char* name : {"/a/b", "/a/b/file", "/a/b/file", "/none"})
    EXPECT_EQ(outcomes_of(memory, name), outcomes_of(files, folder.string() + name)) << name;
  std::vector<std::string> in_memory, on_disk;
  EXPECT_TRUE(memory.list_folder("/a", in_memory) && files.list_folder(path("a"), on_disk));
  EXPECT_EQ(in_memory, on_disk);
  for (const auto& [name, act] : operations()) {
    const auto before = memory.files;
    memory.fail_at(1, FileFault::device_error);
    EXPECT_EQ(act(memory, "/a/new").fault, FileFault::device_error) << name;
    EXPECT_EQ(memory.files, before) << name;
  }
}

}  // namespace
}  // namespace tavlo
