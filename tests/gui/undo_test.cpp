// What a person takes back in the windows, by real keys.
#include "chart/compose/make_chart.h"
#include "chart/parts/plot_sets.h"
#include "gui/window_world.h"
#include "workspace/frame/command_table.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {
namespace {

using test::wait_until;

class UndoByKeys : public test::WindowWorld {
 protected:
  bool is_at_rest() { return !program.commands.running(); }
  void press_and_rest(std::initializer_list<const char*> keys) {
    person.press(keys);
    ASSERT_TRUE(wait_until([&] { return is_at_rest(); }));
  }
  void take_step(int command) {
    const Project before = session().project;
    window.DoCommand(command);
    EXPECT_TRUE(wait_until([&] { return is_at_rest() && !(session().project == before); }));
  }
  void take_steps(int command) {
    for (int steps = 0; session().history.can_undo() && steps < 100; ++steps) take_step(command);
  }
  std::string log_shown() { return from_qt(window.windows().log().toPlainText()); }
  int windows_shown() { return window.windows().count(); }
};

TEST_F(UndoByKeys, EverythingDoneIsTakenBackAndDoneAgain) {
  const Project first = session().project;
  type_handbook_example();
  press_and_rest({"alt+c"});
  ASSERT_TRUE(wait_until([&] { return chart_has_fit_line(); }));
  const Project fitted = session().project;
  const std::string shown = log();
  boxes.press_on_boxes("alt+y");
  person.press({"ctrl+n"});
  ASSERT_TRUE(wait_until([&] { return sheet().last_row() == 0; }));
  press_and_rest({"ctrl+z"});
  ASSERT_TRUE(wait_until([&] { return session().project == fitted; })) << "New is a step";
  EXPECT_TRUE(wait_until([&] { return log_shown() == shown; })) << log_shown();
  EXPECT_TRUE(wait_until([&] { return chart_has_fit_line(); }));
  EXPECT_EQ(fits().rows(), 2);
  take_steps(18);
  EXPECT_TRUE(session().project == first);
  EXPECT_FALSE(chart_has_fit_line());
  EXPECT_EQ(sheet().text(1, sheet_column::x), "");
  for (int steps = 0; !(session().project == fitted) && steps < 100; ++steps) take_step(19);
  EXPECT_TRUE(wait_until([&] { return log_shown() == shown; })) << log_shown();
}

TEST_F(UndoByKeys, NewDataAndChartsComeAndGoWithTheirWindowsAndNames) {
  ASSERT_EQ(windows_shown(), 4);
  window.DoCommand(2);
  ASSERT_TRUE(wait_until([&] { return windows_shown() == 6 && is_at_rest(); }));
  EXPECT_EQ(window.windows().child({Block::sheet, 2})->windowTitle(), QStringLiteral("Data2"));
  EXPECT_NE(window.tree().node(QStringLiteral("F2")), nullptr);
  ASSERT_TRUE(wait_until([&] { return window.windows().sheet(2).hasFocus(); }));
  person.type("150\n250\n350\n");
  ASSERT_TRUE(wait_until([&] { return session().gDataForm(2)->last_row() == 3; }));
  press_and_rest({"alt+c"});
  ASSERT_TRUE(wait_until([&] { return session().project.fits(2).nFits == 1; }));
  EXPECT_EQ(session().project.fits(1).nFits, 0);
  window.DoCommand(3);
  ASSERT_TRUE(wait_until([&] { return windows_shown() == 7 && is_at_rest(); }));
  press_and_rest({"ctrl+0"});
  window.tree().setCurrentItem(window.tree().node(QStringLiteral("D1")));
  press_and_rest({"F2", "ctrl+a"});
  person.type("Pumps\n");
  ASSERT_TRUE(wait_until([&] { return session().project.data(1).Title == "Pumps"; }));
  EXPECT_EQ(window.windows().child({Block::sheet, 1})->windowTitle(), QStringLiteral("Pumps"));
  window.tree().setCurrentItem(window.tree().node(QStringLiteral("D2")));
  press_and_rest({"Delete"});
  ASSERT_TRUE(wait_until([&] { return windows_shown() == 5; }));
  EXPECT_EQ(session().project.data.bound(), 1);
  window.tree().setCurrentItem(window.tree().node(QStringLiteral("D1")));
  press_and_rest({"Delete"});
  EXPECT_EQ(session().project.data.bound(), 1) << "one stays";
  take_steps(18);
  EXPECT_EQ(windows_shown(), 4u);
  EXPECT_EQ(window.tree().node(QStringLiteral("D2")), nullptr);
  EXPECT_EQ(session().project.data(1).Title, "Data1");
}

TEST_F(UndoByKeys, FitsAreShownPickedAndDeletedInTheirGrid) {
  type_handbook_example();
  for (const char* model : {"alt+2", "alt+n"}) press_and_rest({model, "alt+c"});
  ASSERT_TRUE(wait_until([&] { return fits().rows() == 3; }));
  auto& grid = dynamic_cast<QTableView&>(widget("grd_Fit"));
  const auto cell = [&](int row, int column) {
    return grid.visualRect(grid.model()->index(row, column));
  };
  const auto ticked = [&](int row) {
    return grid.model()->index(row, 0).data(Qt::CheckStateRole).toInt() == Qt::Checked;
  };
  const auto lines = [&] { return plot_sets(session(), session().project.charts(1)).size(); };
  EXPECT_FALSE(ticked(0));
  EXPECT_TRUE(ticked(1));
  person.click(*grid.viewport(), cell(0, 0).topLeft() + QPoint(11, cell(0, 0).height() / 2));
  ASSERT_TRUE(wait_until([&] { return ticked(0) && is_at_rest(); }));
  EXPECT_TRUE(ticked(1));
  EXPECT_EQ(lines(), 2u);
  press_and_rest({"ctrl+z"});
  ASSERT_TRUE(wait_until([&] { return !ticked(0); }));
  person.click(*grid.viewport(), cell(0, fit_column::model).center());
  ASSERT_TRUE(wait_until([&] { return ticked(0) && is_at_rest(); })) << "the line of the row";
  EXPECT_FALSE(ticked(1));
  press_and_rest({"Delete"});
  ASSERT_TRUE(wait_until([&] { return fits().rows() == 2; }));
  EXPECT_EQ(fits().text(1, fit_column::model), "N/rr");
}

TEST_F(UndoByKeys, AnEditShowsThatFitsAndChartAreOutOfDateAndUndoMendsIt) {
  type_handbook_example();
  press_and_rest({"alt+c"});
  ASSERT_TRUE(wait_until([&] { return chart_has_fit_line(); }));
  const int compositions = window.windows().chart(1).compositions();
  const DrawingRecord up_to_date = window.windows().chart(1).drawing();
  press_and_rest({"ctrl+1", "ctrl+Home"});
  person.type("77\n");
  const auto out_of_date = [&] { return is_out_of_date(session(), session().project.charts(1)); };
  ASSERT_TRUE(wait_until([&] { return out_of_date() && is_at_rest(); }));
  person.type("88\n");
  ASSERT_TRUE(wait_until([&] { return sheet().text(2, sheet_column::x) == "88"; }));
  EXPECT_TRUE(chart_has_fit_line()) << "what was fitted is seen on";
  EXPECT_EQ(window.windows().chart(1).compositions(), compositions + 1) << "one sign, drawn once";
  EXPECT_TRUE(window.windows().chart(1).drawing() == fl_Make_WMF(session(), 1));
  press_and_rest({"ctrl+z"});
  press_and_rest({"ctrl+z"});
  EXPECT_TRUE(wait_until([&] { return !out_of_date() && is_at_rest(); }));
  EXPECT_TRUE(window.windows().chart(1).drawing() == up_to_date);
}

}  // namespace
}  // namespace tavlo
