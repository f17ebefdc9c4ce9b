// A program that is killed while it saves: whenever it ends, the file and the one that is
// kept beside it are whole.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <thread>

#include "files/disk_files.h"
#include "project/size_limits.h"
#include "support/random_samples.h"

namespace tavlo {
namespace {

namespace fs = std::filesystem;

using Texts = std::string[2];

/// Saves one text after the other until it is killed, and says each step that is done.
[[noreturn]] void save_for_ever(const std::string& path, const Texts& texts, unsigned first,
                                int steps) {
  DiskFiles files;
  for (unsigned i = first;; ++i)
    if (!files.write_keeping_former(path, texts[i % 2]) || ::write(steps, "s", 1) != 1) ::_exit(1);
}

/// A child that saves, killed a moment after so many steps; false if it ended by itself.
bool save_and_kill(const std::string& path, const Texts& texts, unsigned first, int steps,
                   double seconds) {
  int ends[2];
  if (::pipe(ends) != 0) return false;
  const pid_t child = ::fork();
  if (child == 0) save_for_ever(path, texts, first, ends[1]);
  ::close(ends[1]);
  char step = 0;
  while (steps-- > 0 && ::read(ends[0], &step, 1) == 1) continue;
  std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
  ::kill(child, SIGKILL);
  int status = 0;
  ::waitpid(child, &status, 0);
  ::close(ends[0]);
  return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
}

/// What the file holds: text 0 or 1, or -1 for anything else.
int text_of(const std::string& path, const Texts& texts) {
  std::string found;
  if (!DiskFiles().read_whole(path, largest_data_file, found)) return -1;
  return found == texts[0] ? 0 : found == texts[1] ? 1 : -1;
}

TEST(KilledSave, LeavesTheOldOrTheNewFileWhole) {
  std::string folder = (fs::temp_directory_path() / "tavlo-test-XXXXXX").string();
  ASSERT_NE(::mkdtemp(folder.data()), nullptr);
  const std::string path = folder + "/project.tavlo";
  const Texts texts = {std::string(30'000, 'a'), std::string(20'000, 'b')};
  ASSERT_TRUE(DiskFiles().write_whole(path, texts[1]));
  ASSERT_TRUE(DiskFiles().write_keeping_former(path, texts[1]));
  test::RandomNumbers random(500);
  int seen[2] = {0, 0};
  for (unsigned kills = 0; kills < 200; ++kills) {
    ASSERT_TRUE(
        save_and_kill(path, texts, kills / 2, random.whole(0, 3), random.uniform(0, 0.002)));
    const int found = text_of(path, texts);
    ASSERT_TRUE(found >= 0 && text_of(path + "~", texts) >= 0) << kills;
    ++seen[found];
  }
  EXPECT_TRUE(seen[0] > 20 && seen[1] > 20) << seen[0];
  // The next save clears away what the killed ones left.
  EXPECT_TRUE(DiskFiles().write_whole(path, texts[0]));
  EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 2);
  fs::remove_all(folder);
}

}  // namespace
}  // namespace tavlo
