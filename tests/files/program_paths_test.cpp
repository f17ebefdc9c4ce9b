#include "files/program_paths.h"

#include <gtest/gtest.h>

#include <sstream>

#include "files/command_switches.h"
#include "support/case_list.h"
#include "support/start_world.h"

namespace tavlo {
namespace {

constexpr const char* note = "The paths above are for Program, Temporary Files, and INI files.";

class ProgramPathsTest : public testing::Test {
 protected:
  ProgramPathsTest() {
    world.machine.variables = {{"HOME", "/home/u"}};
    world.disk.folders = {"/home/u/.config", "/temp", "/tmp", "/program"};
  }
  void put_list(const std::string& folder, const std::string& lines) {
    world.disk.folders.insert(folder);
    world.disk.files[folder + "/QMPaths.txt"] = lines;
  }
  /// "HOME=; closed=/tmp; list=/a x\nx\n/b": variables by their names, and what stands where.
  void furnish(const std::string& words) {
    std::istringstream steps(words);
    for (std::string step; std::getline(steps >> std::ws, step, ';');) {
      const std::string what = step.substr(0, step.find('=')), value = step.substr(what.size() + 1);
      const std::size_t blank = value.find(' ');
      if (what == "list")
        put_list(value.substr(0, blank), value.substr(blank + 1));
      else if (what == "file")
        world.disk.files[value] = "";
      else if (what == "temp")
        world.machine.temp = value;
      else if (kinds.contains(what))
        (world.disk.*kinds.at(what)).insert(value);
      else
        world.machine.variables[what] = value;
    }
  }
  /// "settings program temp"
  std::string found(const std::string& command_line = "", const PathSystem& system = posix_paths) {
    const ProgramPlaces places = FindPaths(world.start_ports(), system, command_line);
    return places.IniPath + " " + places.ProgramPath + " " + places.TempPath;
  }
  std::string list_in(const std::string& folder) {
    return world.disk.files[folder + "/QMPaths.txt"];
  }

  const std::map<std::string, std::set<std::string> test::GuardedFiles::*> kinds = {
      {"folder", &test::GuardedFiles::folders},
      {"closed", &test::GuardedFiles::closed},
      {"foreign", &test::GuardedFiles::foreign}};
  test::StartWorld world;
  const std::string family = "/home/u/.config/Quellmarch";
};

TEST_F(ProgramPathsTest, AFreshAccountGetsItsFoldersAndAPathsFile) {
  world.disk.folders.erase("/home/u/.config");
  EXPECT_EQ(found(), family + " /program /temp");
  EXPECT_EQ(list_in(family), "\r\n/temp\r\n" + family + "\r\n" + note + "\r\n2026-11-21\r\n");
  const int operations = world.disk.operations();
  EXPECT_EQ(found(), family + " /program /temp");
  EXPECT_EQ(list_in(family).find("2026"), list_in(family).rfind("2026"));
  EXPECT_LT(world.disk.operations(), 2 * operations) << "a second start writes no list";
  EXPECT_EQ(world.disk.files.size(), 1u) << "no probe file is left";
}

// Whatever is closed or missing, each folder has a value, and a search ends.
TEST_F(ProgramPathsTest, EachMachineHasItsFolders) {
  const test::GuardedFiles disk = world.disk;
  const test::FurnishedHost machine = world.machine;
  for (const auto& row : test::case_list("program_paths.txt")) {
    world.disk = disk;
    world.machine = machine;
    furnish(row[0]);
    EXPECT_EQ(found(row[1]), row[2]) << row[0];
  }
}

TEST_F(ProgramPathsTest, APersonIsAskedForATemporaryFolder) {
  world.machine.variables.clear();
  world.machine.temp.clear();
  world.disk.closed = {"/tmp", "/program"};
  world.disk.folders.insert("/mine");
  world.prompts.expect_line("Need Temporary Path", "/nowhere");
  world.prompts.expect_line("Need Temporary Path", "'/mine/'");
  EXPECT_EQ(found(), "/mine /program /mine");
  world.prompts.expect_line("Need Temporary Path", "QUIT");
  EXPECT_EQ(found(), "/program /program /program");
}

TEST_F(ProgramPathsTest, APathsFileThatIsNotOursIsLeftAlone) {
  for (const std::string& bytes : {std::string("x\n"), std::string(100'000, 'x')}) {
    world.disk.read_only = {family + "/QMPaths.txt"};
    put_list(family, bytes);
    EXPECT_EQ(found(), family + " /program /temp");
    EXPECT_EQ(list_in(family), bytes);
  }
  world.disk.read_only.clear();
  EXPECT_EQ(found(), family + " /program /temp");
  EXPECT_EQ(list_in(family).size(), 100'000u) << "too large to be one";
}

TEST_F(ProgramPathsTest, TheSearchIsThatOfWindowsToo) {
  world.machine.variables = {{"APPDATA", "C:\\Data\\"}, {"TEMP", "c:/temp"}, {"HOMEDRIVE", "C:"}};
  world.machine.temp.clear();
  world.machine.program = "C:\\Program\\";
  world.disk.folders = {"C:\\Data", "C:\\Data\\Quellmarch", "c:\\temp"};
  EXPECT_EQ(found("", windows_paths), "C:\\Data\\Quellmarch C:\\Program c:\\temp");
  EXPECT_TRUE(world.disk.exists("C:\\Data\\Quellmarch\\QMPaths.txt"));
}

TEST(CommandSwitches, AreCutAsStated) {
  using Switches = std::vector<CommandSwitch>;
  const std::pair<const char*, Switches> cases[] = {
      {"", {}},
      {"  a.vkm  b ", {{'\0', "a.vkm"}, {'\0', "b"}}},
      {"-C my-dir x -t  /t ", {{'c', "my-dir x"}, {'t', "/t"}}},
      {"-c 'a -b' -p [c d] -t \"open", {{'c', "a -b"}, {'p', "c d"}, {'t', "open"}}},
      {"-c -p", {{'c', ""}, {'p', ""}}},
      {"--help -5 -", {{'\0', "--help"}, {'\0', "-5"}, {'\0', "-"}}}};
  for (const auto& [line, wanted] : cases) EXPECT_EQ(split_command_line(line), wanted) << line;
  EXPECT_EQ(switch_value(split_command_line("-c a -c b"), 'c'), "b");
  EXPECT_EQ(switch_value({}, 'c'), std::nullopt);
}

TEST(MatchesFamily, AFinalPointBehindExStandsForAnyLetter) {
  for (const char* name : {"QuellWin.EXE", "quell.exe"})
    EXPECT_TRUE(MatchesFamily(name, "quell*.exe")) << name;
  for (const char* name : {"quell.exx", "aquell.exe"})
    EXPECT_FALSE(MatchesFamily(name, "quell*.exe")) << name;
  for (const char* name : {"quell1.exx", "quell1.ex", ""})
    EXPECT_EQ(MatchesFamily(name, "quell*.ex."), name == std::string("quell1.exx")) << name;
}

}  // namespace
}  // namespace tavlo
