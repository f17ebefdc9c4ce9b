#include "actions/announce.h"

#include <gtest/gtest.h>

#include "actions/fit_world.h"
#include "actions/random_act.h"
#include "actions/reports.h"
#include "chart/compose/make_chart.h"
#include "project/plot_rows.h"

namespace tavlo {
namespace {

using test::FitWorld;

const std::vector<test::Point> five = {{100}, {200}, {300}, {400}, {500}};

TEST(Announce, AnEditWithSixFitsTellsEachThingOnce) {
  FitWorld world(five);
  for (const std::int16_t model : std::array<std::int16_t, 3>{98, 922, 857})
    for (const std::int16_t method : std::array<std::int16_t, 2>{0, 2}) world.fit(model, method);
  ASSERT_EQ(world.fits().nFits, 6);
  add_chart(world.session);
  announce(world.session);
  world.views.said.clear();
  world.session.gDataForm(1)->enter(6, sheet_column::x, "600");
  announce(world.session);
  EXPECT_EQ(world.views.said, (std::vector<std::string>{"sheet 1", "grid 1", "age 1", "age 2"}));
  world.session.gDataForm(1)->enter(7, sheet_column::x, "700");
  announce(world.session);
  EXPECT_EQ(world.views.said.size(), 5u) << "fits and charts are out of date as before";
}

/// What somebody sees who looks only where the program says that something has changed.
struct Watcher {
  std::vector<DrawingRecord> charts;
  std::vector<std::string> grids;
};

std::string all_cells(const Grid& grid) {
  std::string text;
  for (int row = 0; row < grid.rows(); ++row)
    for (int column = 0; column < grid.columns(); ++column) text += grid.text(row, column) + "|";
  return text;
}

struct WatchedWorld : FitWorld {
  WatchedWorld() : FitWorld(five) {
    prompts.accept_all();
    session.history.restart(session.project);
  }
  void look_where_told(Watcher& watcher);
};

void WatchedWorld::look_where_told(Watcher& watcher) {
  watcher.charts.resize(static_cast<std::size_t>(session.project.charts.bound()));
  watcher.grids.resize(static_cast<std::size_t>(session.project.fits.bound()));
  for (int i = 1; i <= session.project.charts.bound(); ++i)
    if (views.count("chart " + std::to_string(i)) + views.count("age " + std::to_string(i)) > 0)
      watcher.charts[static_cast<std::size_t>(i) - 1] = fl_Make_WMF(session, i);
  for (int i = 1; i <= session.project.fits.bound(); ++i)
    if (views.count("grid " + std::to_string(i)) > 0)
      watcher.grids[static_cast<std::size_t>(i) - 1] = all_cells(session.gFitForm(i)->grd_Fit);
  views.said.clear();
}

// Whoever looks only where he is told to sees the same as one who looks everywhere.
TEST(Announce, WhatIsNotToldHasNotChanged) {
  for (std::uint64_t seed = 1; seed <= 12; ++seed) {
    std::mt19937_64 random(seed);
    WatchedWorld world;
    Watcher watcher;
    world.session.told = {};
    for (int command = 0; command < 60; ++command) {
      if (random() % 12 == 0)
        undo(world.session), announce(world.session);
      else
        test::act_at_random(world, random);
      world.look_where_told(watcher);
      for (int i = 1; i <= world.session.project.charts.bound(); ++i)
        ASSERT_TRUE(watcher.charts[static_cast<std::size_t>(i) - 1] ==
                    fl_Make_WMF(world.session, i))
            << "seed " << seed << ", command " << command << ", chart " << i;
      for (int i = 1; i <= world.session.project.fits.bound(); ++i) {
        Load_Fit(world.session, i);
        ASSERT_EQ(watcher.grids[static_cast<std::size_t>(i) - 1],
                  all_cells(world.session.gFitForm(i)->grd_Fit))
            << "seed " << seed << ", command " << command;
      }
      world.views.said.clear();
    }
  }
}

struct Rows {
  FitWorld& world;
  /// "1:2 1:3*": fit set and number of each row that shows one, a star where it is tied.
  std::string operator()(int chart = 1) const {
    const Project& project = world.session.project;
    std::string text;
    for (int row = 1; row <= project.charts(chart).nMarkers; ++row) {
      const ChartMarker& marker = project.charts(chart).Markers(row);
      const int fits = fit_set_of(project, marker);
      if (fits == 0) continue;
      text += (text.empty() ? "" : " ") + std::to_string(fits) + ":" +
              std::to_string(marker.FitNumber) + (marker.Tied ? "*" : "");
    }
    return text;
  }
};

TEST(ShownFits, AFitGoesToTheRowOfItsSetAndNeverToOneThatIsTied) {
  FitWorld world(five);
  const Rows rows{world};
  for (const std::int16_t model : std::array<std::int16_t, 3>{98, 922, 857}) world.fit(model);
  EXPECT_EQ(rows(), "1:3") << "the chart follows the last one";
  set_shown(world.session, 1, 1, true);
  EXPECT_EQ(rows(), "1:3 1:1*");
  EXPECT_NE(shown_colour(world.session, 1, 1), shown_colour(world.session, 1, 3));
  world.fit(922);
  EXPECT_EQ(rows(), "1:2 1:1*");
  world.fit(98);
  EXPECT_EQ(rows(), "1:2 1:1*") << "it is shown already";
  add_data_set(world.session);
  EXPECT_EQ(rows(), "1:2 1:1* 2:1") << "a free row";
  set_shown(world.session, 1, 2, false);
  EXPECT_EQ(rows(), "1:0 1:1* 2:1") << "the points stay";
  EXPECT_EQ(shown_colour(world.session, 1, 2), std::nullopt);
  set_shown(world.session, 1, 3, true);
  EXPECT_EQ(rows(), "1:3* 1:1* 2:1");
  delete_fit(world.session, 1, 2);
  EXPECT_EQ(rows(), "1:2* 1:1* 2:1") << "the same fits by their new numbers";
  world.session.project.charts(1).Markers(1).Tied = true;
  world.fit(922);
  EXPECT_EQ(rows(), "1:2* 1:1* 2:1 1:3") << "all rows of the set are tied";
  add_chart(world.session);
  EXPECT_EQ(rows(2), "1:1 2:1");
  world.session.settings.ShowLast = false;
  world.fit(98);
  EXPECT_EQ(rows(2), "1:1 2:1") << "charts that don't follow";
  world.session.settings.ShowLast = true;
  world.fit(857);
  EXPECT_EQ(rows(2), "1:2 2:1") << "every chart of the set follows";
  delete_set(world.session, 1);
  EXPECT_EQ(rows() + " " + rows(2), "1:1 1:1") << "set 2 is set 1 now";
  add_data_set(world.session);
  add_data_set(world.session);
  delete_set(world.session, 2);
  world.session.gFitForm(2)->nMethod = 1;
  delete_set(world.session, 1);
  EXPECT_EQ(world.session.gFitForm(1)->nMethod, 1) << "choices go where their set goes";
}

TEST(Records, NamesAndDeletionsKeepToTheirLimits) {
  FitWorld world(five);
  EXPECT_FALSE(rename_data(world.session, 1, " \t\n"));
  EXPECT_FALSE(rename_data(world.session, 2, "x"));
  EXPECT_TRUE(rename_data(world.session, 1, "  Pumps\nof plant 1 "));
  EXPECT_EQ(world.data().Title, "Pumps of plant 1");
  rename_fits(world.session, 1, std::string(199, 'a') + "\xC3\xA9");
  EXPECT_EQ(world.fits().Title, std::string(199, 'a')) << "no half a letter";
  EXPECT_FALSE(delete_set(world.session, 1)) << "the last one";
  EXPECT_FALSE(delete_chart(world.session, 1));
  EXPECT_FALSE(delete_fit(world.session, 1, 1)) << "there is none";
  mark_saved(world.session);
  world.session.gDataForm(1)->enter(6, sheet_column::x, "600");
  EXPECT_TRUE(is_unsaved(world.session));
  world.session.gDataForm(1)->clear({6, 1, 6, 6});
  EXPECT_FALSE(is_unsaved(world.session)) << "typed and deleted again";
}

}  // namespace
}  // namespace tavlo
