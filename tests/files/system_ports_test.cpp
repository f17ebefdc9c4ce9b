#include "files/system_ports.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

#include "numerics/date_text.h"
#include "numerics/value_text.h"

namespace tavlo {
namespace {

TEST(SystemClock, ItsFormsTellTheSameMomentInAnyZone) {
  const char* const zone_here = std::getenv("TZ");
  const std::string before_all = zone_here ? zone_here : "";
  for (const char* zone : {"UTC", "XXX-13:45", "YYY+11"}) {
    ::setenv("TZ", zone, 1);
    ::tzset();
    SystemClock clock;
    const char* const pattern = "dddd yyyy-mm-dd hh:nn:ss";
    const std::string before = format_date(clock.now(), pattern);
    const double days = clock.day_count(), seconds = clock.seconds_since_midnight();
    const std::string moment = fs_Dbl2Txt(days, pattern);
    EXPECT_TRUE(moment == before || moment == format_date(clock.now(), pattern))
        << zone << ": " << before << ", " << moment;
    EXPECT_LT(std::fabs(std::remainder(seconds - 86400 * days, 86400.0)), 3.0) << zone;
  }
  before_all.empty() ? ::unsetenv("TZ") : ::setenv("TZ", before_all.c_str(), 1);
  ::tzset();
}

namespace fs = std::filesystem;

class SystemHostTest : public testing::Test {
 protected:
  SystemHostTest() {
    std::string name = (fs::temp_directory_path() / "tavlo-test-XXXXXX").string();
    folder = ::mkdtemp(name.data());
  }
  ~SystemHostTest() override { fs::remove_all(folder); }
  std::string make_program(const std::string& name, const std::string& text, bool executable) {
    const fs::path path = folder / name;
    fs::create_directories(path.parent_path());
    std::ofstream(path) << text;
    if (executable) fs::permissions(path, fs::perms(0755));
    return path.string();
  }
  /// What the program wrote, once it has renamed its file to `done`.
  std::string report() const {
    for (int i = 0; i < 1000 && !fs::exists(folder / "done"); ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    std::ostringstream text;
    text << std::ifstream(folder / "done").rdbuf();
    return text.str();
  }

  fs::path folder;
  SystemHost host;
};

TEST_F(SystemHostTest, KnowsItsPlace) {
  EXPECT_TRUE(fs::exists(fs::path(host.program_folder()) / "tavlo_files_tests"));
  EXPECT_TRUE(fs::is_directory(host.temp_folder()));
  ::setenv("TAVLO_TEST", "a b", 1);
  EXPECT_EQ(host.environment("TAVLO_TEST"), "a b");
  ::unsetenv("TAVLO_TEST");
  EXPECT_EQ(host.environment("TAVLO_TEST"), "");
}

TEST_F(SystemHostTest, FindsProgramsInTheOrderOfThePath) {
  make_program("first/plain", "", false);
  fs::create_directories(folder / "first" / "is_folder");
  const std::string wanted = make_program("second/plain", "", true);
  make_program("third/plain", "", true);
  const std::string path_here = host.environment("PATH");
  const auto in = [&](const char* name) { return (folder / name).string(); };
  ::setenv("PATH", (":" + in("first") + "::" + in("second") + ":" + in("third")).c_str(), 1);
  EXPECT_EQ(host.find_program("plain"), wanted);
  EXPECT_EQ(host.find_program(wanted), wanted);
  for (const std::string& name :
       {std::string("is_folder"), std::string("sh"), std::string(), in("first/plain")})
    EXPECT_EQ(host.find_program(name), std::nullopt) << name;
  const fs::path before = fs::current_path();
  fs::current_path(folder / "second");
  ::setenv("PATH", "", 1);
  EXPECT_EQ(host.find_program("plain"), std::nullopt) << "the current folder is not looked at";
  fs::current_path(before);
  ::setenv("PATH", path_here.c_str(), 1);
}

// The program sees its arguments as they stand, none of our files, and usual signals; when
// it has ended nothing of it is left to wait for.
TEST_F(SystemHostTest, AProgramStartsOnItsOwn) {
  const std::string path =
      make_program("program",
                   "#!/bin/sh\nlinks=$(readlink /proc/$$/fd/[012])\ncd \"${0%/*}\"\n"
                   "{ printf '%s|' \"$@\"; ls -l /proc/$$/fd | grep -c '/secret'; echo \"$links\"\n"
                   "grep SigIgn /proc/$$/status; } > report\nmv report done\n",
                   true);
  const int open_here = ::open((folder / "secret").c_str(), O_RDWR | O_CREAT, 0600);
  const auto handler = std::signal(SIGPIPE, SIG_IGN);
  const std::string hostile = "$(touch " + (folder / "touched").string() + ")";
  const FileResult started = host.start_program(path, {"a b", "", "*", "'\"", hostile, ";ls"});
  std::signal(SIGPIPE, handler);
  ASSERT_TRUE(started) << started.message;
  EXPECT_EQ(report(), "a b||*|'\"|" + hostile +
                          "|;ls|0\n/dev/null\n/dev/null\n/dev/null\n"
                          "SigIgn:\t0000000000000000\n");
  EXPECT_FALSE(fs::exists(folder / "touched"));
  EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
  EXPECT_EQ(errno, ECHILD);
  ::close(open_here);
}

TEST_F(SystemHostTest, AProgramThatCannotRunIsTold) {
  EXPECT_EQ(host.start_program("tavlo-no-such-program", {}).message, "there is no such program");
  EXPECT_EQ(host.start_program(make_program("text", "words", false), {}).fault,
            FileFault::not_found);
  EXPECT_EQ(host.start_program(make_program("empty", "", true), {}).message,
            std::string("starting it failed: ") + std::strerror(ENOEXEC));
  EXPECT_EQ(host.start_program(make_program("lost", "#!/no/such/shell\n", true), {}).fault,
            FileFault::device_error);
  EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
}

}  // namespace
}  // namespace tavlo
