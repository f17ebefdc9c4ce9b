#include "files/disk_files.h"

#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <thread>

#include "project/size_limits.h"
#include "support/case_list.h"
#include "support/test_world.h"

/// A call of the system that fails: the n-th one, or with 0 all of them.
struct FailingCall {
  std::string call;
  int error = 0;
  int nth = 0;
  int seen = 0;
};
static FailingCall failing;
static bool has_hard_links = true;

static bool is_refused(const char* call) {
  if (failing.call != call || (++failing.seen != failing.nth && failing.nth != 0)) return false;
  errno = failing.error;
  return true;
}

template <class... Values>
static int call_system(const char* name, long number, Values... values) {
  return is_refused(name) ? -1 : static_cast<int>(::syscall(number, values...));
}

// In place of those of the library.
extern "C" {
int fsync(int file) { return call_system("fsync", SYS_fsync, file); }
int fchmod(int file, mode_t mode) noexcept { return call_system("fchmod", SYS_fchmod, file, mode); }
int link(const char* from, const char* to) noexcept {
  if (!has_hard_links) return errno = EPERM, -1;
  return call_system("link", SYS_linkat, AT_FDCWD, from, AT_FDCWD, to, 0);
}
int rename(const char* from, const char* to) noexcept {
  return call_system("rename", SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0);
}
ssize_t write(int file, const void* bytes, std::size_t size) {
  const bool fails = is_refused("write");  // halfway
  const ssize_t put = ::syscall(SYS_write, file, bytes, fails ? size / 2 : size);
  return fails ? -1 : put;
}
}

namespace tavlo {
namespace {

namespace fs = std::filesystem;

class DiskFilesTest : public testing::Test {
 protected:
  DiskFilesTest() {
    std::string name = (fs::temp_directory_path() / "tavlo-test-XXXXXX").string();
    folder = ::mkdtemp(name.data());
    fs::permissions(folder, fs::perms(0755));
  }
  ~DiskFilesTest() override { fs::remove_all(folder); }
  std::string path(const std::string& name) const { return (folder / name).string(); }
  std::string read(const std::string& name) {
    std::string bytes;
    const FileResult result = files.read_whole(path(name), largest_data_file, bytes);
    return result ? bytes : "fault: " + result.message;
  }
  /// The names in the folder, each with what it holds.
  std::string content() {
    std::string text;
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
      names.push_back(entry.path().lexically_relative(folder).string());
    std::sort(names.begin(), names.end());
    for (std::error_code ring; const std::string& name : names)
      text += name + (fs::is_regular_file(path(name), ring) ? "=" + read(name) : "") + " ";
    return text;
  }

