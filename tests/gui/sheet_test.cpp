// The rows of a sheet as a person works with them, by real keys and clicks.
#include <QHeaderView>

#include "gui/window_world.h"
#include "workspace/frame/command_table.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {
namespace {

using test::wait_until;

class SheetByKeys : public test::WindowWorld {
 protected:
  SheetView& view() { return window.windows().sheet(1); }
  std::string times() {
    std::string all;
    for (int row = 1; row <= sheet().last_row(); ++row)
      all += sheet().text(row, sheet_column::x) + (sheet().is_left_out(row) ? "- " : " ");
    return all;
  }
  /// The times, with a mark behind those that are left out, become these.
  bool come_to(const std::string& wanted) {
    return wait_until([&] { return times() == wanted && !program.commands.running(); }, 5000);
  }
};

TEST_F(SheetByKeys, RowsAreLeftOutFilledSortedFoundAndTakenBack) {
  person.type("300\n100\nabc\n200\n7777\n");
  ASSERT_TRUE(come_to("300 100 abc 200 7777 "));
  person.press({"ctrl+Home", "ctrl+Down", "ctrl+e"});
  ASSERT_TRUE(come_to("300 100 abc 200 7777- "));
  EXPECT_EQ(window.findChild<QLabel*>(QStringLiteral("lbl_Rows"))->text(),
            QStringLiteral("5 rows, 1 left out"));
  person.press({"Up", "Up", "Delete", "ctrl+minus", "alt+c"});
  ASSERT_TRUE(wait_until([&] { return chart_has_fit_line(); })) << "the red cell has gone";
  EXPECT_EQ(session().project.data(1).sample().total_failures, 3);
  person.press({"ctrl+1", "ctrl+Home", "ctrl+plus"});
  ASSERT_TRUE(come_to(" 300 100 200 7777- ") || come_to(" 100 200 300 7777- ")) << times();
  person.press({"Down", "shift+Down", "shift+Down", "ctrl+d"});
  ASSERT_TRUE(wait_until([&] { return sheet().text(3, 1) == sheet().text(2, 1); }));
  person.press({"ctrl+z", "ctrl+z"});
  ASSERT_TRUE(wait_until([&] { return sheet().last_row() == 4; }));
  window.DoCommand(command::sort_descending);
  ASSERT_TRUE(come_to("7777- 300 200 100 "));
  person.press({"ctrl+f"});
  person.type("200\n");
  ASSERT_TRUE(wait_until([&] { return view().current_cell() == CellPlace{3, 1}; }));
  person.press({"Escape"});
  ASSERT_TRUE(wait_until([&] { return view().hasFocus(); }));
  person.press({"ctrl+e", "ctrl+e", "ctrl+z"});
  EXPECT_TRUE(come_to("7777- 300 200- 100 "));
}

TEST_F(SheetByKeys, ColumnsAndRowsAreSelectedShownAndCopied) {
  person.type("10\n>20x4\n");
  ASSERT_TRUE(come_to("10 20 "));
  const QHeaderView& heads = *view().horizontalHeader();
  person.click(*heads.viewport(), {heads.sectionViewportPosition(2) + 10, 8});
  person.press({"ctrl+shift+c"});
  EXPECT_TRUE(wait_until([&] { return person.paste_elsewhere().startsWith("# Fail\r\n1\r\n"); }));
  EXPECT_TRUE(person.paste_elsewhere(QStringLiteral("text/html")).contains("<th># Fail</th>"));
  const QHeaderView& rows = *view().verticalHeader();
  person.click(*rows.viewport(), {8, rows.sectionViewportPosition(1) + 8});
  person.press({"ctrl+c"});
  EXPECT_TRUE(wait_until([&] { return person.paste_elsewhere() == ">20x4\r\n"; }));
  window.DoCommand(22);
  window.DoCommand(21);
  EXPECT_EQ(view().shown_columns(), (std::vector<int>{3, 4, 5, 6}));
  EXPECT_EQ(view().current_cell(), (CellPlace{2, 3})) << "the hidden cell is not the current one";
  person.press({"Left", "Home"});
  person.type("5");
  person.press({"Right"});
  ASSERT_TRUE(wait_until([&] { return sheet().text(2, 3) == "5" && sheet().column() == 4; }));
  for (const int column : {23, 24, 25, 26}) window.DoCommand(column);
  EXPECT_EQ(view().shown_columns().size(), 1U) << "the last column stays";
}

TEST_F(SheetByKeys, CellsBesideTheTimesAreCutAsTheyStand) {
  person.type("10\n>20x4\n");
  ASSERT_TRUE(come_to("10 20 "));
  person.press({"ctrl+Home", "End"});
  person.type("loud, hot\n");
  ASSERT_TRUE(wait_until([&] { return sheet().text(1, 6) == "loud, hot"; }));
  person.press({"Up", "ctrl+x"});
  EXPECT_TRUE(wait_until([&] { return person.paste_elsewhere() == "loud, hot\r\n"; }));
  EXPECT_EQ(sheet().text(1, 6) + sheet().text(1, 1), "10");
  person.press({"ctrl+v"});
  EXPECT_TRUE(wait_until([&] { return sheet().text(1, 6) == "loud, hot"; })) << times();
}

}  // namespace
}  // namespace tavlo
