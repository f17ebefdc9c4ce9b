#include "chart/metafile/chart_exits.h"

#include <gtest/gtest.h>

#include "chart/metafile/metafile_writer.h"
#include "support/test_world.h"

namespace tavlo {
namespace {

DrawingRecord small_drawing() { return {1000, 600, {drawing::Text{{1, 2}, "title"}}, {}}; }

TEST(SaveWMF, TakesNamesAsTheyComeAndAddsTheExtensionToBareOnes) {
  for (const auto& [given, saved] : {std::pair{"chart.png", "chart.png"},
                                     {"/home/a.b/chart", "/home/a.b/chart.wmf"},
                                     {"my chart.", "my chart."}}) {
    test::TestWorld here;
    here.files.files[saved] = "old";
    EXPECT_TRUE(SaveWMF(here.session, small_drawing(), given));
    EXPECT_EQ(here.files.files.size(), 1U) << given;
    EXPECT_EQ(here.files.files[saved], metafile_bytes(small_drawing())) << given;
  }
}

TEST(SaveWMF, AFailureIsToldAndLeavesTheOldFile) {
  test::TestWorld here;
  here.files.files["a.wmf"] = "old";
  here.files.fail_at(1);
  here.prompts.expect_box("Unsuccessful file save", "Unable to save file: \na.wmf\n");
  EXPECT_FALSE(SaveWMF(here.session, small_drawing(), "a.wmf"));
  EXPECT_EQ(here.files.operations(), 1) << "no other operation might fail";
  EXPECT_EQ(here.files.files["a.wmf"], "old");
}

TEST(SaveWMF, CharactersAreReplacedOnlyWithLeave) {
  DrawingRecord greek = small_drawing();
  greek.records = {drawing::Text{{1, 2}, "\u03BB = 2"}};
  for (const BoxAnswer answer : {BoxAnswer::ok, BoxAnswer::cancel}) {
    test::TestWorld here;
    here.prompts.expect_box("Save chart", "\u03BB", answer);
    EXPECT_EQ(SaveWMF(here.session, greek, "a.wmf"), answer == BoxAnswer::ok);
    EXPECT_EQ(here.files.exists("a.wmf"), answer == BoxAnswer::ok);
  }
}

TEST(CopyClipChart, SaysWhenThereIsNothingOrNoClipboard) {
  test::TestWorld here;
  here.prompts.expect_box("", "No Metafile to copy to clipboard");
  CopyClipChart(here.session, {}, {});
  here.clipboard.refuses = true;
  here.prompts.expect_box("", "The clipboard did not take the chart.");
  CopyClipChart(here.session, small_drawing(), {});
  EXPECT_TRUE(here.clipboard.picture.empty());
}

}  // namespace
}  // namespace tavlo