  fs::path folder;
  DiskFiles files;
};

TEST_F(DiskFilesTest, RefusesLargeFilesBeforeReadingThem) {
  ASSERT_TRUE(files.write_whole(path("sparse"), ""));
  fs::resize_file(path("sparse"), std::uintmax_t{1} << 40);
  EXPECT_EQ(read("sparse"), "fault: the file is too large (at most 256 MiB)");
  std::string bytes;
  ASSERT_TRUE(files.write_whole(path("four"), "1234"));
  EXPECT_TRUE(files.read_whole(path("four"), 4, bytes));
  EXPECT_TRUE(files.read_whole(path("four"), ~std::uint64_t{0}, bytes) && bytes == "1234");
  EXPECT_EQ(files.read_whole(path("four"), 3, bytes).fault, FileFault::too_large);
  EXPECT_EQ(bytes, "");
}

// What a killed program left goes with the next save; a file that a living one still
// writes, and whatever has only a similar name, stays.
TEST_F(DiskFilesTest, ASaveSweepsWhatAKilledOneLeft) {
  const std::string in_work_name = ".tavlo-save-inwork.tmp~";
  for (const char* name : {".tavlo-save-abcdef.tmp~", in_work_name.c_str(), ".tavlo-backup",
                           ".tavlo-save-longer-name.tmp~"})
    std::ofstream(path(name)) << "half";
  const std::string stays = ".tavlo-backup=half ", also = ".tavlo-save-longer-name.tmp~=half ";
  const int in_work = ::open(path(in_work_name).c_str(), O_RDWR);
  ASSERT_EQ(::flock(in_work, LOCK_EX), 0);
  ASSERT_TRUE(files.write_whole(path("file"), "new"));
  EXPECT_EQ(content(), stays + in_work_name + "=half " + also + "file=new ");
  ::close(in_work);
  ASSERT_TRUE(files.write_whole(path("file"), "new"));
  EXPECT_EQ(content(), stays + also + "file=new ");
}

TEST_F(DiskFilesTest, SavesAtTheSameTimeDoNotSweepEachOther) {
  std::atomic<int> failures = 0;
  const auto save_often = [&](const std::string& name) {
    for (int i = 0; i < 100; ++i) failures += files.write_keeping_former(path(name), name) ? 0 : 1;
  };
  std::thread other(save_often, "one");
  save_often("two");
  other.join();
  EXPECT_EQ(failures, 0);
  EXPECT_EQ(content(), "one=one one~=one two=two two~=two ");
}

/// The rights of an ordinary user for as long as it lives, where the tests run
/// as the superuser, whom nothing is forbidden.
class OrdinaryUser {
 public:
  explicit OrdinaryUser(bool wanted)
      : changed_(wanted && ::geteuid() == 0 && ::seteuid(65534) == 0) {}
  ~OrdinaryUser() {
    if (changed_) changed_ = ::seteuid(0) != 0;
  }

