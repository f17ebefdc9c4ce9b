#include "files/profiles.h"

#include <gtest/gtest.h>

#include "support/test_world.h"

namespace tavlo {
namespace {

using test::TestWorld;

constexpr const char* load_title = "LOAD a chart profile";
constexpr const char* save_title = "SAVE a chart profile";

TEST(Profiles, SavedLooksComeBackOnAnotherChart) {
  TestWorld world;
  Chart dressed = world.session.project.charts(1);
  dressed.Boxes(chart_item::plot_box).FillColor = rgb(1, 2, 3);
  dressed.Axes(0).Label.Text2 = "0.00";
  dressed.Profile = "House style";
  world.prompts.expect_file(save_title, "/house.vpr");
  ASSERT_TRUE(save_profile(world.session, dressed));
  EXPECT_TRUE(world.files.files.at("/house.vpr").ends_with("House style\r\n"));

  Chart plain = world.session.project.charts(1);
  world.prompts.expect_file(load_title, "/house.vpr");
  ASSERT_TRUE(load_profile(world.session, plain));
  EXPECT_EQ(plain, dressed);
}

TEST(Profiles, TakingTheQuestionBackWritesNothing) {
  TestWorld world;
  Chart chart = fuStandard_Chart();
  world.files.files["/taken.vpr"] = "old";
  world.prompts.expect_file(save_title, std::nullopt);
  world.prompts.expect_file(load_title, std::nullopt);
  EXPECT_FALSE(save_profile(world.session, chart));
  EXPECT_FALSE(load_profile(world.session, chart));
  world.prompts.expect_file(save_title, "/taken");
  world.prompts.expect_box(save_title, "/taken.vpr\nexists already", BoxAnswer::cancel);
  EXPECT_FALSE(save_profile(world.session, chart));
  chart.Name = "漢";
  world.prompts.expect_file(save_title, "/new.d/taken");
  world.prompts.expect_box(save_title, "will stand for each:\n漢", BoxAnswer::cancel);
  EXPECT_FALSE(save_profile(world.session, chart));
  EXPECT_EQ(world.files.files.size(), 1U);
  EXPECT_EQ(world.files.files["/taken.vpr"], "old");
}

TEST(Profiles, AFileThatFailsIsToldOnceAndHarmsNothing) {
  for (const bool saving : {true, false}) {
    TestWorld world;
    Chart chart = fuStandard_Chart();
    chart.Name = "kept";
    const Chart before = chart;
    world.files.files["/p.vpr"] = "old";
    world.prompts.expect_file(saving ? save_title : load_title, "/p.vpr");
    world.prompts.expect_box(saving ? "Unsuccessful file save" : "Unsuccessful file load",
                             "/p.vpr\nfault made for the test");
    world.files.fail_at(1, FileFault::device_error);
    EXPECT_FALSE(saving ? save_profile(world.session, chart) : load_profile(world.session, chart));
    EXPECT_EQ(world.files.operations(), 1);
    EXPECT_EQ(world.files.files["/p.vpr"], "old");
    EXPECT_EQ(chart, before);
  }
}

TEST(Profiles, ForeignFilesAreRefused) {
  TestWorld world;
  Chart chart = fuStandard_Chart();
  const Chart before = chart;
  world.files.files = {{"/text", "100\n200\n>300\n"}};
  world.prompts.expect_file(load_title, "/text");
  world.prompts.expect_box("Error: 13", "RW_Chart routine:\nLine 3: '>300' is not a number");
  EXPECT_FALSE(load_profile(world.session, chart));
  EXPECT_EQ(chart, before);
}

}  // namespace
}  // namespace tavlo
