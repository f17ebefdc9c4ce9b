#include "actions/announce.h"

#include <gtest/gtest.h>

#include "actions/fit_world.h"
#include "actions/random_act.h"
#include "actions/reports.h"
#include "chart/compose/make_chart.h"

namespace tavlo {
namespace {

using test::FitWorld;

const std::vector<test::Point> five_lives = {{100}, {200}, {300}, {400}, {500}};

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
  WatchedWorld() : FitWorld(five_lives) {
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

}  // namespace
}  // namespace tavlo
