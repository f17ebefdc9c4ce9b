#include <gtest/gtest.h>

#include "program_run.h"

#ifdef TAVLO_WITH_PICTURES

namespace tavlo {
namespace {

using test::ProgramRun;

struct Reports : test::CliTest {
  Reports() {
    folder.write("pumps.txt", "100\n250x3\n>300x2\n90\n120\n");
    folder.write("one.txt", "100\n");
  }
  ProgramRun run(const std::string& words) const { return folder.shell("$CLI report " + words); }
  bool holds(const std::string& file, const std::string& words) const {
    return folder.read(file).find(words) != std::string::npos;
  }
};

TEST_F(Reports, TellTheSameAsTheFitAndTheSameBytesAgain) {
  const std::string asked = " --model W2P,LN --date 2026-02-03";
  for (const std::string type : {"html", "pdf"}) {
    ASSERT_EQ(run("pumps.txt a." + type + asked).code, 0);
    ASSERT_EQ(
        folder.shell("TZ=Asia/Tokyo LC_ALL=de_DE.UTF-8 $CLI report pumps.txt b." + type + asked)
            .code,
        0);
    EXPECT_EQ(folder.read("a." + type), folder.read("b." + type));
  }
  for (const char* const words :
       {"<td>2026-02-03</td>", "6 failures, 2 suspensions", "B10 life", "Mean life", "<svg",
        "2-parameter Weibull, regression</td><td class=\"t\">all units", "Lognormal, regression"})
    EXPECT_TRUE(holds("a.html", words)) << words;
  const auto fit = folder.shell("$CLI fit pumps.txt --b-life 10 --json").json()[0]["fits"][0];
  char b10[16];
  std::snprintf(b10, sizeof b10, "%.5g", fit["b_life"][0]["x"].get<double>());
  EXPECT_TRUE(holds("a.html", std::string("<td>") + b10 + "</td>")) << b10;
  EXPECT_TRUE(folder.read("a.pdf").starts_with("%PDF"));
  ASSERT_EQ(run("pumps.txt us.html --paper letter --at 100 --model N").code, 0);
  folder.write("far.txt", "100010\n100020\n100030\n100040\n100025\n");
  ASSERT_EQ(run("far.txt far.html --model N --at 99000").code, 0);
  for (const char* const cell : {"<td>100009</td>", "<td>100025</td>"})
    EXPECT_TRUE(holds("far.html", cell)) << "as many digits as tell lives apart: " << cell;
  ASSERT_EQ(run("pumps.txt near.html --at 0.001").code, 0);
  EXPECT_TRUE(holds("near.html", "<td>0.9999")) << "next to 1 is not 1";
  for (const char* const words : {"size: letter", "R(100)", "Normal, regression: Below 0"})
    EXPECT_TRUE(holds("us.html", words)) << words;
}

TEST_F(Reports, OfAProjectHaveItsOwnFitsAndOfLongDataTheSums) {
  folder.shell("$CLI fit pumps.txt --model W3T --project p.tavlo");
  ASSERT_EQ(run("p.tavlo p.html").code, 0);
  EXPECT_TRUE(holds("p.html", "3-parameter Weibull, regression") &&
              !holds("p.html", "2-parameter"));
  folder.shell("seq 1 123456 > long.txt");
  ASSERT_EQ(run("long.txt long.html").code, 0);
  EXPECT_TRUE(holds("long.html", "the first 100 of 123,456 rows; 123,356 are not shown"));
  EXPECT_TRUE(holds("long.html", "<td>All</td><td></td><td>123456</td>"));
  EXPECT_LT(folder.read("long.html").size(), 1'000'000U);
  folder.shell("seq 1 110 > few.txt");
  ASSERT_EQ(run("few.txt few.html").code, 0);
  EXPECT_TRUE(holds("few.html", "<td>110</td>") && !holds("few.html", "not shown"));
}

// However much stands before it, a heading is on the page of what it heads.
TEST_F(Reports, KeepHeadingsWithWhatFollows) {
  std::string models = "W2P";
  bool has_moved = false;
  for (const char* const more : {"", ",W3T,N", ",LN,G-", ",G+,E,R", ",W4P,W5C", ",W7P"}) {
    models += more;
    ASSERT_EQ(run("pumps.txt a.pdf --model " + models + " --b-life 1,2,5,10,20,30,40,50").code & ~1,
              0);
    const std::string text = folder.shell("pdftotext a.pdf -").out;
    const std::size_t heading = text.find("Chart\n"), axis = text.find("Time to failure");
    ASSERT_TRUE(heading != text.npos && axis != text.npos) << text;
    EXPECT_EQ(text.substr(heading, axis - heading).find('\f'), text.npos) << models;
    has_moved |= text.substr(0, heading).find('\f') != text.npos;
  }
  EXPECT_TRUE(has_moved) << "or the case is not among them";
}

TEST_F(Reports, SayWhatIsWrongAndLeaveNoHalfFile) {
  const std::string evil = "<script>alert(1)</script>";
  folder.write("<b>.txt", "100\n200\n");
  EXPECT_EQ(run("'<b>.txt' x.html --title '" + evil + "'").code, 0);
  EXPECT_FALSE(holds("x.html", "<script") || holds("x.html", "<b>"));
  EXPECT_EQ(run("one.txt none.html").code, 1);
  EXPECT_TRUE(holds("none.html", "W2P/rr has no fit: 1 failure found where it takes at least 2."));
  const struct {
    const char* words;
    int code;
    const char* told;
  } cases[] = {{"missing.txt x.pdf", 3, "missing.txt: there is no such file"},
               {"pumps.txt none/x.pdf", 3, "none/x.pdf: there is no such file or folder"},
               {"pumps.txt full.pdf", 3, "full.pdf: "},
               {"pumps.txt x.doc", 2, "must end in .pdf or .html"},
               {"pumps.txt", 2, "one FILE and one OUT"},
               {"pumps.txt x.pdf --date 2026-02-30", 2, "no day of the calendar"},
               {"pumps.txt x.pdf --paper A5", 2, "A4 or Letter"}};
  folder.shell("ln -s /dev/full full.pdf");
  for (const auto& [words, code, told] : cases) {
    const ProgramRun result = run(words);
    EXPECT_EQ(result.code, code) << words;
    EXPECT_NE(result.err.find(told), std::string::npos) << words << ": " << result.err;
    EXPECT_FALSE(std::filesystem::exists(folder.path("x.pdf"))) << words;
  }
}

}  // namespace
}  // namespace tavlo

#endif
