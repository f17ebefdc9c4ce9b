#include "files/disk_files.h"

#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>

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

}  // namespace
}  // namespace tavlo
