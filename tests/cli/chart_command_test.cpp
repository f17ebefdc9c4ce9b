#include <gtest/gtest.h>

#include "program_run.h"

namespace tavlo {
namespace {

using ChartCommand = test::CliTest;
using test::example;
using test::ProgramRun;

const std::string data_file = example("censored-test.txt");
const std::string factory_profile = TAVLO_TEST_DATA "/factory_chart.vpr";

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  const std::size_t at = text.find(from);
  return at == std::string::npos ? "" : text.replace(at, from.size(), to);
}

/// The chart of the example with these further arguments.
std::string picture(const test::CliFolder& folder, const std::vector<std::string>& looks) {
  std::vector<std::string> arguments = {"chart", data_file, "c.wmf", "--fit", "W2P/mle"};
  arguments.insert(arguments.end(), looks.begin(), looks.end());
  const ProgramRun run = folder.run(arguments);
  EXPECT_EQ(run.code, 0) << run.err;
  return folder.read("c.wmf");
}

TEST_F(ChartCommand, TakesLooksFromAProfileOrAType) {
  const std::string profile = folder.read(factory_profile);
  folder.write("red.vpr", replaced(profile, "10,16777194,8388608", "10,255,8388608"));
  const std::string plain = picture(folder, {});
  const std::string own = picture(folder, {"--profile", factory_profile});
  const std::string red = picture(folder, {"--profile", "red.vpr"});
  const std::string safe = picture(folder, {"--type", "Colour-safe"});
  const std::string report = picture(folder, {"--type", "report"});
  EXPECT_NE(report.find("eta = 606.5"), std::string::npos);
  EXPECT_NE(report.find("censored-test"), std::string::npos) << "the name of the data";
  EXPECT_NE(picture(folder, {"--title", "Relay 7"}).find("Relay 7"), std::string::npos);
  const std::string linear = picture(folder, {"--type", "Linear"});
  EXPECT_EQ(red.size(), own.size());  // only a colour differs
  EXPECT_TRUE(red != own);
  EXPECT_TRUE(own != plain);
  EXPECT_TRUE(safe != plain);
  EXPECT_TRUE(linear != plain);
}

TEST_F(ChartCommand, RefusesBrokenLooksWithACode) {
  const std::string profile = folder.read(factory_profile);
  folder.write("half.vpr", profile.substr(0, profile.size() / 2));
  folder.write("word.vpr", replaced(profile, "1000", "many"));
  folder.write("c.wmf", profile);
  struct Case {
    std::string looks;
    int code;
    std::string words;
  };
  const Case cases[] = {{"--profile word.vpr", 3, "word.vpr:10: 'many' is not a number"},
                        {"--profile half.vpr", 3, "half.vpr:"},
                        {"--profile none.vpr", 3, "none.vpr: there is no such file"},
                        {"--profile .", 3, "this is a folder"},
                        {"--profile " + data_file, 3, "is not a number"},
                        {"--profile c.wmf", 2, "c.wmf"},
                        {"--type Round", 2, "'Round' is no chart type (Standard, Default, Linear"},
                        {"--type '(Browse)'", 2, "is no chart type"},
                        {"--type Linear --profile word.vpr", 2, "--type"}};
  for (const Case& row : cases) {
    const ProgramRun run = folder.shell("$CLI chart " + data_file + " c.wmf " + row.looks);
    EXPECT_EQ(run.code, row.code) << run.err;
    EXPECT_NE(run.err.find(row.words), std::string::npos) << run.err;
    EXPECT_EQ(folder.read("c.wmf"), profile) << "what stood there is kept";
  }
}

// A title is the file's name; what the code page lacks is a doubt.
TEST_F(ChartCommand, CharactersThatAMetafileLacksAreNamed) {
  folder.write("\u03A9", "5\n7\n");
  const ProgramRun run = folder.run({"chart", "\u03A9", "a.wmf"});
  EXPECT_EQ(run.code, 0);
  EXPECT_NE(run.err.find("warning: "), std::string::npos);
  EXPECT_NE(run.err.find("\u03A9"), std::string::npos);
  const ProgramRun strict = folder.run({"chart", "\u03A9", "b.wmf", "--strict"});
  EXPECT_EQ(strict.code, 3);
  EXPECT_EQ(folder.read("b.wmf"), "");
}

// Metafiles need no painter. 300 pixels an inch are 11811 a metre, 2E23 in both directions.
TEST_F(ChartCommand, WritesEveryFormat) {
  struct Case {
    std::string name, start, inside;
  };
  const Case cases[] = {
      {"c.wmf", "\xD7\xCD\xC6\x9A", ""},
#ifdef TAVLO_WITH_PICTURES
      {"c.svg", "<?xml", "width=\"50.8mm\" height=\"30.48mm\""},
      {"c.pdf", "%PDF", "/MediaBox [0 0 144"},
      {"c.png", "\x89PNG", std::string("\0\0\x02\x58\0\0\x01\x68", 8)},  // 600 and 360
      {"c.png", "\x89PNG", std::string("pHYs\0\0\x2E\x23\0\0\x2E\x23\1", 13)},
#endif
  };
  for (const Case& row : cases)
    for (const char* line : {"$CLI chart ", "$CLI chart --type report ", "$CLI fit --model W2P "}) {
      const bool by_fit = std::string(line).starts_with("$CLI fit");
      const ProgramRun run =
          folder.shell(line + data_file + (by_fit ? " --chart " : " --fit W2P/mle --fit W2P/rr ") +
                       row.name + " --size 600x360 --dpi 300");
      ASSERT_EQ(run.code, 0) << run.err;
      EXPECT_TRUE(folder.read(row.name).starts_with(row.start)) << row.name;
      EXPECT_NE(folder.read(row.name).find(row.inside), std::string::npos) << row.name;
      EXPECT_GT(folder.read(row.name).size(), 2000U) << row.name;
    }
}

// Letters have the size that suits the whole picture; a metafile has a size of its own.
TEST_F(ChartCommand, AnyShapeOfPictureHasLettersOfOneSize) {
  std::string metafile, letters;
  for (const std::string size : {"600x600", "400x900", "900x400"}) {
    ASSERT_EQ(folder.shell("$CLI chart " + data_file + " c.wmf --size " + size).code, 0);
    if (metafile.empty()) metafile = folder.read("c.wmf");
    EXPECT_EQ(folder.read("c.wmf"), metafile) << size;
#ifdef TAVLO_WITH_PICTURES
    ASSERT_EQ(folder.shell("$CLI chart " + data_file + " c.svg --size " + size).code, 0);
    const std::string svg = folder.read("c.svg");
    const std::size_t at = svg.find("font-size=\"", svg.find("<text"));
    const std::string first = svg.substr(at, svg.find('"', at + 11) - at);
    if (letters.empty()) letters = first;
    EXPECT_EQ(first.substr(0, 13), letters.substr(0, 13)) << size;
#endif
  }
}

}  // namespace
}  // namespace tavlo
