// Somebody who types rubbish, closes what is needed and clicks twice.
#include <QPrinterInfo>

#include "actions/new_project.h"
#include "actions/records.h"
#include "actions/recovery.h"
#include "chart/compose/make_chart.h"
#include "gui/window_world.h"

namespace tavlo {

namespace {

using test::wait_until;
using CarelessUser = test::WindowWorld;

TEST_F(CarelessUser, TypesOnAfterACellThatCantBeRead) {
  person.type("100\n1e500\n7\n8abc\n9\n");
  ASSERT_TRUE(wait_until([&] { return sheet().text(5, sheet_column::x) == "9"; }));
  EXPECT_TRUE(sheet().is_unreadable(2, sheet_column::x));
  EXPECT_EQ(sheet().text(2, sheet_column::x), "1e500");
  EXPECT_EQ(sheet().text(3, sheet_column::x), "7");
  EXPECT_TRUE(sheet().is_unreadable(4, sheet_column::x));
  EXPECT_TRUE(boxes.texts().isEmpty()) << "a box would take the keys of who types on";
}

TEST_F(CarelessUser, ClosesTheSheetAndRestoresItFromTheTree) {
  person.type("100\n");
  ChildWindow& child = *window.windows().child({Block::sheet, 1});
  person.press({"ctrl+w"});
  ASSERT_TRUE(wait_until([&] { return child.isHidden(); }));
  const QTreeWidgetItem* node = window.tree().node(QStringLiteral("D1"));
  EXPECT_EQ(node->parent()->text(0), QStringLiteral("Recycle"));
  EXPECT_TRUE(window.tree().node(QStringLiteral("R1"))->isHidden());

  person.press({"ctrl+0", "End", "Return"});
  ASSERT_TRUE(wait_until([&] { return child.isVisible(); }));
  EXPECT_EQ(node->parent()->text(0), QStringLiteral("Data"));
  EXPECT_FALSE(window.tree().node(QStringLiteral("R1"))->isHidden());
  EXPECT_EQ(sheet().text(1, sheet_column::x), "100");

  person.click(window.windows().sheet(1), {60, 60});
  person.press({"F6", "ctrl+w"});
  ASSERT_TRUE(wait_until([&] {
    return window.windows().child({Block::panel, 1})->isHidden();
  })) << "F6 goes to the next window";
}

TEST_F(CarelessUser, HearsWhyAKeyDoesNothing) {
  window.tree().setCurrentItem(window.tree().node(QStringLiteral("D1")));
  window.tree().setFocus();
  person.press({"Delete"});
  const auto said = [this] {
    for (const QLabel* line : window.findChildren<QLabel*>())
      if (line->text().contains(QStringLiteral("the first one stays"))) return true;
    return false;
  };
  EXPECT_TRUE(wait_until(said));
}

// Those that nobody has looked at are not made: closing what covers them, going round and
// layouts find them all the same.
TEST_F(CarelessUser, MeetsEveryWindowOfManySets) {
  program.commands.run([this] {
    for (int i = 0; i < 2; ++i) add_data_set(session());
  });
  ProjectWindows& windows = window.windows();
  EXPECT_EQ(windows.count(), 8);
  EXPECT_EQ(windows.children().size(), 4u);
  person.press({"ctrl+w"});
  const auto shows = [&](const char* key) {
    const ChildWindow* child = windows.child(WindowKey::of(QString::fromUtf8(key)));
    return child && child->isVisible();
  };
  ASSERT_TRUE(wait_until([&] { return shows("D2"); }));
  EXPECT_FALSE(shows("D1"));
  for (const auto* key : {"F2", "D3", "F3", "C1", "L1", "F1", "D2"}) {
    if (key == std::string("F2")) windows.bring_to_front({Block::sheet, 2});
    person.press({"F6"});
    ASSERT_TRUE(wait_until([&] {
      return shows(key) &&
             windows.activeSubWindow() == windows.child(WindowKey::of(QString::fromUtf8(key)));
    })) << key;
  }
  windows.hide_all();
  EXPECT_FALSE(windows.any());
  EXPECT_EQ(window.tree().node(QStringLiteral("D3"))->parent()->text(0), QStringLiteral("Recycle"));
  person.press({"ctrl+u"});
  ASSERT_TRUE(wait_until([&] { return windows.any() && shows("D1"); }));
  EXPECT_EQ(window.tree().node(QStringLiteral("D3"))->parent()->text(0), QStringLiteral("Data"));
  windows.tile(true);
  EXPECT_EQ(windows.children().size(), 8u);
  program.commands.run([this] { add_data_set(session()); });
  windows.bring_to_front({Block::sheet, 4});
  EXPECT_GT(windows.child({Block::sheet, 4})->height(), windows.height() / 2) << "not a scrap";
  program.commands.run([this] { delete_set(session(), 1); });
  program.commands.run([this] { add_chart(session()); });
  EXPECT_TRUE(windows.chart(2).drawing() == fl_Make_WMF(session(), 2)) << "drawn before it is told";
  windows.hide_all();
  for (const ChildWindow* each : windows.children())
    EXPECT_TRUE(each->isHidden()) << each->node_key().toStdString();
}

TEST_F(CarelessUser, ClosesTheProgramDuringAFit) {
  person.type("100\n");
  const auto close_during_fit = [&] {
    session().gFitForm(1)->busy = true;
    window.close();
    EXPECT_TRUE(window.isVisible()) << "the fit still needs its window";
    EXPECT_TRUE(program.progress.stop_wanted());
    session().gFitForm(1)->busy = false;
    program.commands.run([] {});
  };
  boxes.press_on_boxes("Escape");
  close_during_fit();
  ASSERT_TRUE(wait_until([&] { return boxes.texts().size() == 1; }));
  ASSERT_TRUE(wait_until([&] { return !QApplication::activeModalWidget(); }));
  EXPECT_TRUE(window.isVisible());
  program.commands.run([] {});
  boxes.press_on_boxes("alt+n");
  close_during_fit();
  EXPECT_TRUE(wait_until([&] { return !window.isVisible(); }));
  EXPECT_EQ(boxes.texts().size(), 2);
}

// The menu gets the button's release, which the chart waits for.
TEST_F(CarelessUser, OpensAMenuInTheMiddleOfADrag) {
  person.type("100\n");
  ChartWindow& chart = window.windows().chart(1);
  chart.set_zooming(true);
  person.hold(chart, chart.rect().center());
  person.move_to(chart, chart.rect().center() + QPoint(30, 30));
  ASSERT_TRUE(wait_until([&] { return chart.is_dragging(); }));
  person.press({"alt+f", "Escape", "Escape"});
  EXPECT_TRUE(wait_until([&] { return !chart.is_dragging(); }));
  person.let_go();
  window.DoCommand(18);
  EXPECT_TRUE(wait_until([&] { return sheet().text(1, sheet_column::x).empty(); }));
}

TEST_F(CarelessUser, SetsUpAPrinterThatIsNotThere) {
  if (!QPrinterInfo::availablePrinters().isEmpty()) GTEST_SKIP() << "there is one";
  window.DoCommand(9);
  ASSERT_EQ(boxes.texts().size(), 1);
  EXPECT_TRUE(boxes.texts()[0].contains(QStringLiteral("no printer")));
}

TEST_F(CarelessUser, IsAskedForAReplacedProjectThatNoDiskHasTaken) {
  begin_recovery(session(), "/dev/null/Recovery");
  person.type("100\n");
  person.press({"ctrl+n"});
  ASSERT_TRUE(wait_until([&] { return session().gDataForm(1)->last_row() == 0; }));
  boxes.press_on_boxes("Escape");
  window.close();
  EXPECT_TRUE(window.isVisible());
  ASSERT_EQ(boxes.texts().size(), 1);
  EXPECT_TRUE(boxes.texts()[0].contains(QStringLiteral("Save the changes of Untitled")));
  EXPECT_EQ(sheet().text(1, sheet_column::x), "100");
}

TEST_F(CarelessUser, GetsAProjectBackThatANewOneReplaced) {
  person.type("100\n");
  ASSERT_TRUE(wait_until([&] { return sheet().row() == 2; }));
  boxes.press_on_boxes("Escape");
  window.close();
  EXPECT_TRUE(window.isVisible());
  ASSERT_EQ(boxes.texts().size(), 1);
  EXPECT_TRUE(boxes.texts()[0].contains(QStringLiteral("Save the changes of Untitled")));
  person.press({"ctrl+n"});
  ASSERT_TRUE(wait_until([&] { return session().gDataForm(1)->last_row() == 0; }));
  person.press({"ctrl+z"});
  ASSERT_TRUE(wait_until([&] { return session().gDataForm(1)->last_row() == 1; }));
  person.press({"ctrl+n"});
  ASSERT_TRUE(wait_until([&] { return session().gDataForm(1)->last_row() == 0; }));
  EXPECT_EQ(window.windows().count(), 4);
  ASSERT_TRUE(wait_until([&] { return window.windows().sheet(1).hasFocus(); }));
  person.type("7\n");
  EXPECT_TRUE(wait_until([&] { return sheet().text(1, sheet_column::x) == "7"; }));
}

}  // namespace

}  // namespace tavlo
