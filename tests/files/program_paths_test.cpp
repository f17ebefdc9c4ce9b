#include "files/program_paths.h"

#include <gtest/gtest.h>

#include <sstream>

#include "files/command_switches.h"
#include "support/case_list.h"
#include "support/start_world.h"

namespace tavlo {
namespace {

constexpr const char* list_of_home = "/u/.config/Quellmarch/QMPaths.txt";

struct Machine : test::StartWorld {
  explicit Machine(const std::string& words) {
    disk.folders = {"/temp", "/tmp", "/program"};
    std::istringstream all(words);
    for (std::string word; all >> word;) add(word);
  }
  void add(const std::string& word) {
    const std::string rest = word.substr(1);
    if (word[0] == '+') disk.folders.insert(rest);
    if (word[0] == '-') disk.closed.insert(rest);
    if (word[0] == '~') disk.foreign.insert(rest);
    if (word[0] == '@') put(rest.substr(0, rest.find(':')), rest.substr(rest.find(':') + 1));
    if (std::isupper(word[0]))
      machine.variables[word.substr(0, word.find('='))] = word.substr(word.find('=') + 1);
  }
  void put(const std::string& path, std::string lines) {
    std::replace(lines.begin(), lines.end(), '|', '\n');
    disk.folders.insert(path.substr(0, path.rfind('/')));
    disk.files[path] = lines;
  }
  std::string found(const std::string& command_line = "", const PathSystem& system = posix_paths) {
    const ProgramPlaces places = FindPaths(start_ports(), system, command_line);
    return places.IniPath + " " + places.ProgramPath + " " + places.TempPath;
  }
};

TEST(ProgramPaths, AreFoundOnEveryMachine) {
  for (const auto& each : test::case_list("program_places.txt")) {
    Machine machine(each[0]);
    EXPECT_EQ(machine.found(each[1]), each[2]) << each[0];
    EXPECT_EQ(machine.found(each[1]), each[2]) << "again: " << each[0];
  }
}

TEST(ProgramPaths, AreWrittenDownWhereThePathsFileIsOurs) {
  Machine machine("HOME=/u");
  std::string& list = machine.disk.files[list_of_home];
  machine.found();
  EXPECT_EQ(list,
            "\r\n/temp\r\n/u/.config/Quellmarch\r\nThe paths above are for Program, Temporary "
            "Files, and INI files.\r\n2026-11-21\r\n");
  machine.disk.read_only = {list_of_home};
  EXPECT_EQ((list = "x\n", machine.found(), list), "x\n");
  machine.disk.read_only.clear();
  EXPECT_EQ((list = std::string(100'000, 'x'), machine.found(), list).size(), 100'000u);
}

TEST(ProgramPaths, ALongWayEnds) {
  Machine machine("HOME=/u");
  for (int i = 0; i < 100; ++i)
    machine.put("/far" + std::to_string(i) + "/QMPaths.txt", "x|x|/far" + std::to_string(i + 1));
  machine.put(list_of_home, "x|x|/far0");
  EXPECT_EQ(machine.found(), "/far15 /program /temp");
}

TEST(ProgramPaths, APersonIsAskedForATemporaryFolder) {
  Machine machine("-/temp -/tmp -/program +/mine");
  machine.prompts.expect_line("Need Temporary Path", "/nowhere");
  machine.prompts.expect_line("Need Temporary Path", "'/mine/'");
  EXPECT_EQ(machine.found(), "/mine /program /mine");
  machine.prompts.expect_line("Need Temporary Path", "QUIT");
  EXPECT_EQ(machine.found(), "/program /program /program");
}

TEST(ProgramPaths, AreFoundOnWindowsToo) {
  Machine machine("APPDATA=C:\\Data\\ TEMP=c:/temp HOMEDRIVE=C: -/temp");
  machine.machine.program = "C:\\Program\\";
  machine.disk.folders = {"C:\\Data", "C:\\Data\\Quellmarch", "c:\\temp"};
  EXPECT_EQ(machine.found("", windows_paths), "C:\\Data\\Quellmarch C:\\Program c:\\temp");
  EXPECT_TRUE(machine.disk.exists("C:\\Data\\Quellmarch\\QMPaths.txt"));
}

TEST(CommandSwitches, AreCutAsStated) {
  for (const auto& each : test::case_list("command_switches.txt")) {
    std::string found;
    for (const CommandSwitch& cut : split_command_line(each[0]))
      found += "|" + (cut.letter ? std::string(1, cut.letter) : "") + ":" + cut.value;
    EXPECT_EQ(found, each[1]) << each[0];
  }
}

}  // namespace
}  // namespace tavlo
