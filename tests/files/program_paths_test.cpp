#include "files/program_paths.h"

#include <gtest/gtest.h>

#include "files/command_switches.h"
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
  /// "settings program temp"
  std::string found(const std::string& command_line = "", const PathSystem& system = posix_paths) {
    const ProgramPlaces places = FindPaths(world.start_ports(), system, command_line);
    return places.IniPath + " " + places.ProgramPath + " " + places.TempPath;
  }
  std::string list_in(const std::string& folder) {
    return world.disk.files[folder + "/QMPaths.txt"];
  }

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

TEST_F(ProgramPathsTest, TheSettingsFolderIsTheEnvironments) {
  world.machine.variables["XDG_CONFIG_HOME"] = "/own/config/";
  EXPECT_EQ(found(), "/own/config/Quellmarch /program /temp");
  world.machine.variables["XDG_CONFIG_HOME"] = "relative";
  EXPECT_EQ(found(), family + " /program /temp");
}

// Whatever is closed or missing, each folder has a value.
TEST_F(ProgramPathsTest, FoldersThatCanNotBeHadAreReplaced) {
  struct Case {
    const char* name;
    std::map<std::string, std::string> variables;
    std::string temp;
    std::set<std::string> closed;
    const char* wanted;
  };
  const Case cases[] = {
      {"no home", {}, "/temp", {}, "/temp /program /temp"},
      {"closed home", {{"HOME", "/home/u"}}, "/temp", {"/home/u/.config"}, "/temp /program /temp"},
      {"closed family", {{"HOME", "/home/u"}}, "/temp", {family}, "/home/u/.config /program /temp"},
      {"no private folder",
       {{"HOME", "/home/u"}},
       "",
       {},
       ("/home/u/.config/Quellmarch /program /tmp")},
      {"own temp", {{"TMPDIR", "/program"}}, "", {}, "/program /program /program"},
      {"closed temp",
       {{"HOME", "/home/u"}},
       "",
       {"/tmp"},
       "/home/u/.config/Quellmarch /program /home/u/.config/Quellmarch"}};
  for (const Case& each : cases) {
    world.disk.files.clear();
    world.machine.variables = each.variables;
    world.machine.temp = each.temp;
    world.disk.closed = each.closed;
    EXPECT_EQ(found(), each.wanted) << each.name;
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

TEST_F(ProgramPathsTest, SwitchesComeFirst) {
  world.disk.folders.insert({"/c", "/p", "/t"});
  world.disk.files["/p/QuellW.EXE"] = "";
  EXPECT_EQ(found("-c /c -P '/p' -t [/t]"), "/c /p /t");
  world.disk.closed = {"/c", "/t"};
  EXPECT_EQ(found("-c /c -p /t -t /t"), family + " /program /temp") << "refused";
}

TEST_F(ProgramPathsTest, APathsFilePointsToTheRealOne) {
  world.disk.folders.insert({"/list", "/list/temp", "/list/program"});
  world.disk.files["/list/program/quellv.exx"] = "";
  put_list(family, "x\nx\n/a/\nx");
  put_list("/a", "x\r\nx\r\n~/../b\r\n");
  put_list("/home/u/../b", "/list/program/\n/list/temp///\n/list\n");
  EXPECT_EQ(found(), "/list /list/program /list/temp");
  world.disk.foreign = {"/list/temp"};
  world.disk.closed = {"/list"};
  EXPECT_EQ(found(), "/home/u/../b /list/program /temp") << "another's folder is not taken";
}

TEST_F(ProgramPathsTest, PathsFilesThatLeadInACircleEnd) {
  put_list(family, "x\nx\n/a\n");
  put_list("/a", "x\nx\n/b\n");
  put_list("/b", "x\nx\n" + family + "\n");
  EXPECT_EQ(found(), family + " /program /temp");
  for (int i = 0; i < 100; ++i)
    put_list("/far" + std::to_string(i), "x\nx\n/far" + std::to_string(i + 1) + "\n");
  put_list(family, "x\nx\n/far0\n");
  EXPECT_EQ(found(), "/far15 /program /temp") << "a long way ends too";
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
  EXPECT_TRUE(MatchesFamily("QuellWin.EXE", "quell*.exe"));
  EXPECT_TRUE(MatchesFamily("quell.exe", "quell*.exe"));
  EXPECT_FALSE(MatchesFamily("quell.exx", "quell*.exe"));
  EXPECT_FALSE(MatchesFamily("aquell.exe", "quell*.exe"));
  EXPECT_TRUE(MatchesFamily("quell1.exx", "quell*.ex."));
  EXPECT_FALSE(MatchesFamily("quell1.ex", "quell*.ex."));
  EXPECT_FALSE(MatchesFamily("", "quell*.ex."));
}

}  // namespace
}  // namespace tavlo
