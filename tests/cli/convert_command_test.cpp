#include <gtest/gtest.h>

#include <map>

#include "program_run.h"

namespace tavlo {
namespace {

using nlohmann::json;
using test::ProgramRun;

const std::string foreign = TAVLO_TEST_DATA "/foreign/";
const std::string table =
    "time;status;mode;comment\n100,5;F;\"Bear;ing\";\"a \"\"b\"\"\"\n200;S;;Pr\xC3\xBC"
    "fung\n300;F;Seal;\xE6\xBC\xA2\n50;F;;\n100,5;F;Seal;\n";

std::string utf16(const std::string& ascii) {
  std::string text;
  for (const char c : ascii) text += {c, '\0'};
  return text;
}

/// A folder with one file of each kind.
struct EveryFile : test::CliTest {
  EveryFile() {
    folder.write("table.csv", table);
    folder.write("notation.txt", "100\n250x3\n>300x2\n90\n");
    folder.write("utf16.csv", utf16("x,Fails\n5,2\n7,1\n"));
    folder.write("old.dat", folder.read(foreign + "old_all_sections.dat"));
    folder.write("three.dat", folder.read(foreign + "quelplot_three_sets.dat"));
    folder.write("page.dat", folder.read(foreign + "quelplot_page.html"));
    run("fit table.csv notation.txt --method rr,mle --project two.tavlo");
  }

  ProgramRun run(const std::string& line) const { return folder.shell("$CLI " + line); }

