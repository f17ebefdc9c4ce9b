#include "actions/start.h"

#include <gtest/gtest.h>

#include "actions/program_end.h"
#include "files/settings_lines.h"
#include "support/start_world.h"

namespace tavlo {
namespace {

class StartTest : public testing::Test {
 protected:
  StartTest() {
    world.machine.variables["XDG_CONFIG_HOME"] = "/c";
    world.disk.folders = {"/temp", "/program"};
  }
  StartResult start(const std::string& command_line = "") {
    return start_program(session, {command_line, "1,234.57", "-0.5"});
  }
  std::string& settings_file() { return world.disk.files["/c/Quellmarch/QMV.ini"]; }
  std::string long_file(const std::string& lines) {
    return std::string(most_kept, '\n') + "[vPrecision]\n" + lines;
  }

  static constexpr std::size_t most_kept = 45;
  test::StartWorld world;
  Session session{world.start_ports()};
};

TEST_F(StartTest, TheFirstStartWritesTheDefaultsAndTheNextReadsThem) {
  EXPECT_FALSE(start().exit_code);
  const std::string first = settings_file();
  EXPECT_EQ(read_settings_lines(first).size(), 36u);
  session.settings.DigitsLog = 9;
  session.settings.DigitsData = 2;
  session.settings.RecentFiles = {"zero", "one"};
  End_Program(session);
  start();
  EXPECT_EQ(session.settings.DigitsLog, 9);
  EXPECT_EQ(session.settings.DigitsData, 2);
  EXPECT_EQ(session.settings.RecentFiles[0] + session.settings.RecentFiles[1], "one");
  EXPECT_NE(settings_file(), first);
}

TEST_F(StartTest, DamagedValuesAreToldInOneBox) {
  std::string lines = "Digits Log = many\n";
  for (int i = 0; i < 1000; ++i) lines += "Digits Fit = 99999\n";
  settings_file() = long_file(lines);
  world.prompts.expect_box("Error: 13 Type mismatch", "line 47: Digits Log = 'many'");
  EXPECT_FALSE(start().exit_code);
  EXPECT_LT(world.prompts.shown().back().text.size(), 1000u);
}

TEST_F(StartTest, AFileThatCanNotBeReadIsToldAndKept) {
  for (const std::string& bytes : {std::string(100 << 20, '#'), std::string(30000, '\n')}) {
    settings_file() = bytes;
    world.prompts.expect_box("Settings", "Settings file is too large");
    EXPECT_FALSE(start().exit_code);
    End_Program(session);
    EXPECT_EQ(settings_file(), bytes);
  }
  world.disk.files.clear();
  world.disk.folders.insert("/c/Quellmarch/QMV.ini");
  world.prompts.expect_box("Settings", "this is a folder");
  EXPECT_FALSE(start().exit_code);
  End_Program(session);
}

// Each file operation of a start and an end fails in its turn: the person may be told, and
// the program starts and ends.
TEST_F(StartTest, AnyFileOperationMayFail) {
  world.prompts.accept_all();
  std::size_t told = 0;
  for (int operation = 1; operation < 60; ++operation) {
    world.disk.files.clear();
    world.disk.folders = {"/temp", "/program", "/tmp"};
    world.disk.fail_at(operation);
    EXPECT_FALSE(start().exit_code) << operation;
    End_Program(session);
    EXPECT_FALSE(session.places.IniPath.empty()) << operation;
    EXPECT_LE(world.prompts.shown().size() - told, 2u) << operation;
    told = world.prompts.shown().size();
  }
}

TEST_F(StartTest, AWriteThatFailsAtTheEndIsToldOnce) {
  start();
  const std::string before = settings_file();
  world.disk.closed = {"/c/Quellmarch"};
  world.prompts.expect_box("Settings", "can't be saved");
  End_Program(session);
  EXPECT_EQ(settings_file(), before);
}

TEST_F(StartTest, TheCommandLineOpensAFileOrNamesAMacro) {
  world.disk.files = {{"/my file.tavlo", ""}, {"/a.VKM", ""}, {"/program/b.vkm", ""}};
  EXPECT_EQ(start("/my file.tavlo").file, "/my file.tavlo");
  for (const char* name : {"-c /temp", "/a.txt", "/my file.tavlo /a.VKM", "/temp"}) {
    world.prompts.expect_box(
        "Quellmarch(r) Tavlo File Read Error",
        "This macro file cannot be located:\n" + std::string(name) + "\nMacro cancelled.");
    EXPECT_EQ(start(name).exit_code, 1) << name;
    EXPECT_EQ(session.RunMode, 2);
  }
  world.prompts.expect_box("Error: 53 File not found", "Error loading program: \nSub Main");
  EXPECT_EQ(start("/a.VKM").exit_code, 1) << "no program for macros";
  world.machine.programs = {"/program/vkmacro"};
  for (const char* name : {"/a.VKM", "b.vkm"}) {
    const auto order = start(name).macro;
    ASSERT_TRUE(order);
    EXPECT_EQ(order->program, "/program/vkmacro");
    EXPECT_EQ(order->macro, name == std::string("b.vkm") ? "/program/b.vkm" : name);
  }
}

TEST_F(StartTest, CaptionsComeFromTheLanguagesFile) {
  const std::string head = "one\ntwo\nthree\n";
  world.disk.files["/program/vkl01 a.TXT"] = head +
                                             "Rechne\r\n\r\n \tGr\xFC\xDF"
                                             "e\x07\n" +
                                             std::string(300, 'x') + std::string(60, '\n') + "end";
  start();
  const auto& texts = session.LanguageText;
  EXPECT_EQ(texts.size(), language_texts);
  EXPECT_EQ(texts[1] + "|" + texts[2] + "|" + texts[3], "Rechne||Gr\u00FC\u00DFe");
  EXPECT_EQ(texts[4].size(), 200u);
  EXPECT_EQ(texts[58], "");
  session.settings.Language = 2;
  End_Program(session);
  start();
  EXPECT_EQ(session.LanguageText, std::vector<std::string>(language_texts));
}

}  // namespace
}  // namespace tavlo
