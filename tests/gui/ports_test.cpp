// The ports of the desktop as they are: its clipboard, file dialogs, timers and drops.
#include <QDropEvent>
#include <QElapsedTimer>
#include <QFile>
#include <QMimeData>
#include <QTemporaryDir>

#include "actions/clipboard_text.h"
#include "gui/window_world.h"
#include "support/test_world.h"

namespace tavlo::test {

namespace {

using DesktopPorts = WindowWorld;

std::string news(const MainWindow& window) {
  return from_qt(window.findChild<HintLine*>(QStringLiteral("lbl_News"))->text());
}

TEST_F(DesktopPorts, RichTextGoesAndComesInAllItsForms) {
  const ClipboardText text{"a \u00FC", "{\\rtf1 a \\'fc}", "<b>a \u00FC</b>"};
  program.clipboard.set_text(text);
  EXPECT_EQ(program.clipboard.rich_text().rtf, text.rtf);
  EXPECT_TRUE(from_qt(QString::fromUtf8(person.paste_elsewhere(QStringLiteral("text/html"))))
                  .find(text.html) != std::string::npos);
  EXPECT_EQ(person.paste_elsewhere(QStringLiteral("text/rtf")).toStdString(), text.rtf);
  EXPECT_EQ(person.paste_elsewhere().toStdString(), text.plain);
  person.copy_elsewhere("7\n8\n");
  EXPECT_TRUE(wait_until([&] { return program.clipboard.text() == "7\n8\n"; }));
  EXPECT_EQ(program.clipboard.rich_text(), (ClipboardText{"7\n8\n", "", ""}));
  QImage image(8, 8, QImage::Format_RGB32);
  image.fill(Qt::red);
  QGuiApplication::clipboard()->setImage(image);
  EXPECT_TRUE(program.clipboard.holds_only_picture());
}

// A name gets its extension before the dialog looks whether it is taken.
TEST_F(DesktopPorts, FileDialogsCompleteNamesAndAskBeforeReplacing) {
  const QTemporaryDir folder;
  QFile file(folder.filePath(QStringLiteral("chart.wmf")));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  boxes.press_on_boxes("alt+y");
  const char* const kinds = "All (*.*)|*.*|PNG picture (*.png)|*.png|SVG drawing (*.svg)|*.svg";
  for (const auto& [name, filter, asks, wanted, asked] : {std::tuple{"new", 1, true, "new.wmf", 0},
                                                          {"new", 2, true, "new.png", 0},
                                                          {"new.svg", 2, true, "new.svg", 0},
                                                          {"new.png", 3, true, "new.png.svg", 0},
                                                          {"chart", 1, true, "chart.wmf", 1},
                                                          {"chart", 1, false, "chart.wmf", 1}}) {
    const FileRequest request{"Save", kinds, filter, true, asks, "wmf", "svg"};
    answer_files_with(folder.filePath(QString::fromUtf8(name)));
    EXPECT_EQ(program.prompts.choose_file(request),
              from_qt(folder.filePath(QString::fromUtf8(wanted))));
    EXPECT_EQ(boxes.texts().size(), asked) << "the name that is taken is asked about";
  }
}

TEST_F(DesktopPorts, TimersCallAsOftenAsTheySayAndNeverInACommand) {
  std::string calls;
  std::unique_ptr<RunningTimer> own;
  const auto pass = [](int time) {
    QElapsedTimer clock;
    clock.start();
    wait_until([&] { return clock.elapsed() >= time; });
  };
  own = program.timer.every(20, [&] {
    calls += 'b';
    if (calls == "bb") own.reset(), calls += 'B';
  });
  auto ended = program.timer.once(30, [&] { calls += 'd'; });
  ended.reset();
  EXPECT_TRUE(wait_until([&] { return calls == "bbB"; }));
  pass(50);
  EXPECT_EQ(calls, "bbB") << "both have ended";
  const auto late = program.timer.once(1, [&] { calls += 'c'; });
  program.commands.run([&] { pass(50); });
  EXPECT_EQ(calls, "bbB") << "no call comes in the middle of a command";
  EXPECT_TRUE(wait_until([&] { return calls == "bbBc"; }));
  pass(50);
  EXPECT_EQ(calls, "bbBc") << "once";
  const auto broken = program.timer.once(1, [] { throw RunTimeError(run_time::subscript); });
  ASSERT_TRUE(wait_until([&] { return boxes.texts().size() == 1; }));
  EXPECT_TRUE(boxes.texts()[0].contains(QStringLiteral("Subscript out of range")));
  EXPECT_FALSE(program.commands.running());
}

/// A drop as another program makes it. True when the sheet took it.
bool drop(SheetView& sheet, const QMimeData& data, const QPoint& at) {
  QDragEnterEvent enter(at, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
  enter.ignore();
  QApplication::sendEvent(sheet.viewport(), &enter);
  if (!enter.isAccepted()) return false;
  QDropEvent end(QPointF(at), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
                 Qt::NoModifier);
  QApplication::sendEvent(sheet.viewport(), &end);
  return end.isAccepted() && end.dropAction() == Qt::CopyAction;
}

TEST_F(DesktopPorts, TextAndOneFileCanBeDroppedOntoTheSheet) {
  SheetView& view = window.windows().sheet(1);
  const QTemporaryDir folder;
  QFile file(folder.filePath(QStringLiteral("data.csv")));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("Hours;Status\n7,5;F\n8,5;S\n");
  file.close();
  QMimeData text, one, two, other;
  text.setText(QStringLiteral("100\n200\n300\n"));
  one.setUrls({QUrl::fromLocalFile(file.fileName())});
  two.setUrls({QUrl::fromLocalFile(file.fileName()), QUrl::fromLocalFile(file.fileName())});
  other.setData(QStringLiteral("image/png"), "PNG");
  ASSERT_TRUE(drop(view, text, view.visualRect(view.model()->index(0, 0)).center()));
  ASSERT_TRUE(wait_until([&] { return sheet().last_row() == 3; }));
  EXPECT_EQ(news(window), "3 rows: 3 failures, 0 suspensions");
  ASSERT_TRUE(drop(view, one, view.visualRect(view.model()->index(1, 2)).center()));
  ASSERT_TRUE(wait_until([&] { return sheet().text(2, sheet_column::x) == "7.5"; }));
  EXPECT_EQ(sheet().text(1, sheet_column::x) + sheet().text(3, sheet_column::x), "1008.5");
  EXPECT_FALSE(drop(view, two, QPoint(5, 5)));
  EXPECT_FALSE(drop(view, other, QPoint(5, 5)));
  person.press({"ctrl+z"});
  EXPECT_TRUE(wait_until([&] { return sheet().text(2, sheet_column::x) == "200"; }));
  person.press({"ctrl+z"});
  EXPECT_TRUE(wait_until([&] { return sheet().last_row() == 0; })) << "a drop is one step";
}

// A long text turns the event loop while it is read: keys wait, Escape stops it, and the
// program ends only behind it.
TEST_F(DesktopPorts, EscapeOrLeavingStopsALongReading) {
  std::string many = "x,comment\n";
  for (int i = 0; i < 900'000; ++i) many += "1234 , a remark\n";
  SheetView& view = window.windows().sheet(1);
  const auto press = [&view](Qt::Key key, const char* text) {
    QApplication::postEvent(
        &view, new QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier, QString::fromUtf8(text)));
  };
  bool leaves = false;
  QObject::connect(&program.views, &ViewSignals::busy_changed, &window, [&](bool busy) {
    if (!busy) return;
    if (leaves) return void(window.close());
    press(Qt::Key_9, "9");
    press(Qt::Key_Escape, "");
  });
  for (const bool by_leaving : {false, true}) {
    leaves = by_leaving;
    program.views.status("before");
    program.commands.run([&] { drop_text(session(), 1, many); });
    EXPECT_EQ(news(window), "Stopped; nothing was entered.");
    EXPECT_EQ(sheet().last_row(), 0);
    EXPECT_FALSE(view.edit_box().isVisible());
    EXPECT_TRUE(window.isVisible());
  }
  EXPECT_TRUE(wait_until([&] { return !window.isVisible(); })) << from_qt(boxes.texts().join(u'|'));
}

}  // namespace

}  // namespace tavlo::test