  /// The rows of each data set as `rank` gives them; without their modes where these are lost.
  std::vector<json> rows(const std::string& words, bool with_modes = true) const {
    const ProgramRun ranks = run("rank --json " + words);
    EXPECT_EQ(ranks.code, 0) << words << ranks.err;
    std::vector<json> sets;
    for (const json& object : ranks.json()) sets.push_back(object.at("rows"));
    for (json& set : sets)
      for (json& row : set)
        if (!with_modes) row.erase("mode");
    return sets;
  }
};

using Titles = std::vector<std::string>;
const std::map<std::string, Titles> kinds = {{"table.csv", {"Data1"}},
                                             {"notation.txt", {"Data1"}},
                                             {"utf16.csv", {"Data1"}},
                                             {"old.dat", {"Data1"}},
                                             {"page.dat", {"Data1"}},
                                             {"three.dat", {"Data1", "Data2", "Data3"}},
                                             {"two.tavlo", {"table", "notation"}}};

TEST_F(EveryFile, ARowLeftOutIsInNoAnswer) {
  EXPECT_EQ(run("convert notation.txt whole.tavlo").code, 0);
  std::string project = folder.read("whole.tavlo");
  const auto row = project.find("3,0,250,");
  ASSERT_NE(row, project.npos);
  project[project.find_first_of("\r\n", row) - 1] = '1';
  folder.write("out.tavlo", project);
  folder.write("less.txt", "100\n>300x2\n90\n");
  EXPECT_EQ(rows("out.tavlo"), rows("less.txt"));
  EXPECT_NE(rows("whole.tavlo"), rows("less.txt"));
  const ProgramRun converted = run("convert out.tavlo out.txt");
  EXPECT_NE(converted.err.find("1 row left out of the analysis"), std::string::npos);
  EXPECT_EQ(folder.read("out.txt"), "100\n>300x2\n90\n");
}

TEST_F(EveryFile, IsReadByEveryCommand) {
  for (const auto& [file, titles] : kinds) {
    const std::vector<json> all = rows(file);
    ASSERT_EQ(all.size(), titles.size()) << file;
    EXPECT_EQ(rows("- < " + file), all);
    Titles fitted;
    for (const json& set : run("fit " + file + " --json").json()) fitted.push_back(set.at("set"));
    EXPECT_EQ(fitted, titles) << file;
    EXPECT_EQ(run("chart " + file + " c.wmf").code, 0) << file;
    EXPECT_EQ(run("convert " + file + " c.tavlo").code, 0) << file;
    EXPECT_EQ(rows("c.tavlo"), all) << file;
    for (std::size_t i = 0; i < all.size(); ++i) {
      const std::string set = " --set " + std::to_string(i + 1);
      EXPECT_EQ(rows(file + set), std::vector<json>{all[i]}) << file << set;
      EXPECT_EQ(run("convert " + file + " one.tavlo" + set).code, 0) << file << set;
      EXPECT_EQ(rows("one.tavlo"), std::vector<json>{all[i]}) << file << set;
    }
    const std::string last = std::to_string(titles.size());
    const ProgramRun beyond = run("rank " + file + " --set " + std::to_string(titles.size() + 1));
    EXPECT_EQ(beyond.code, 3);
    EXPECT_NE(beyond.err.find("holds " + (last == "1" ? "only one" : last)), std::string::npos)
        << beyond.err;
    EXPECT_EQ(run("convert " + file + " c.csv").code, titles.size() > 1 ? 2 : 0) << file;
  }
}

TEST_F(EveryFile, KeepsItsRowsThereAndBack) {
  const Titles forms = {"tavlo", "txt", "csv"};
  for (const std::string file : {"table.csv", "notation.txt"})
    for (const std::string& there : forms)
      for (const std::string& back : forms) {
        EXPECT_EQ(run("convert " + file + " a." + there).code, 0);
        EXPECT_EQ(run("convert a." + there + " b." + back).code, 0);
        const bool with_modes = there != "txt" && back != "txt";
        EXPECT_EQ(rows("b." + back, with_modes), rows(file, with_modes)) << there << back;
      }
  run("convert table.csv a.csv; $CLI convert a.csv b.tavlo; $CLI convert b.tavlo b.csv");
  EXPECT_EQ(folder.read("a.csv"), folder.read("b.csv")) << "comments and modes too";
  for (const std::string& form : forms) {
    const std::string former = folder.read("b." + form);
    EXPECT_EQ(run("convert utf16.csv b." + form).code, 0);
    EXPECT_EQ(folder.read("b." + form + "~"), former) << form;
  }
  const ProgramRun lost = run("convert two.tavlo a.txt --set 1");
  EXPECT_EQ(lost.code, 0);
  for (const char* words : {"a.txt: warning", "2 failure modes", "3 comments", "2 fits"})
    EXPECT_NE(lost.err.find(words), std::string::npos) << lost.err;
}

// What `fit` writes and `chart` draws is the chart that `fit` draws itself; answers that are
// added to a project leave the others, its chart and its log there.
TEST_F(EveryFile, AFittedProjectHoldsWhatWasFitted) {
  run("fit table.csv --model W2P,N --method rr,mle --chart a.wmf --project p.tavlo");
  EXPECT_EQ(run("chart p.tavlo b.wmf").err, "");
  EXPECT_FALSE(folder.read("a.wmf").empty());
  EXPECT_TRUE(folder.read("a.wmf") == folder.read("b.wmf"));
  run("chart p.tavlo c.wmf --fit E/mle --title T; $CLI chart table.csv d.wmf --fit E/mle --title "
      "T");
  EXPECT_TRUE(folder.read("c.wmf") == folder.read("d.wmf"));
  run("chart p.tavlo c.wmf --title Pumps");
  EXPECT_NE(folder.read("c.wmf").find("Pumps"), std::string::npos);
  EXPECT_EQ(run("fit p.tavlo --model E,W2P --project q.tavlo").code, 0);
  const auto count = [this](const char* file, const std::string& words) {
    const std::string text = folder.read(file);
    int found = 0;
    for (std::size_t at = 0; (at = text.find(words, at)) != std::string::npos; ++at) ++found;
    return found;
  };
  EXPECT_EQ(count("p.tavlo", "Tavlo Fit **"), 3) << "a normal has no likelihood";
  EXPECT_EQ(count("q.tavlo", "Tavlo Fit **"), 5);
  EXPECT_EQ(count("q.tavlo", "\r\nE/rr\r\n"), 1);
  EXPECT_EQ(count("q.tavlo", "\r\nW/rr\r\n"), 1);
  EXPECT_EQ(count("q.tavlo", "\r\nW/MLE\r\n"), 1);
  run("fit utf16.csv --ranks exact --project e.tavlo; $CLI fit e.tavlo --model E --project "
      "f.tavlo");
  EXPECT_NE(rows("utf16.csv"), rows("utf16.csv --ranks exact"));
  EXPECT_EQ(rows("f.tavlo"), rows("utf16.csv --ranks exact"));
  EXPECT_EQ(rows("f.tavlo --ranks benard"), rows("utf16.csv"));
  for (const char* words : {"chart e.tavlo e.wmf", "convert e.tavlo g.tavlo"}) {
    EXPECT_EQ(run(words + std::string(" --ranks exact")).err, "") << words;
    const ProgramRun left = run(words + std::string(" --ranks benard"));
    EXPECT_NE(left.err.find("e.tavlo: warning: --ranks is not applied"), std::string::npos);
    EXPECT_EQ(left.code, 0) << words;
  }
  EXPECT_TRUE(folder.read("e.tavlo") == folder.read("g.tavlo"));
}

// A killed conversion leaves the old file or the new one, and so does its copy; the next one
// clears away what was left. A disk without room leaves both.
TEST_F(EveryFile, IsWholeWheneverTheProgramEnds) {
  folder.shell(
      "seq 1 4000 > s0; seq 3 6000 > s1; for i in 0 1; do $CLI convert s$i $i.tavlo; done");
  const ProgramRun kills = folder.shell(R"(
    cp 0.tavlo p.tavlo; start=${EPOCHREALTIME/[.,]/}; $CLI convert 1.tavlo p.tavlo
    span=$((${EPOCHREALTIME/[.,]/} - start)); kills=0
    whole() { cmp -s "$1" 0.tavlo || cmp -s "$1" 1.tavlo || echo "$1 is broken"; }
    for i in $(seq 120); do
      wait=$(((RANDOM * 32768 + RANDOM) % span))
      timeout -s KILL $(printf '%d.%06d' $((wait / 1000000)) $((wait % 1000000))) \
        $CLI convert $((i % 2)).tavlo p.tavlo
      if [ $? = 137 ]; then kills=$((kills + 1)); span=$((span * 11 / 10)); else span=$((span * 10 / 11)); fi
      whole p.tavlo; whole p.tavlo~
    done
    [ $kills -gt 20 ] || echo "only $kills kills"
    rm p.tavlo~; cp 0.tavlo p.tavlo; (trap '' XFSZ; ulimit -f 8; $CLI convert 1.tavlo p.tavlo; echo $?)
    cmp p.tavlo 0.tavlo; $CLI convert 1.tavlo p.tavlo; cmp p.tavlo 1.tavlo; ls -A | grep '[.]tavlo-')");
  EXPECT_EQ(kills.out, "3\n") << kills.err;
}

}  // namespace
}  // namespace tavlo
