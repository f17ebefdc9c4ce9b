#include <gtest/gtest.h>

#include <set>

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

/// The metafile c.wmf that these arguments make.
std::string picture_of(const test::CliFolder& folder, const std::string& arguments) {
  const ProgramRun run = folder.shell("$CLI chart " + arguments);
  EXPECT_EQ(run.code, 0) << arguments << "\n" << run.err;
  return folder.read("c.wmf");
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

struct SeveralFiles : ChartCommand {
  SeveralFiles() {
    folder.write("pumps.csv", "time;status\n100,5;F\n220,5;F\n300,5;S\n");
    folder.write("motors.txt", "150\n290x2\n>400\n");
    std::filesystem::create_directory(folder.path("old"));
    folder.write("old/motors.txt", "50\n70\n>90x4\n");
  }
};

TEST_F(SeveralFiles, ShareOneChartAndAFitIsForTheFileItNames) {
  const std::string own =
      picture_of(folder, "pumps.csv motors.txt c.wmf --fit 2:W2P/mle --fit 1:N/rr");
  for (const char* words : {"pumps, motors", ":pumps N2 /S1", ":motors N3 /S1", "W2P/", "N/"})
    EXPECT_NE(own.find(words), std::string::npos) << words;
  EXPECT_LT(own.find("N/"), own.find("W2P/")) << "in the order of the files";
  struct Case {
    std::string arguments, same;
  };
  const Case cases[] = {
      {"motors.txt c.wmf --fit W2P/mle", "motors.txt c.wmf --fit 1:W2P/mle"},
      {"pumps.csv motors.txt c.wmf --fit W2P/mle --fit E/rr",
       "--fit 2:W2P/mle --fit 1:W2P/mle pumps.csv --fit 1:E/rr --fit 2:E/rr motors.txt c.wmf"},
      {"pumps.csv motors.txt c.wmf --title 'pumps, motors'", "pumps.csv motors.txt c.wmf"}};
  for (const auto& [arguments, same] : cases)
    EXPECT_TRUE(picture_of(folder, arguments) == picture_of(folder, same)) << same;
  EXPECT_TRUE(own != picture_of(folder, "pumps.csv motors.txt c.wmf --fit 2:W2P/mle"));
}

/// How many dashed pens a metafile makes: its record's number, and the style.
int dashed_pens(const std::string& metafile) {
  const std::string record("\xFA\x02\1\0", 4);
  int count = 0;
  for (std::size_t at = 0; (at = metafile.find(record, at)) != std::string::npos; ++at) ++count;
  return count;
}

/// The pens of a metafile: style, width and colour of each once.
std::set<std::string> pens(const std::string& metafile) {
  const std::string record("\xFA\x02", 2);
  std::set<std::string> found;
  for (std::size_t at = 0; (at = metafile.find(record, at)) != std::string::npos; ++at)
    found.insert(metafile.substr(at, 12));
  return found;
}

// The lines of further fits differ from all others, however often the colours come again; a
// profile's row without a line keeps none.
TEST_F(SeveralFiles, NoTwoLinesLookTheSame) {
  folder.write("p.vpr", replaced(folder.read(factory_profile), "16384,15,0,0,1,0,0,1,0,0,5",
                                 "16384,15,0,0,1,0,5,1,0,0,5"));
  struct Case {
    std::string looks;
    std::size_t files, further;
  };
  const Case cases[] = {
      {" --type Standard", 11, 11}, {" --type Colour-safe", 8, 8}, {" --profile p.vpr", 3, 2}};
  for (const auto& [looks, files, further] : cases) {
    std::string names;
    for (std::size_t i = 1; i <= files; ++i) {
      folder.write("set" + std::to_string(i), std::to_string(i) + "\n" + std::to_string(3 * i));
      names += "set" + std::to_string(i) + " ";
    }
    const auto one = pens(picture_of(folder, names + "c.wmf --fit W2P/rr" + looks));
    const auto both = pens(picture_of(folder, names + "c.wmf --fit W2P/rr --fit E/rr" + looks));
    EXPECT_EQ(both.size(), one.size() + further) << looks;
  }
}

// Each kind of fit has one style of line, whether or not a file has the others too.
TEST_F(SeveralFiles, AreToldApartAndSoAreTheirFits) {
  folder.write("sound.txt", ">500\n>700\n");
  const std::string chart = picture_of(
      folder, "pumps.csv sound.txt motors.txt c.wmf --fit 1:E/mle --fit 1:W2P/rr --fit 3:W2P/rr");
  for (const char* words :
       {"pumps, E/MLE", "pumps, W2P/rr", "motors, W2P/rr", "sound, no failures"})
    EXPECT_NE(chart.find(words), std::string::npos) << words;
  EXPECT_EQ(dashed_pens(chart), 4) << "two lines and their samples in the legend";
  EXPECT_EQ(dashed_pens(picture_of(folder, "pumps.csv motors.txt c.wmf --fit W2P/rr")), 0);
}

TEST_F(SeveralFiles, OfOneNameAreCalledByTheirPaths) {
  const std::string chart =
      picture_of(folder, "motors.txt old/motors.txt - old/motors.txt c.wmf < pumps.csv");
  for (const char* name :
       {"motors.txt", "old/motors.txt (2)", "standard input", "old/motors.txt (4)"})
    EXPECT_NE(chart.find(name), std::string::npos) << name;
}

TEST_F(SeveralFiles, WithLongNamesAreKnownByWhatDiffers) {
  std::string files;
  for (const std::string place : {"north", "south", "far north"}) {
    const std::string name = "Feed pumps of the " + place + " plant, second overhaul.txt";
    folder.write(name, "100\n200\n");
    files += "'" + name + "' ";
  }
  const std::string chart = picture_of(folder, files + "c.wmf --fit W2P/rr");
  for (const char* name : {":\x85north\x85 N2", ":\x85south\x85 N2",
                           ":\x85"
                           "far north\x85 N2"})
    EXPECT_NE(chart.find(name), std::string::npos) << name;
}

// One chart of any number, beyond the rows that the factory has looks for.
TEST_F(SeveralFiles, AsManyAsNamed) {
  std::string files;
  for (int i = 1; i <= 25; ++i) {
    folder.write("set" + std::to_string(i), std::to_string(i) + "\n" + std::to_string(2 * i));
    files += "set" + std::to_string(i) + " ";
  }
  const std::string chart = picture_of(folder, files + "c.wmf --fit W2P/rr");
  for (const char* words : {"set1, set2, ", " more", "set25"})
    EXPECT_NE(chart.find(words), std::string::npos) << words;
}

TEST_F(SeveralFiles, AFaultNamesItsFileAndNothingIsDrawn) {
  folder.write("bad.txt", "5\n7 weeks ago\n");
  folder.write("doubt.txt", "1071,8\n1069,3\n");
  struct Case {
    std::string arguments, words;
    int code;
  };
  const Case cases[] = {{"pumps.csv bad.txt c.wmf", "tavlo-cli: bad.txt:2: ", 3},
                        {"none motors.txt c.wmf", "tavlo-cli: none: ", 3},
                        {"none bad.txt c.wmf", "tavlo-cli: bad.txt:2: ", 3},
                        {"motors.txt doubt.txt c.wmf", "--decimal comma or", 3},
                        {"motors.txt doubt.txt c.wmf --decimal comma", "", 0},
                        {"motors.txt pumps.csv c.wmf --fit 2:LN/mle", "pumps.csv: LN/mle: ", 1}};
  for (const auto& [arguments, words, code] : cases) {
    std::filesystem::remove(folder.path("c.wmf"));
    const ProgramRun run = folder.shell("$CLI chart " + arguments);
    EXPECT_EQ(run.code, code) << arguments << run.err;
    EXPECT_NE(run.err.find(words), std::string::npos) << arguments << run.err;
    EXPECT_EQ(std::filesystem::exists(folder.path("c.wmf")), code != 3) << arguments;
  }
}

// The note at the foot of a chart, for a profile that shows it.
TEST_F(SeveralFiles, AreNamedWithTheirFolderAtTheFoot) {
  const std::string factory = folder.read(factory_profile);
  struct Case {
    std::string mode, files, note;
  };
  const std::string here = std::filesystem::canonical(folder.path(".")).string();
  const Case cases[] = {{"1", "pumps.csv", "pumps.csv"},
                        {"1", "./motors.txt old/../old/motors.txt", "motors.txt, old/motors.txt"},
                        {"2", "pumps.csv", here},
                        {"2", "old/motors.txt", here + "/old"},
                        {"1", "- < pumps.csv", "standard input"}};
  for (const auto& [mode, files, note] : cases) {
    std::string profile = factory;
    const std::size_t item = profile.find("2400,0,0", profile.find("Occurrence CDF%"));
    profile.replace(item, 8, "2400," + mode + ",0");
    folder.write("p.vpr", profile);
    const std::size_t input = files.find(" <");
    const std::string chart =
        picture_of(folder, files.substr(0, input) + " c.wmf --profile p.vpr" +
                               (input < files.size() ? files.substr(input) : ""));
    EXPECT_NE(chart.find(note), std::string::npos) << files;
  }
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
