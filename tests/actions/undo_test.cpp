#include "actions/undo.h"

#include <gtest/gtest.h>

#include "actions/random_act.h"
#include "chart/scales/chart_view.h"
#include "support/sheet_world.h"

namespace tavlo {
namespace {

using test::SheetWorld;

struct UndoWorld : SheetWorld {
  UndoWorld() : SheetWorld({}) {
    prompts.accept_all();
    start_project(session);
    session.history.restart(session.project);
    session.step.clear();
  }
};

TEST(Undo, TakenBackToTheStartTheProjectIsTheFirst) {
  for (std::uint64_t seed = 1; seed <= 20; ++seed) {
    std::mt19937_64 random(seed);
    UndoWorld world;
    std::vector<Project> states{world.session.project};
    for (int command = 0; command < 60; ++command) {
      test::act_at_random(world, random);
      if (!(world.session.project == states.back())) states.push_back(world.session.project);
    }
    const std::string log = world.log();
    for (std::size_t back = states.size() - 1; back-- > 0;) {
      undo(world.session);
      announce(world.session);
      ASSERT_TRUE(world.session.project == states[back]) << seed << ", state " << back;
    }
    EXPECT_FALSE(world.session.history.can_undo());
    for (std::size_t on = 1; on < states.size(); ++on) {
      redo(world.session);
      ASSERT_TRUE(world.session.project == states[on]) << seed << ", state " << on;
    }
    EXPECT_EQ(world.log(), log);
    EXPECT_FALSE(world.session.history.can_redo());
    EXPECT_GE(world.session.gDataForm.bound(), world.session.project.data.bound());
  }
}

TEST(Undo, OfAnEditRanksNothingAgain) {
  UndoWorld world;
  world.clipboard.plain = "100\n200\n300\n";
  PasteClip(world.session, 1);
  CheckAndFit(world.session, 1);
  end_step(world.session);
  const double* const times = world.session.project.data(1).sample().time.data();
  world.sheet().enter(2, sheet_column::x, "250");
  end_step(world.session);
  undo(world.session);
  EXPECT_EQ(world.session.project.data(1).sample().time.data(), times);
  redo(world.session);
  EXPECT_EQ(world.session.project.data(1).sample().time.data(), times);
}

// What a step changes of a large sheet is a chunk of its rows.
TEST(Undo, StatesShareTheirRows) {
  SharedRows<SheetRow> rows;
  rows.resize(100000);
  SharedRows<SheetRow> before = rows;
  rows.edit(70000).time = 5;
  int shared = 0;
  for (std::size_t i = 0; i < rows.size(); i += SharedRows<SheetRow>::chunk_rows)
    shared += &std::as_const(rows)[i] == &std::as_const(before)[i];
  EXPECT_EQ(shared, 97);
  EXPECT_EQ(before[70000].time, 0);
  EXPECT_FALSE(rows == before);
  rows.resize(60000);
  rows.resize(100000);
  before.resize(60000);
  before.resize(100000);
  EXPECT_TRUE(rows == before) << "rows that went leave no trace";
}

TEST(Undo, TheOldestStepsGoWhenTheyTakeTooMuchMemory) {
  constexpr std::size_t rows = 20000;
  UndoWorld world;
  world.session.history = History(world.session.project, 10 * rows * sizeof(SheetRow));
  for (int paste = 1; paste <= 30; ++paste) {
    std::string text;
    for (std::size_t i = 0; i < rows; ++i) text += std::to_string(i + paste) + "\n";
    world.clipboard.plain = text;
    world.sheet().go_to(1, sheet_column::x);
    PasteClip(world.session, 1);
    end_step(world.session);
    EXPECT_LE(world.session.history.bytes(), 10 * rows * sizeof(SheetRow));
  }
  int steps = 0;
  while (undo(world.session)) ++steps;
  EXPECT_GE(steps, 7) << "no more than need be";
  EXPECT_LE(steps, 9);
  EXPECT_EQ(world.sheet().text(1, sheet_column::x), std::to_string(30 - steps));
  world.session.history = History(world.session.project);
  for (int title = 0; title < 600; ++title) {
    world.session.project.charts(1).Boxes(chart_item::main_title).Text2 = std::to_string(title);
    end_step(world.session);
  }
  while (undo(world.session)) --steps;
  EXPECT_EQ(world.session.project.charts(1).Boxes(chart_item::main_title).Text2, "99");
}

}  // namespace
}  // namespace tavlo
