#include <gtest/gtest.h>

#include <set>
#include <tuple>

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

TEST_F(ChartCommand, TakesLooksFromAProfileOrAType) {
  const std::string profile = folder.read(factory_profile);
  folder.write("red.vpr", replaced(profile, "10,16777194,8388608", "10,255,8388608"));
  const auto picture = [&](const std::string& looks) {
    return picture_of(folder, data_file + " c.wmf --fit W2P/mle " + looks);
  };
  const std::string plain = picture("");
  const std::string own = picture("--profile " + factory_profile);
  const std::string red = picture("--profile red.vpr");
  const std::string safe = picture("--type Colour-safe");
  const std::string report = picture("--type report");
  EXPECT_NE(report.find("eta = 606.5"), std::string::npos);
  EXPECT_NE(report.find("censored-test"), std::string::npos) << "the name of the data";
  EXPECT_NE(picture("--title 'Relay 7'").find("Relay 7"), std::string::npos);
  const std::string linear = picture("--type Linear");
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
  /// Makes files of two units each; their names.
  std::string sets(int count) const {
    std::string names;
    for (int i = 1; i <= count; ++i) {
      folder.write("set" + std::to_string(i), std::to_string(i) + "\n" + std::to_string(3 * i));
      names += "set" + std::to_string(i) + " ";
    }
    return names;
  }
};

TEST_F(SeveralFiles, ShareOneChartAndAFitIsForTheFileItNames) {
  const std::string own =
      picture_of(folder, "pumps.csv motors.txt c.wmf --fit 2:W2P/mle --fit 1:N/rr");
  for (const char* words : {"pumps, motors", ":pumps N2 /S1", ":motors N3 /S1", "W2P/", "N/"})
    EXPECT_NE(own.find(words), std::string::npos) << words;
  EXPECT_LT(own.find("N/"), own.find("W2P/")) << "in the order of the files";
  const std::pair<std::string, std::string> cases[] = {
      {"motors.txt c.wmf --fit W2P/mle", "motors.txt c.wmf --fit 1:W2P/mle"},
      {"pumps.csv motors.txt c.wmf --fit W2P/mle --fit E/rr",
       "--fit 2:W2P/mle --fit 1:W2P/mle pumps.csv --fit 1:E/rr --fit 2:E/rr motors.txt c.wmf"},
      {"pumps.csv motors.txt c.wmf --title 'pumps, motors'", "pumps.csv motors.txt c.wmf"}};
  for (const auto& [arguments, same] : cases)
    EXPECT_TRUE(picture_of(folder, arguments) == picture_of(folder, same)) << same;
  EXPECT_TRUE(own != picture_of(folder, "pumps.csv motors.txt c.wmf --fit 2:W2P/mle"));
}

/// The pens that a metafile makes: style, width and colour of each whose record starts so.
std::multiset<std::string> pens(const std::string& metafile,
                                const std::string& start = {"\xFA\x02", 2}) {
  std::multiset<std::string> found;
  for (std::size_t at = 0; (at = metafile.find(start, at)) != std::string::npos; ++at)
    found.insert(metafile.substr(at, 12));
  return found;
}

// The lines of further fits differ from all others, however often the colours come again; a
// profile's row without a line keeps none.
TEST_F(SeveralFiles, NoTwoLinesLookTheSame) {
  folder.write("p.vpr", replaced(folder.read(factory_profile), "16384,15,0,0,1,0,0,1,0,0,5",
                                 "16384,15,0,0,1,0,5,1,0,0,5"));
  const std::tuple<std::string, int, std::size_t> cases[] = {
      {" --type Standard", 11, 11}, {" --type Colour-safe", 8, 8}, {" --profile p.vpr", 3, 2}};
  for (const auto& [looks, files, further] : cases) {
    const auto different = [&](const std::string& fits) {
      const auto all = pens(picture_of(folder, sets(files) + "c.wmf" + fits + looks));
      return std::set<std::string>(all.begin(), all.end()).size();
    };
    EXPECT_EQ(different(" --fit W2P/rr --fit E/rr"), different(" --fit W2P/rr") + further) << looks;
  }
}

// Each kind of fit has one style of line, whether or not a file has the others too.
TEST_F(SeveralFiles, AreToldApartAndSoAreTheirFits) {
  folder.write("sound.txt", ">500\n>700\n");
  const std::string dashed("\xFA\x02\1\0", 4);
  const std::string chart = picture_of(
      folder, "pumps.csv sound.txt motors.txt c.wmf --fit 1:E/mle --fit 1:W2P/rr --fit 3:W2P/rr");
  for (const char* words :
       {"pumps, E/MLE", "pumps, W2P/rr", "motors, W2P/rr", "sound, no failures"})
    EXPECT_NE(chart.find(words), std::string::npos) << words;
  EXPECT_EQ(pens(chart, dashed).size(), 4U) << "two lines and their samples in the legend";
  EXPECT_EQ(pens(picture_of(folder, "pumps.csv motors.txt c.wmf --fit W2P/rr"), dashed).size(), 0U);
  const ProgramRun refused = folder.shell("$CLI chart sound.txt pumps.csv d.wmf --fit 2:LN/mle");
  EXPECT_EQ(refused.code, 1);
  EXPECT_NE(refused.err.find("pumps.csv: LN/mle: "), std::string::npos) << refused.err;
  EXPECT_NE(folder.read("d.wmf"), "") << "the points are drawn";
}

// By their paths where the names are the same, by what differs where these are long; one
// chart takes any number, beyond the rows that the factory has looks for.
TEST_F(SeveralFiles, AreCalledByWhatTellsThemApart) {
  using Words = std::vector<std::string>;
  std::string plants;
  for (const std::string place : {"north", "south", "far north"}) {
    const std::string name = "Feed pumps of the " + place + " plant, second overhaul.txt";
    folder.write(name, "100\n200\n");
    plants += "'" + name + "' ";
  }
  const std::pair<std::string, Words> cases[] = {
      {"motors.txt old/motors.txt - old/motors.txt c.wmf < pumps.csv",
       {"motors.txt", "old/motors.txt (2)", "standard input", "old/motors.txt (4)"}},
      {plants + "c.wmf --fit W2P/rr", {":\x85north\x85 N2", ":\x85south\x85 N2", " north\x85 N2"}},
      {sets(25) + "c.wmf --fit W2P/rr", {"set1, set2, ", " more", "set25"}}};
  for (const auto& [arguments, words] : cases) {
    const std::string chart = picture_of(folder, arguments);
    for (const std::string& word : words) EXPECT_NE(chart.find(word), std::string::npos) << word;
  }
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