 private:
  bool changed_;
};

TEST_F(DiskFilesTest, AWriteThatFailsHalfwayLeavesEveryFileWhole) {
  ASSERT_TRUE(files.write_whole(path("small"), "old"));
  const std::string whole = content();
  const std::string large(5000, 'y');
  failing = {"write", ENOSPC};
  const FileResult results[] = {
      files.write_whole(path("small"), large), files.append(path("small"), large),
      files.create_new(path("new"), large), files.write_keeping_former(path("small"), large)};
  failing.call.clear();
  for (const FileResult& result : results)
    EXPECT_EQ(result.fault, FileFault::disk_full) << result.message;
  EXPECT_EQ(content(), whole);
}

// It is done or nothing is; and what a folder of another system doesn't know is no failure.
TEST_F(DiskFilesTest, AnyCallOfTheSystemMayFailInASave) {
  const auto save_with = [&](const FailingCall& wanted) {
    EXPECT_TRUE(files.write_whole(path("p"), "old") && files.write_whole(path("p~"), "older"));
    failing = wanted;
    const bool saved = static_cast<bool>(files.write_keeping_former(path("p"), "new"));
    failing.call.clear();
    EXPECT_EQ(content(), saved ? "p=new p~=old " : "p=old p~=older ") << wanted.call << wanted.nth;
    return saved;
  };
  // To write and flush the file, to name it and the one before it; both may be copies.
  for (const auto& [links, faults] : {std::pair(true, 4), {false, 8}}) {
    int failed = 0;
    has_hard_links = links;
    for (const char* call : {"fchmod", "fsync", "link", "rename", "write"})
      for (int nth = 1; nth == 1 || failing.seen >= nth - 1; ++nth)
        failed += save_with({call, EIO, nth}) ? 0 : 1;
    EXPECT_EQ(failed, faults);
  }
  has_hard_links = true;
  for (const auto& [call, error] :
       {std::pair("fchmod", EPERM), {"link", EPERM}, {"fsync", EINVAL}, {"fsync", ENOTSUP}})
    EXPECT_TRUE(save_with({call, error, 0})) << call;
}

TEST_F(DiskFilesTest, EveryOperationDoesWhatItSays) {
  ASSERT_TRUE(files.make_folder(path("a/b//c/")));
  ASSERT_TRUE(files.make_folder(path("a")));
  EXPECT_EQ(fs::status(path("a/b/c")).permissions(), fs::perms(0700));
  const std::string bytes("1\0\xFF\r\n", 5), many(200'000, 'x');
  ASSERT_TRUE(files.create_new(path("a/log"), bytes));
  ASSERT_TRUE(files.append(path("a/log"), "2"));
  ASSERT_TRUE(files.append(path("a/other"), "first"));
  EXPECT_EQ(content(), "a a/b a/b/c a/log=" + bytes + "2 a/other=first ");
  fs::permissions(path("a/log"), fs::perms(0640));
  fs::last_write_time(path("a/log"), fs::file_time_type::clock::now() - std::chrono::hours(24));
  FileFacts facts;
  ASSERT_TRUE(files.write_keeping_former(path("a/log"), many));
  ASSERT_TRUE(files.look_up(path("a/log~"), facts));
  EXPECT_EQ(facts.size, 6U);
  EXPECT_NEAR(facts.seconds_since_1970, static_cast<double>(std::time(nullptr)) - 86400, 60);
  ASSERT_TRUE(files.write_keeping_former(path("a/log"), ""));
  for (const char* name : {"a/log", "a/log~"})
    EXPECT_EQ(fs::status(path(name)).permissions(), fs::perms(0640));
  std::ofstream(path("a/.tavlo-save-inwork.tmp~")) << "half";
  std::vector<std::string> names;
  ASSERT_TRUE(files.list_folder(path("a"), names));
  EXPECT_EQ(names, (std::vector<std::string>{"b", "log", "log~", "other"}));
  ASSERT_TRUE(files.look_up(path("a/b"), facts));
  EXPECT_TRUE(facts.is_folder && files.exists(path("a/b")));
  ASSERT_TRUE(files.remove(path("a/other")));
  EXPECT_FALSE(files.exists(path("a/other")));
  EXPECT_EQ(content(), "a a/.tavlo-save-inwork.tmp~=half a/b a/b/c a/log= a/log~=" + many + " ");
}

using Path = const std::string&;
using Operation = std::function<FileResult(FileSystem&, Path)>;

/// Every operation that can fail, on one path, by its name.
const std::map<std::string, Operation> operations = {
    {"read", [](auto& f, Path p) { return f.read_whole(p, 99, *std::make_unique<std::string>()); }},
    {"write", [](auto& f, Path p) { return f.write_whole(p, "x"); }},
    {"create", [](auto& f, Path p) { return f.create_new(p, "x"); }},
    {"append", [](auto& f, Path p) { return f.append(p, "x"); }},
    {"remove", [](auto& f, Path p) { return f.remove(p); }},
    {"keep", [](auto& f, Path p) { return f.write_keeping_former(p, "x"); }},
    {"make", [](auto& f, Path p) { return f.make_folder(p); }},
    {"list",
     [](auto& f, Path p) {
       return f.list_folder(p, *std::make_unique<std::vector<std::string>>());
     }},
    {"look up", [](auto& f, Path p) { return f.look_up(p, *std::make_unique<FileFacts>()); }}};

// Each refusal says why, and leaves everything as it was.
TEST_F(DiskFilesTest, HostilePlacesAreToldAndUntouched) {
  for (const char* name : {"folder", "file~", "locked"}) ASSERT_TRUE(files.make_folder(path(name)));
  for (const char* name : {"file", "locked/file", "locked/secret"})
    ASSERT_TRUE(files.write_whole(path(name), "old"));
  ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);
  fs::create_symlink("nowhere/file", path("dangling"));
  fs::create_symlink("ring", path("ring"));
  fs::permissions(path("locked/file"), fs::perms(0444));
  fs::permissions(path("locked/secret"), fs::perms::none);
  fs::permissions(path("locked"), fs::perms(0555));
  const std::string before = content();
  for (const auto& fields : test::case_list("file_faults.txt")) {
    const std::string place = fields[0].starts_with("/") ? fields[0] : path(fields[0]);
    FileResult result = [&] {
      const OrdinaryUser user(fields[0].starts_with("locked"));
      return operations.at(fields[1])(files, place);
    }();
    const std::size_t at = result.message.find(folder.string() + "/");
    if (at != std::string::npos) result.message.erase(at, folder.string().size() + 1);
    EXPECT_EQ(result.message, fields[2]) << fields[0] << ": " << fields[1];
    EXPECT_NE(result.fault, FileFault::none);
    EXPECT_EQ(content(), before) << fields[0] << ": " << fields[1];
  }
  EXPECT_EQ(files.create_new(path(std::string(300, 'n')), "x").message,
            std::string("writing failed: ") + std::strerror(ENAMETOOLONG));
  fs::permissions(path("locked"), fs::perms(0755));
}

// Where nobody may rename or remove what is another's, be it the file or the one before it.
TEST_F(DiskFilesTest, ARefusedSaveInASharedFolderLeavesNothing) {
  if (::geteuid() != 0) GTEST_SKIP() << "only the superuser can play two people";
  ::chmod(folder.c_str(), 01777);
  for (const char* name : {"theirs", "mine", "mine~", "both", "both~"}) {
    ASSERT_TRUE(files.write_whole(path(name), name));
    ::chmod(path(name).c_str(), 0666);
  }
  for (const char* name : {"mine", "both~"}) ASSERT_EQ(::chown(path(name).c_str(), 65534, 0), 0);
  const std::string before = content();
  const OrdinaryUser user(true);
  for (const char* name : {"theirs", "mine", "both"}) {
    EXPECT_EQ(files.write_keeping_former(path(name), "x").fault, FileFault::no_permission) << name;
    EXPECT_EQ(content(), before) << name;
  }
}

TEST_F(DiskFilesTest, LinksAreFollowedButNeverRemovedThrough) {
  ASSERT_TRUE(files.make_folder(path("far")));
  ASSERT_TRUE(files.write_whole(path("far/file"), ""));
  fs::create_symlink("far/file", path("link"));
  fs::create_symlink("far", path("near"));
  ASSERT_TRUE(files.write_whole(path("link"), "old"));
  ASSERT_TRUE(files.append(path("link"), "er"));
  ASSERT_TRUE(files.write_keeping_former(path("link"), "new"));
  fs::create_symlink("near/later", path("ahead"));
  ASSERT_TRUE(files.write_keeping_former(path("ahead"), "last"));
  EXPECT_TRUE(fs::is_symlink(path("ahead")));
  EXPECT_TRUE(files.make_folder(path("near/deep")));
  EXPECT_TRUE(fs::is_symlink(path("link")));
  ASSERT_TRUE(files.remove(path("link")));
  ASSERT_TRUE(files.remove(path("near")));
  ASSERT_TRUE(files.remove(path("ahead")));
  EXPECT_EQ(content(), "far far/deep far/file=new far/file~=older far/later=last ");
}

// The double does what the disk does, and fails at any operation where a test wants it.
TEST_F(DiskFilesTest, FilesInMemoryAreLikeThoseOnDisk) {
  test::MemoryFiles memory;
  ASSERT_TRUE(files.make_folder(path("a/b")));
  ASSERT_TRUE(memory.make_folder("/a/b"));
  for (const char* name : {"/a/b", "/a/b/file", "/a/b/file", "/none"})
    for (const auto& [operation, act] : operations)
      EXPECT_EQ(act(memory, name).fault, act(files, folder.string() + name).fault)
          << operation << " " << name;
  std::vector<std::string> in_memory, on_disk;
  EXPECT_TRUE(memory.list_folder("/a", in_memory) && files.list_folder(path("a"), on_disk));
  EXPECT_EQ(in_memory, on_disk);
  for (const auto& [operation, act] : operations) {
    const auto before = memory.files;
    memory.fail_at(1, FileFault::device_error);
    EXPECT_EQ(act(memory, "/a/new").fault, FileFault::device_error) << operation;
    EXPECT_EQ(memory.files, before) << operation;
  }
}

}  // namespace
}  // namespace tavlo
