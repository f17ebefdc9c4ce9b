// On a real disk: what stands under the probe's name is somebody's, and is never touched.
#include "files/path_test.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "files/disk_files.h"
#include "files/private_folder.h"

namespace tavlo {
namespace {

namespace fs = std::filesystem;

class PathTestTest : public testing::Test {
 protected:
  PathTestTest() {
    std::string name = (fs::temp_directory_path() / "tavlo-test-XXXXXX").string();
    folder = ::mkdtemp(name.data());
  }
  ~PathTestTest() override { fs::remove_all(folder); }
  PathTest tested(std::string path) { return fn_PathTest(world, path); }
  std::string in(const char* name) const { return (folder / name).string(); }
  int files_in_folder() const {
    return static_cast<int>(std::distance(fs::directory_iterator(folder), {}));
  }

  fs::path folder;
  DiskFiles files;
  PathWorld world{files, [](const std::string&) { return std::string(); }, posix_paths};
};

TEST_F(PathTestTest, APlantedProbeIsNeitherFollowedNorTouched) {
  EXPECT_TRUE(tested(folder.string() + "/").writable);
  EXPECT_EQ(files_in_folder(), 0);
  std::ofstream(in("secret")) << "mine";
  fs::create_symlink(in("secret"), in("QMTempTestFile2011.txt"));
  fs::create_symlink(in("missing"), in("QMTempTestFile2011-1.txt"));
  std::ofstream(in("QMTempTestFile2011-2.txt")) << "mine too";
  EXPECT_TRUE(tested(folder.string()).writable);
  EXPECT_EQ(fs::file_size(in("secret")), 4u);
  EXPECT_EQ(fs::file_size(in("QMTempTestFile2011-2.txt")), 8u);
  EXPECT_FALSE(fs::exists(in("missing")));
  EXPECT_EQ(files_in_folder(), 4);
}

TEST_F(PathTestTest, OnlyAFolderIsThere) {
  std::ofstream(in("file")) << "x";
  for (const std::string& path : {in("file"), in("none"), std::string("/proc"), std::string()}) {
    const PathTest found = tested(path);
    EXPECT_EQ(found.exists, path == "/proc") << path;
    EXPECT_FALSE(found.writable) << path;
  }
}

TEST_F(PathTestTest, ATemporaryFolderIsThePersonsAlone) {
  const std::string name = in("tavlo-") + std::to_string(::geteuid());
  EXPECT_EQ(private_temp_folder("", folder.string()), name);
  EXPECT_EQ(private_temp_folder("", folder.string()), name);
  EXPECT_EQ(fs::status(name).permissions(), fs::perms(0700));
  fs::permissions(name, fs::perms(0777));
  EXPECT_EQ(private_temp_folder("", folder.string()), name + "-1") << "open to others";
  fs::remove(name);
  fs::create_symlink(name + "-1", name);
  EXPECT_EQ(private_temp_folder("", folder.string()), name + "-1") << "a link";
  EXPECT_EQ(private_temp_folder(folder.string(), "/nowhere"), in("tavlo"));
  fs::permissions(folder, fs::perms(0755));
  EXPECT_EQ(private_temp_folder(folder.string(), folder.string()), name + "-1");
  EXPECT_EQ(private_temp_folder("", "/nowhere"), "");
}

}  // namespace
}  // namespace tavlo
