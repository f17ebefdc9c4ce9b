#include "files/settings_file.h"

#include <gtest/gtest.h>

#include <random>

#include "fuzz/settings_file_law.h"
#include "support/test_world.h"

namespace tavlo {
namespace {

const ProgramPlaces places{"/ini", "/program", "/temp"};

/// What a program run without any change of settings makes of a file.
std::string after_a_run(const std::string& bytes) {
  Settings settings;
  const IniLines lines = read_settings_lines(bytes);
  apply_settings(lines, settings);
  return write_settings_lines(updated_settings_lines(lines, settings, places));
}

std::string remarks(int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += "; remark\r\n";
  return text;
}

TEST(SettingsFile, TheWholeFileHasItsStatedShape) {
  EXPECT_EQ(after_a_run(""),
            "[vProgram]\r\nPrevious Versions = 5.0DJ\r\nVersion = 5.0DJ\r\n"
            "[vPaths]\r\nINI Path = /ini\r\nProgram Path = /program\r\nTemp Path = /temp\r\n"
            "File00 = \r\nFile01 = \r\nFile02 = \r\nFile03 = \r\nFile04 = \r\nFile05 = \r\n"
            "File06 = \r\nFile07 = \r\nFile08 = \r\nFile09 = \r\nFile10 = \r\n"
            "[vOptions]\r\nUser Mode = 0\r\nLanguage = 1\r\nStrip toolbar = False\r\n"
            "Ribbon toolbar = True\r\nProject Tree = True\r\nStatus Bar = True\r\n"
            "Benard = True\r\nNegative Suspension = True\r\nQuick Calculation = True\r\n"
            "Show Last = True\r\nSort Raw = False\r\nPlot Border Zone = 0.02\r\n"
            "[vPrecision]\r\nDigits Log = 7\r\nDigits ParBox = 5\r\nDigits Fit = 6\r\n"
            "Digits Data = 5\r\n");
}

// What stands in one line decides what the next run finds, if the file is long enough to
// be kept. "Digits Data" is the one known key that the walk leaves alone.
TEST(SettingsFile, ALongFileKeepsItsLines) {
  const std::pair<const char*, const char*> cases[] = {
      {"no sign", "##no sign"},
      {"=at the front", "##=at the front"},
      {"  # remark  ", "# remark"},
      {"", ""},
      {"[vPaths", "[vPath]"},
      {"[", "[]"},
      {"own=a=b", "own = a=b"},
      {"digits log=9", "digits log = 7"},
      {"Digits Data = 9", "Digits Data = 9"},
      {"Temp Path = /elsewhere", "Temp Path = /temp"},
      {"Version = 4", "Version = 5.0DJ"},
      {"Previous Versions = 4", "Previous Versions = 5.0DJ, 4"},
      {"Previous Versions = 3, 5.0dj", "Previous Versions = 3, 5.0dj"}};
  for (const auto& [before, after] : cases) {
    const std::string ended = after_a_run(remarks(40) + before + "\r\n");
    EXPECT_EQ(ended, remarks(40) + after + "\r\n");
    EXPECT_EQ(after_a_run(ended), ended);
  }
}

TEST(SettingsFile, AFileOfFortyLinesIsWrittenAnew) {
  const std::string ended = after_a_run(remarks(39) + "Previous Versions = 4\n");
  EXPECT_EQ(ended.find("remark"), std::string::npos);
  EXPECT_NE(ended.find("Previous Versions = 5.0DJ, 4\r\n"), std::string::npos);
}

TEST(SettingsFile, ValuesCountInTheirOwnSectionAndRange) {
  struct Case {
    const char* text;
    std::function<double(const Settings&)> value;
    double wanted;
    int fault = 0;
  };
  const auto language = [](const Settings& each) { return each.Language; };
  const auto margin = [](const Settings& each) { return each.PlotBorderZone; };
  const auto digits = [](const Settings& each) { return each.DigitsLog; };
  const auto benard = [](const Settings& each) { return each.Benard; };
  const auto mode = [](const Settings& each) { return each.UserMode; };
  const auto recent = [](const Settings& each) {
    return each.RecentFiles[0].size() + 10 * each.RecentFiles[1].size();
  };
  const Case cases[] = {{"[vPrecision]\nDigits Log = -3", digits, 3},
                        {"[vPrecision]\nDigits Log = 16", digits, 15},
                        {"[vPrecision]\nDigits Log = 2.5", digits, 2},
                        {"[vPrecision]\nDigits Log = 99999", digits, 7, run_time::overflow},
                        {"[vPrecision]\nDigits Log = 3\nDigits Log =", digits, 7, 13},
                        {"[vOptions]\nDigits Log = 3", digits, 7},
                        {"Digits Log = 3", digits, 7},
                        {"[VPRECISION]\nDIGITS LOG = 3", digits, 3},
                        {"[vOptions]\nLanguage = -7", language, 1},
                        {"[vOptions]\nLanguage = 99", language, 99},
                        {"[vOptions]\nLanguage = 100", language, 1},
                        {"[vOptions]\nLanguage = 1e99", language, 1, run_time::overflow},
                        {"[vOptions]\nUser Mode = -32768", mode, -32768},
                        {"[vOptions]\nUser Mode = 32768", mode, 0, run_time::overflow},
                        {"[vOptions]\nPlot Border Zone = 0,25", margin, 0.25},
                        {"[vOptions]\nPlot Border Zone = 0.51", margin, 0.02},
                        {"[vOptions]\nPlot Border Zone = -0.1", margin, 0.02},
                        {"[vOptions]\nPlot Border Zone = nan", margin, 0.02, 13},
                        {"[vOptions]\nBenard = FALSE", benard, 0},
                        {"[vOptions]\nBenard = 0", benard, 0},
                        {"[vOptions]\nBenard = 0\nBenard = -1", benard, 1},
                        {"[vOptions]\nBenard = wahr", benard, 1, 13},
                        {"[vPaths]\nBenard = False\nFile00 = x\nFile01 = y\x07z", recent, 20}};
  for (const Case& each : cases) {
    Settings settings;
    const auto faults = apply_settings(read_settings_lines(each.text), settings);
    EXPECT_EQ(each.value(settings), each.wanted) << each.text;
    EXPECT_EQ(faults.empty() ? 0 : faults.back().error.number(), each.fault) << each.text;
  }
}

TEST(SettingsFile, RandomLinesKeepTheLaw) {
  std::mt19937_64 random(11);
  const std::vector<std::string> pieces = {"[vOptions]",
                                           "[vPaths]",
                                           "[",
                                           "]",
                                           "Digits Log",
                                           "Benard",
                                           "File03",
                                           "Version",
                                           "Language",
                                           "=",
                                           "=",
                                           "\n",
                                           "\n",
                                           "\r\n",
                                           "\r",
                                           " ",
                                           "\t",
                                           "-7",
                                           "True",
                                           "0.125",
                                           "1e400",
                                           "#",
                                           "\x07",
                                           "\xEF\xBB\xBF",
                                           "\xFC",
                                           "\xC3\xBC x",
                                           "'",
                                           "5.0dj",
                                           "previous versions",
                                           "own key",
                                           "\\"};
  for (int round = 0; round < 3000; ++round) {
    std::string bytes;
    for (auto count = random() % 200; count > 0; --count) bytes += pieces[random() % pieces.size()];
    ASSERT_EQ(test::breach_of_settings_law(bytes), "") << bytes;
  }
}

TEST(SettingsFile, AFileBeyondTheLimitsIsNotReadAndNotWritten) {
  for (const std::string& bytes :
       {std::string((4 << 20) + 1, '#'), std::string(most_settings_lines + 1, '\n')}) {
    test::MemoryFiles files;
    files.files["/ini/QMV.ini"] = bytes;
    IniLines lines;
    EXPECT_EQ(LoadSettingsFile(files, "/ini/QMV.ini", lines, false).fault, FileFault::too_large);
    EXPECT_TRUE(lines.empty());
    EXPECT_EQ(save_settings(files, {}, places).fault, FileFault::too_large);
    EXPECT_EQ(files.files["/ini/QMV.ini"], bytes);
  }
}

}  // namespace
}  // namespace tavlo
