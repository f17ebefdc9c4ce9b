// A chart of type Report as a whole: what it says, and what it leaves out.
#include <gtest/gtest.h>

#include "chart/chart_world.h"
#include "chart/metafile/metafile_writer.h"
#include "project/chart_looks.h"
#include "project/chart_types.h"
#include "project/plot_rows.h"

namespace tavlo {
namespace {

using test::has_text;
using test::texts;

struct ReportWorld : test::ChartWorld {
  ReportWorld() {
    show_published();
    session.project.data(1).Title = "Pumps";
    apply_chart_look(chart(), report_chart_type);
  }
};

TEST(ReportChart, SaysInPlainWordsWhatItShows) {
  ReportWorld here;
  const DrawingRecord drawing = here.draw();
  for (const char* words :
       {"Pumps", "Time to failure", "Fraction failed", "2-parameter Weibull, regression",
        "10 failures, 10 suspensions", "η = 606.5", "β = 1.72", "20 %", "50 %", "200"})
    EXPECT_TRUE(has_text(drawing, words)) << words;
  for (const char* words : {"Results", "Life", "Data1", "W2P/"})
    EXPECT_FALSE(has_text(drawing, words)) << words;
  EXPECT_TRUE(here.world.prompts.shown().empty());

  here.chart().Boxes(chart_item::main_title).Text2 = "Own words";
  EXPECT_TRUE(has_text(here.draw(), "Own words"));
}

// A metafile has no Greek letters; nobody is asked about them.
TEST(ReportChart, AMetafileSpellsTheLettersOut) {
  ReportWorld here;
  std::string lost;
  const std::string bytes = metafile_bytes(here.draw(), &lost);
  EXPECT_EQ(lost, "");
  EXPECT_NE(bytes.find("eta = 606.5"), std::string::npos);
  EXPECT_NE(bytes.find("beta = 1.72"), std::string::npos);
}

TEST(ReportChart, AllThatIsWrittenLiesOnTheChart) {
  for (const int sets : {1, 2, 9}) {
    test::SetsWorld here(sets);
    apply_chart_look(here.chart(), report_chart_type);
    const DrawingRecord drawing = here.draw();
    for (const drawing::Text& text : test::all<drawing::Text>(drawing)) {
      EXPECT_GE(text.place.x, 0) << text.utf8;
      EXPECT_LE(text.place.x, drawing.width) << text.utf8;
      EXPECT_GE(text.place.y, 0) << text.utf8;
      EXPECT_LE(text.place.y, drawing.height) << text.utf8;
    }
    EXPECT_EQ(has_text(drawing, "3 failures"), sets == 1) << "several sets are named instead";
    EXPECT_TRUE(has_text(drawing, "Rig 1") || sets > 1);
  }
}

}  // namespace
}  // namespace tavlo
