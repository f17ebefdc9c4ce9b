// Everything that can have the keyboard has a name for screen readers, and every dialog fits
// a small screen with large letters, in light, dark and high contrast.
#include <QListWidget>
#include <QMenu>
#include <QRegularExpression>
#include <QTextBrowser>
#include <algorithm>

#include "actions/undo.h"
#include "actions/work.h"
#include "chart/parts/marks.h"
#include "gui/pictures.h"
#include "gui/window_world.h"
#include "workspace/chart/mark_dialog.h"
#include "workspace/chart/picture_dialog.h"
#include "workspace/format/colour_dialog.h"
#include "workspace/frame/command_table.h"
#include "workspace/frame/manual.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

using Reach = test::WindowWorld;
using test::cut_in;
using test::keep_picture;
using test::nameless_in;

QPalette colours_of(const QColor& window, const QColor& base, const QColor& text,
                    const QColor& highlight) {
  QPalette palette(text, window, window.lighter(), window.darker(), window.lighter(), text,
                   Qt::white, base, window);
  palette.setColor(QPalette::Highlight, highlight);
  palette.setColor(QPalette::HighlightedText, base);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, text.darker(160));
  return palette;
}

TEST_F(Reach, EverythingHasANameAndNothingIsCutInAnyColours) {
  const QPalette before = QApplication::palette();
  const QFont font = QApplication::font();
  const struct {
    const char* name;
    QPalette palette;
    int points;
  } looks[] = {{"light", before, font.pointSize()},
               {"dark",
                colours_of(QColor(0x31, 0x36, 0x3B), QColor(0x1B, 0x1E, 0x20), Qt::white,
                           QColor(0x3D, 0xAE, 0xE9)),
                16},
               {"contrast", colours_of(Qt::black, Qt::black, Qt::white, Qt::yellow), 16}};
  type_handbook_example();
  Chart& chart = session().project.charts(1);
  program.commands.run([&] { add_mark(chart, arrow_mark({100, 100}, {300, 200})); });
  const auto open = [](QDialog* dialog) {
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
  };
  const auto by_command = [&](int id) { return [this, id] { window.DoCommand(id); }; };
  const struct {
    const char* name;
    std::function<void()> open;
  } dialogs[] = {
      {"options", by_command(command::options)},
      {"sample", by_command(command::sample)},
      {"compare", by_command(command::compare)},
      {"format", by_command(command::label_style)},
      {"quick-help", by_command(44)},
      {"import",
       [&] {
         answer_files_with(QStringLiteral(TAVLO_EXAMPLES "/remission-6mp.csv"));
         window.DoCommand(command::import_data);
       }},
      {"picture",
       [&] {
         open(new PictureDialog({}, {160, 100}, true, &window));
       }},
      {"mark", [&] { open(new MarkDialog(&window, session(), program.commands, 1, 1)); }},
      {"colour", [&] {
         ColourDialog::choose(&window, program.commands, {}, ColourDialog::Asks::pen, [](auto&) {});
       }}};
  for (const auto& look : looks) {
    QFont letters = font;
    letters.setPointSize(look.points);
    QApplication::setPalette(look.palette);
    QApplication::setFont(letters);
    QCoreApplication::processEvents();
    EXPECT_EQ(from_qt(nameless_in(window)), "") << look.name;
    keep_picture(window, QStringLiteral("frame-%1").arg(to_qt(look.name)));
    for (const auto& [name, open_it] : dialogs) {
      open_it();
      QWidget* dialog = nullptr;
      ASSERT_TRUE(test::wait_until([&] {
        dialog = QApplication::activeWindow();
        return dialog && dialog != &window;
      })) << name;
      QCoreApplication::processEvents();
      EXPECT_EQ(from_qt(nameless_in(*dialog)), "") << look.name << name;
      EXPECT_EQ(from_qt(cut_in(*dialog)), "") << look.name << name;
      EXPECT_LE(dialog->frameGeometry().height(), dialog->screen()->availableSize().height())
          << name;
      EXPECT_LE(dialog->frameGeometry().width(), dialog->screen()->availableSize().width()) << name;
      keep_picture(*dialog, QStringLiteral("%1-%2").arg(to_qt(name), to_qt(look.name)));
      dialog->close();
      ASSERT_TRUE(test::wait_until([&] { return window.isActiveWindow(); })) << name;
    }
  }
  QApplication::setPalette(before);
  QApplication::setFont(font);
}

