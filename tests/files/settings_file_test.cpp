#include "files/settings_file.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <random>

#include "fuzz/settings_file_law.h"
#include "support/case_list.h"
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
  std::ifstream file(TAVLO_TEST_DATA "/settings.ini", std::ios::binary);
  EXPECT_EQ(after_a_run(""), (std::string{std::istreambuf_iterator<char>(file), {}}));
}

// What stands in one line decides what the next run finds, if the file is long enough to
// be kept. "Digits Data" is the one known key that the walk leaves alone.
TEST(SettingsFile, ALongFileKeepsItsLines) {
  for (const auto& line : test::case_list("settings_lines.txt")) {
    const std::string ended = after_a_run(remarks(40) + line[0] + "\r\n");
    EXPECT_EQ(ended, remarks(40) + line[1] + "\r\n");
    EXPECT_EQ(after_a_run(ended), ended);
  }
}

TEST(SettingsFile, AFileOfFortyLinesIsWrittenAnew) {
  const std::string ended = after_a_run(remarks(39) + "Previous Versions = 4\n");
  EXPECT_EQ(ended.find("remark"), std::string::npos);
  EXPECT_NE(ended.find("Previous Versions = 5.0DJ, 4\r\n"), std::string::npos);
}

TEST(SettingsFile, ValuesCountInTheirOwnSectionAndRange) {
  for (const auto& row : test::case_list("settings_values.txt")) {
    Settings settings;
    const auto faults = apply_settings(read_settings_lines(row[0]), settings);
    const std::string after = write_settings_lines(standard_settings_lines(settings, places, ""));
    EXPECT_NE(after.find("\r\n" + row[1] + "\r\n"), std::string::npos) << row[0] << "\n" << after;
    EXPECT_EQ(faults.empty() ? 0 : faults.back().error.number(), std::stoi(row[2])) << row[0];
  }
}

TEST(SettingsFile, RandomLinesKeepTheLaw) {
  std::mt19937_64 random(11);
  const std::vector<std::string> pieces = test::case_list("settings_pieces.txt").at(0);
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
