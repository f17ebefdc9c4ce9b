// The parts of the frame that need no hand on the keyboard.
#include <QApplication>
#include <QTest>

#include "gui/window_world.h"
#include "workspace/frame/block_layout.h"
#include "workspace/frame/command_table.h"
#include "workspace/qt/box_folding.h"

namespace tavlo {

namespace {

using Frame = test::WindowWorld;

TEST(BoxFolding, ShowsThreeAndCountsTheRest) {
  BoxFolding folding;
  const Box fault{"Error", "no rank", BoxIcon::stop, BoxButtons::ok};
  int shown = 0;
  for (int i = 0; i < 10000; ++i) shown += folding.wants_showing(fault) ? 1 : 0;
  EXPECT_EQ(shown, 3);
  const auto rest = folding.end_run();
  ASSERT_TRUE(rest);
  EXPECT_EQ(rest->text, "no rank\n\nand 9997 more");
  EXPECT_FALSE(folding.end_run());
}

// Whatever is hidden and however large the frame: the visible blocks cover the
// area and nowhere each other.
TEST(BlockLayout, CoversTheArea) {
  for (const QSize& area :
       {QSize(900, 600), QSize(1130, 725), QSize(1790, 1000), QSize(3600, 2000)})
    for (unsigned mask = 1; mask < 16; ++mask) {
      std::array<bool, block_count> visible{};
      for (std::size_t i = 0; i < block_count; ++i) visible[i] = (mask >> i & 1u) != 0;
      const auto places = block_layout(area, 17, visible);
      qint64 covered = 0;
      for (std::size_t i = 0; i < block_count; ++i) {
        EXPECT_EQ(visible[i], !places[i].isEmpty()) << mask;
        covered += qint64{places[i].width()} * places[i].height() * (visible[i] ? 1 : 0);
        for (std::size_t k = 0; k < i; ++k)
          EXPECT_FALSE(visible[i] && visible[k] && places[i].intersects(places[k])) << mask;
      }
      EXPECT_EQ(covered, qint64{area.width()} * area.height()) << mask;
    }
}

// Each command of the table is either carried out, or grey and says why not.
TEST_F(Frame, EveryGreyEntrySaysWhy) {
  int grey = 0;
  for (const Command& each : all_commands(window)) {
    if (each.id == 0) continue;
    const auto& entry = *window.findChild<QAction*>(QStringLiteral("mnu_%1").arg(
        each.name.empty() ? QString::number(each.id) : to_qt(each.name)));
    EXPECT_EQ(entry.isEnabled(), entry.statusTip().isEmpty()) << each.caption;
    grey += entry.isEnabled() ? 0 : 1;
    if (entry.isEnabled()) continue;
    EXPECT_TRUE(entry.statusTip().endsWith(u'.') && entry.toolTip() == entry.statusTip())
        << each.caption;
  }
  EXPECT_GT(grey, 5);
  for (const int id : {command::new_project, command::print, command::paste, command::tile_block})
    EXPECT_TRUE(window.findChild<QAction*>(QStringLiteral("mnu_%1").arg(id))->isEnabled()) << id;
  const auto log_before = log();
  for (const int id : {-1, 0, 11, 42, 52, 1000}) window.DoCommand(id);
  EXPECT_EQ(log(), log_before);
}

// Each window that ends makes the next one active, and an edit ends with its sheet.
TEST(FrameEnd, AsksNothingOfWhatHasGone) {
  Program program;
  int finished = 0;
  QObject::connect(&program.commands, &UserCommands::finished, [&] { ++finished; });
  {
    MainWindow window(program);
    window.show();
    ASSERT_TRUE(test::wait_until([&] { return window.windows().sheet(1).hasFocus(); }));
    QTest::keyClick(&window.windows().sheet(1), Qt::Key_7);
    ASSERT_TRUE(program.session.gDataForm(1)->editing());
    finished = 0;
  }
  EXPECT_LE(finished, 1) << "the edit";
  EXPECT_FALSE(program.is_busy());
}

// No two commands hear the same key, and no key is the letter of a menu.
TEST_F(Frame, EveryKeyHasOneMeaning) {
  std::map<QString, QString> owners;
  for (const QAction* menu : window.menuBar()->actions())
    owners[QKeySequence::mnemonic(menu->text()).toString()] = menu->text();
  for (const Command& each : all_commands(window)) {
    if (each.keys.empty()) continue;
    for (const auto& keys : QKeySequence::listFromString(to_qt(each.keys))) {
      EXPECT_FALSE(keys.isEmpty()) << each.keys;
      // A key of the frame is heard everywhere, one of a place there alone.
      const QString place = QString(static_cast<int>(each.reach), u' ');
      EXPECT_FALSE(owners.contains(keys.toString())) << each.caption;
      EXPECT_TRUE(owners.try_emplace(keys.toString() + place, to_qt(each.caption)).second)
          << each.caption;
    }
  }
  EXPECT_GT(owners.size(), 30u);
}

// Which commands can be used follows from what stands before the person.
TEST_F(Frame, AViewMayGoWhileItsPopUpIsOpen) {
  window.DoCommand(17);
  ASSERT_EQ(session().project.data.bound(), 2);
  SheetView& view = window.windows().sheet(2);
  const QPoint at(5, 5);
  QTimer::singleShot(0, &window, [this] { window.DoCommand(command::undo); });
  QContextMenuEvent wanted(QContextMenuEvent::Keyboard, at, view.viewport()->mapToGlobal(at));
  QApplication::sendEvent(view.viewport(), &wanted);
  ASSERT_TRUE(QApplication::activePopupWidget());
  EXPECT_TRUE(test::wait_until([&] { return session().project.data.bound() == 1; }));
  QApplication::activePopupWidget()->close();
}

TEST_F(Frame, ShiftF10OpensThePopUpOfWhatHasTheKeyboard) {
  for (const char* key : {"ctrl+1", "ctrl+2", "ctrl+3", "ctrl+4", "ctrl+0"}) {
    person.press({key, "shift+F10"});
    EXPECT_TRUE(test::wait_until([] { return QApplication::activePopupWidget() != nullptr; }))
        << key;
    person.press({"Escape"});
    ASSERT_TRUE(test::wait_until([] { return !QApplication::activePopupWidget(); })) << key;
  }
}

TEST_F(Frame, CommandsFollowTheWindowInFront) {
  const auto enabled = [&](const char* name) {
    return window.findChild<QAction*>(QString::fromUtf8(name))->isEnabled();
  };
  EXPECT_TRUE(enabled("mnu_16"));
  person.press({"ctrl+3"});
  EXPECT_TRUE(test::wait_until([&] { return !enabled("mnu_16"); })) << "paste into a chart";
  EXPECT_FALSE(enabled("mnu_ZoomBack"));
  person.press({"plus"});
  EXPECT_TRUE(test::wait_until([&] { return enabled("mnu_ZoomBack"); }));
  person.press({"ctrl+1"});
  EXPECT_TRUE(test::wait_until([&] { return enabled("mnu_16"); }));
}

}  // namespace

}  // namespace tavlo