// Each page of the manual has come into the program, and so has each that a link leads to.
TEST(Manual, HasEveryPageThatItSpeaksOf) {
  const std::vector<ManualPage> pages = manual_pages(QString());
  const QRegularExpression link(QStringLiteral("\\]\\(([a-z-]+)\\.md\\)"));
  for (const ManualPage& page : pages) {
    EXPECT_GT(page.text.size(), 200) << from_qt(page.key);
    for (const auto& to : link.globalMatch(page.text)) {
      const auto leads_to = [&](const ManualPage& each) { return each.key == to.captured(1); };
      EXPECT_TRUE(std::ranges::any_of(pages, leads_to)) << from_qt(to.captured(0));
    }
  }
}

// The manual is searched page by page, and F1 opens the page of the window in front.
TEST_F(Reach, TheManualOpensAtTheWindowInFrontAndFindsWords) {
  person.press({"ctrl+2", "F1"});
  const auto help = [] {
    QWidget* active = QApplication::activeWindow();
    return active && active->objectName() == u"frm_Help" ? active : nullptr;
  };
  ASSERT_TRUE(test::wait_until([&] { return help() != nullptr; }));
  auto& page = *help()->findChild<QTextBrowser*>();
  EXPECT_TRUE(page.toPlainText().startsWith(QStringLiteral("The fit panel")));
  const auto marked = [&] { return help()->findChild<QListWidget*>()->currentItem()->text(); };
  EXPECT_EQ(marked(), QStringLiteral("The fit panel"));
  person.press({"ctrl+f"});
  person.type("infant\n");
  EXPECT_TRUE(
      test::wait_until([&] { return page.textCursor().selectedText().toLower() == u"infant"; }));
  EXPECT_FALSE(page.toPlainText().startsWith(QStringLiteral("The fit panel")));
  EXPECT_TRUE(page.toPlainText().startsWith(marked())) << marked().toStdString();
  person.press({"Escape"});
  EXPECT_TRUE(test::wait_until([&] { return window.isActiveWindow(); }));
}

// An example is opened as a project without a file: a save can't replace it.
TEST_F(Reach, AnExampleHasNoFileToBeSavedTo) {
  QMenu& file = *window.menuBar()->actions().front()->menu();
  emit file.aboutToShow();
  QAction* first = nullptr;
  for (const QAction* each : file.actions())
    if (each->menu() && each->text().remove(u'&') == u"Examples")
      first = each->menu()->actions().value(0);
  ASSERT_TRUE(first);
  first->trigger();
  EXPECT_TRUE(test::wait_until([&] { return sheet().last_row() > 10; }));
  EXPECT_EQ(present_work(session()).path, "");
  EXPECT_FALSE(is_unsaved(session()));
}

// The panels stand on one place: the one in view is that of the sheet in front.
TEST_F(Reach, ASheetBringsThePanelOfItsSet) {
  window.add_data_and_fit();
  for (const int set : {1, 2, 1}) {
    window.open_child({Block::sheet, set});
    ASSERT_TRUE(test::wait_until([&] { return window.windows().sheet(set).hasFocus(); }));
    const QWidget& panel = *window.windows().child({Block::panel, set});
    const QPoint middle = panel.geometry().center();
    EXPECT_TRUE(panel.isAncestorOf(window.windows().viewport()->childAt(middle))) << set;
  }
}

// What is closed and brought back stands at its old place; bars come and go with the setting.
TEST_F(Reach, TreeAndBarsReturnToTheirPlaces) {
  window.add_data_and_fit();
  window.add_data_and_fit();
  QTreeWidgetItem* sheets = window.tree().node(QStringLiteral("D"));
  const auto order = [&] {
    QStringList texts;
    for (int i = 0; i < sheets->childCount(); ++i) texts += sheets->child(i)->text(0);
    return texts;
  };
  const QStringList before = order();
  ASSERT_EQ(before.size(), 3);
  for (const char* key : {"D1", "D2"}) window.tree().recycle(to_qt(key));
  for (const char* key : {"D2", "D1"}) window.tree().restore(to_qt(key));
  EXPECT_EQ(order(), before);
  Settings& settings = session().settings;
  for (const bool on : {true, false, true}) {
    settings.StripToolbar = settings.RibbonToolbar = on;
    window.show_bars();
    EXPECT_EQ(widget("tb_Strip").isVisible(), on);
    EXPECT_EQ(widget("tb_Ribbon").isVisible(), on);
  }
}

}  // namespace

}  // namespace tavlo
