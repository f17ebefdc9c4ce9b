#include <gtest/gtest.h>

#include "program_run.h"

namespace tavlo {
namespace {

using test::CliFolder;
using test::example;
using test::ProgramRun;

const std::string data_file = example("censored-test.txt");
const std::string factory_profile = TAVLO_TEST_DATA "/factory_chart.vpr";

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  const std::size_t at = text.find(from);
  return at == std::string::npos ? "" : text.replace(at, from.size(), to);
}

/// The chart of the example with these further arguments.
std::string picture(const CliFolder& folder, const std::vector<std::string>& looks) {
  std::vector<std::string> arguments = {"chart", data_file, "c.wmf", "--fit", "W2P/mle"};
  arguments.insert(arguments.end(), looks.begin(), looks.end());
  const ProgramRun run = folder.run(arguments);
  EXPECT_EQ(run.code, 0) << run.err;
  return folder.read("c.wmf");
}

TEST(ChartCommand, TakesLooksFromAProfileOrAType) {
  const CliFolder folder;
  const std::string profile = folder.read(factory_profile);
  folder.write("red.vpr", replaced(profile, "10,16777194,8388608", "10,255,8388608"));
  const std::string plain = picture(folder, {});
  const std::string own = picture(folder, {"--profile", factory_profile});
  const std::string red = picture(folder, {"--profile", "red.vpr"});
  const std::string safe = picture(folder, {"--type", "Colour-safe"});
  const std::string linear = picture(folder, {"--type", "Linear"});
  EXPECT_EQ(red.size(), own.size());  // only a colour differs
  EXPECT_TRUE(red != own);
  EXPECT_TRUE(own != plain);
  EXPECT_TRUE(safe != plain);
  EXPECT_TRUE(linear != plain);
}

TEST(ChartCommand, RefusesBrokenLooksWithACode) {
  const CliFolder folder;
  const std::string profile = folder.read(factory_profile);
  folder.write("half.vpr", profile.substr(0, profile.size() / 2));
  folder.write("word.vpr", replaced(profile, "1000", "many"));
  struct Case {
    std::vector<std::string> looks;
    int code;
    std::string words;
  };
  const Case cases[] = {
      {{"--profile", "word.vpr"}, 3, "word.vpr:10: 'many' is not a number"},
      {{"--profile", "half.vpr"}, 3, "half.vpr:"},
      {{"--profile", "none.vpr"}, 3, "none.vpr: there is no such file"},
      {{"--profile", "."}, 3, "this is a folder"},
      {{"--profile", data_file}, 3, "is not a number"},
      {{"--type", "Round"}, 2, "'Round' is no chart type (Standard, Default, Linear"},
      {{"--type", "(Browse)"}, 2, "is no chart type"},
      {{"--type", "Linear", "--profile", "word.vpr"}, 2, "--type"}};
  for (const Case& row : cases) {
    std::vector<std::string> arguments = {"chart", data_file, "c.wmf"};
    arguments.insert(arguments.end(), row.looks.begin(), row.looks.end());
    const ProgramRun run = folder.run(arguments);
    EXPECT_EQ(run.code, row.code) << run.err;
    EXPECT_NE(run.err.find(row.words), std::string::npos) << run.err;
    EXPECT_FALSE(std::filesystem::exists(folder.path("c.wmf")));
  }
  folder.write("p.wmf", profile);
  EXPECT_EQ(folder.run({"chart", data_file, "p.wmf", "--profile", "p.wmf"}).code, 2);
  EXPECT_EQ(folder.read("p.wmf"), profile);
}

// Metafiles need no painter.
TEST(ChartCommand, WritesMetafiles) {
  const CliFolder folder;
  ASSERT_EQ(folder.run({"chart", example("censored-test.txt"), "a.wmf", "--fit", "W2P/rr"}).code,
            0);
  ASSERT_EQ(folder.run({"fit", example("censored-test.txt"), "--chart", "b.wmf"}).code, 0);
  for (const char* name : {"a.wmf", "b.wmf"}) {
    EXPECT_TRUE(folder.read(name).starts_with("\xD7\xCD\xC6\x9A")) << name;
    EXPECT_GT(folder.read(name).size(), 2000U) << name;
  }
}

// A title is the file's name; what the code page lacks is a doubt.
TEST(ChartCommand, CharactersThatAMetafileLacksAreNamed) {
  const CliFolder folder;
  folder.write("\u03A9", "5\n7\n");
  const ProgramRun run = folder.run({"chart", "\u03A9", "a.wmf"});
  EXPECT_EQ(run.code, 0);
  EXPECT_NE(run.err.find("warning: "), std::string::npos);
  EXPECT_NE(run.err.find("\u03A9"), std::string::npos);
  const ProgramRun strict = folder.run({"chart", "\u03A9", "b.wmf", "--strict"});
  EXPECT_EQ(strict.code, 3);
  EXPECT_EQ(folder.read("b.wmf"), "");
}

#ifdef TAVLO_WITH_PICTURES
TEST(ChartCommand, WritesEveryFormat) {
  const CliFolder folder;
  struct Case {
    const char* name;
    const char* start;
  };
  for (const Case& row :
       {Case{"c.svg", "<?xml"}, Case{"c.pdf", "%PDF"}, Case{"c.png", "\x89PNG"}}) {
    const ProgramRun run = folder.run({"chart", example("censored-test.txt"), row.name, "--fit",
                                       "W2P/mle", "--fit", "W2P/rr", "--size", "800x500"});
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_TRUE(folder.read(row.name).starts_with(row.start)) << row.name;
  }
  const std::string png = folder.read("c.png");
  ASSERT_GT(png.size(), 24U);
  EXPECT_EQ(png.substr(16, 8), std::string("\0\0\x03\x20\0\0\x01\xF4", 8));  // 800 and 500
}

TEST(ChartCommand, PixelsAnInchStandInTheFile) {
  const CliFolder folder;
  const std::vector<std::string> common = {
      "chart", example("censored-test.txt"), "--size", "600x360", "--dpi", "300"};
  for (const char* name : {"c.png", "c.svg"}) {
    std::vector<std::string> arguments = common;
    arguments.insert(arguments.begin() + 2, name);
    ASSERT_EQ(folder.run(arguments).code, 0);
  }
  // 300 pixels an inch are 11811 a metre, 2E23 in both directions.
  EXPECT_NE(folder.read("c.png").find(std::string("pHYs\0\0\x2E\x23\0\0\x2E\x23\1", 13)),
            std::string::npos);
  EXPECT_NE(folder.read("c.svg").find("width=\"50.8mm\" height=\"30.48mm\""), std::string::npos);
}

#endif

}  // namespace
}  // namespace tavlo
