#include <gtest/gtest.h>

#include "program_run.h"
#include "support/case_list.h"

namespace tavlo {
namespace {

using Arguments = test::CliTest;
using test::ProgramRun;

/// What there is to be misused: good data and bad, broken looks, a file that is in the way.
void fill(const test::CliFolder& folder) {
  const std::string profile = folder.read(TAVLO_TEST_DATA "/factory_chart.vpr");
  const std::pair<const char*, std::string> files[] = {
      {"d", "5\n7\n9\n"},
      {"d~", "5\n7\n"},
      {"d.csv", "x\n5\n"},
      {"d.csv~", "x\n7\n"},
      {"bad.txt", "5\n7 weeks ago\n"},
      {"doubt.txt", "1071,8\n1069,3\n"},
      {"empty", ""},
      {"cr", "5\rsix\r"},
      {"escape", "x,status\n\x1B[31m5,F\n"},
      {"quote", "x,comment\n1,\"" + std::string(100'000, 'a')},
      {"zeros", ""},
      {"word.tavlo", "Tavlo 1.5 alpha 01 Oct 2011\r\n1,many,1\r\n"},
      {"half.tavlo", "Tavlo 1.5 alpha 01 Oct 2011\r\n1,1,1\r\n1,0\r\n9\r\n"},
      {"c.wmf", profile},
      {"half.vpr", profile.substr(0, profile.size() / 2)},
      {"word.vpr", std::string(profile).replace(profile.find("1000"), 4, "many")}};
  for (const auto& [name, bytes] : files) folder.write(name, bytes);
  std::filesystem::create_symlink("d", folder.path("link"));
  std::filesystem::resize_file(folder.path("zeros"), std::uintmax_t{1} << 30);
}

// By its code: 2 for the words of the command, 3 for a file. Nothing is read that is too
// large to hold, printed, written or replaced.
TEST_F(Arguments, EachFaultSaysWhyAndChangesNothing) {
  fill(folder);
  const std::string kept = folder.read("c.wmf");
  const std::string names = folder.shell("ls").out;
  for (const auto& line : test::case_list("command_faults.txt")) {
    const ProgramRun run = folder.shell("$CLI " + line[0]);
    EXPECT_EQ(std::to_string(run.code), line[1]) << line[0];
    EXPECT_TRUE(run.err.starts_with("tavlo-cli: ")) << line[0] << run.err;
    EXPECT_NE(run.err.find(line[2]), std::string::npos) << line[0] << run.err;
    EXPECT_EQ(run.out, "") << line[0];
    EXPECT_LT(run.peak_kilobytes, 600 * 1024 * test::memory_factor) << line[0];
  }
  EXPECT_EQ(folder.shell("ls").out, names);
  EXPECT_TRUE(folder.read("c.wmf") == kept) << "what stood there is kept";
}

TEST_F(Arguments, HelpAndVersionEndWell) {
  EXPECT_TRUE(folder.run({"--version"}).out.starts_with("tavlo-cli "));
  for (const char* command : {"", "fit ", "rank ", "chart ", "convert ", "batch "}) {
    const ProgramRun run = folder.shell("$CLI " + std::string(command) + "--help");
    EXPECT_EQ(run.code, 0);
    EXPECT_NE(run.out.find(command), std::string::npos) << run.out;
    EXPECT_GT(run.out.size(), 200U);
  }
}

}  // namespace
}  // namespace tavlo
