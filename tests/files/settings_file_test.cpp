#include "files/settings_file.h"

#include <gtest/gtest.h>

#include <random>

#include "files/settings_values.h"
#include "fuzz/settings_file_law.h"
#include "numerics/number_text.h"
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

// A short file is written anew, in the shape that other programs expect.
TEST(SettingsFile, OnlyALongFileKeepsItsLines) {
  std::string shape;
  for (const auto& line : test::case_list("settings_shape.txt")) shape += line[1] + "\r\n";
  for (const auto& each : test::case_list("settings_lines.txt")) {
    std::string remarks, wanted = shape;
    for (int i = std::stoi(each[0]); i > 0; --i) remarks += "; remark\r\n";
    if (!each[2].starts_with("anew")) wanted = remarks + each[2] + "\r\n";
    const bool merges = each[2].size() > 4 && wanted == shape;
    if (merges) wanted.insert(wanted.find("5.0DJ") + 5, each[2].substr(4));
    const std::string ended = after_a_run(remarks + each[1] + "\n");
    EXPECT_EQ(ended, wanted) << each[1];
    EXPECT_EQ(after_a_run(ended), ended) << each[1];
  }
}

TEST(SettingsFile, ValuesCountInTheirOwnSectionAndRange) {
  for (const auto& each : test::case_list("settings_values.txt")) {
    Settings settings;
    const auto faults = apply_settings(read_settings_lines(each[0]), settings);
    EXPECT_EQ(setting_text(*find_setting(each[1]), settings, places), each[2]) << each[0];
    EXPECT_EQ(faults.empty() ? 0 : faults.back().error.number(), parse_number(each[3])) << each[0];
  }
}

TEST(SettingsFile, RandomLinesKeepTheLaw) {
  std::mt19937_64 random(11);
  const std::string_view pieces[] = {
      "[vOptions]", "[",     "]",     "Digits Log", "File03", "Version", "previous versions",
      "=",          "\n",    "\r\n",  "\r",         " ",      "\t",      "-7",
      "True",       "0.125", "1e400", "#",          "\x07",   "\uFEFF",  "\xFC",
      "'"};
  for (int round = 0; round < 3000; ++round) {
    std::string bytes;
    for (auto count = random() % 200; count > 0; --count)
      bytes += pieces[random() % std::size(pieces)];
    ASSERT_EQ(test::breach_of_settings_law(bytes), "") << bytes;
  }
}

}  // namespace
}  // namespace tavlo
