// The log as a document: what is shown is the core's, and so is what is copied.
#include <QAbstractTextDocumentLayout>
#include <QDragEnterEvent>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QUrl>
#include <random>

#include "actions/reports.h"
#include "gui/window_world.h"
#include "support/shown_rich_text.h"
#include "workspace/frame/command_table.h"
#include "workspace/qt/qt_text.h"
#include "workspace/qt/rich_text_document.h"
#include "workspace/qt/shown_rich_text.h"

namespace tavlo {
namespace {

constexpr const char* table =
    "\\par \\trowd\\cellx2000\\cellx4000\\pard\\intbl {\\b Model}\\cell r^2\\cell\\row"
    "\\intbl W\\cell 0.98\\line 7\\cell\\row\\pard";

std::string shown_in(const LogWindow& window) {
  QTextCursor all(window.document());
  all.select(QTextCursor::Document);
  return test::shown(rich_text_of(all));
}

TEST(LogWindow, ShowsEveryStateOfTheLog) {
  std::mt19937_64 random(3);
  RichText log;
  LogWindow window(log);
  std::vector<RichText> states(1);
  const char* const pieces[] = {table,
                                "plain ",
                                "\\par ",
                                "{\\b\\i\\ul all}\\par\\par",
                                "{\\colortbl;\\red9\\green99\\blue199;}{\\fs31\\cf1 large}",
                                "{\\fonttbl{\\f1 Courier;}}\\f1 wide\\tab x",
                                "\\trowd\\cellx500\\intbl one\\cell\\row"};
  for (int i = 0; i < 300; ++i) {
    if (random() % 4 == 0) log = states[random() % states.size()];
    for (std::uint64_t parts = random() % 4; parts > 0; --parts)
      log.append_rtf(pieces[random() % std::size(pieces)]);
    states.push_back(log);
    window.refresh();
    QTest::keyClick(&window, Qt::Key_Shift);
    ASSERT_EQ(shown_in(window), test::shown(log));
    for (QTextBlock line = window.document()->begin(); line.isValid(); line = line.next())
      ASSERT_TRUE(line.length() == 1 || line.blockFormat().lineHeightType() == 0) << i;
  }
}

TEST(LogWindow, ATableStandsBehindOneBlankLineWithItsNumbersAtTheRight) {
  RichText log;
  log.append_rtf(std::string("text\\par\\par") + table);
  LogWindow window(log);
  window.show();
  window.refresh();
  const auto line = [&](const char* text) { return window.document()->find(to_qt(text)).block(); };
  const auto place = [&](const char* text) {
    return window.document()->documentLayout()->blockBoundingRect(line(text));
  };
  const double height = place("text").height();
  EXPECT_GT(height, 0);
  EXPECT_NEAR(place("Model").top() - place("text").top(), 2 * height, 0.3 * height);
  EXPECT_GT(place("0.98").left(), place("Model").right());
  EXPECT_EQ(line("0.98").blockFormat().alignment(), Qt::AlignRight);
  EXPECT_NE(line("Model").blockFormat().alignment(), Qt::AlignRight);
}

/// All that a document shows, read without any mark.
std::string read_whole(const QTextDocument& document) {
  return test::shown(rich_text_between(document, 0, document.characterCount()));
}

/// Of a long log the document shows the end.
void edit_and_go_back(int lines, int times) {
  std::mt19937_64 random(5);
  QTextDocument document;
  ShownRichText view(document);
  RichText log;
  for (int line = 0; line < lines; ++line) log.append_plain("first\n");
  std::vector<RichText> states = {log};
  for (int i = 0; i < times; ++i) {
    if (lines > 0 && random() % 3 == 0) view.reveal(random() % (log.size() + 1));
    switch (random() % 3) {
      case 0:
        for (int line = 0; line < 120; ++line) log.append_rtf("{\\b line} of text\\par ");
        log.append_rtf(std::string(table) + "\\par ");
        view.show(log);
        break;
      case 1: view.show(log = states[random() % states.size()]); break;
      default: {
        QTextCursor hand(&document);
        const auto length = static_cast<std::uint64_t>(document.characterCount());
        const std::uint64_t at = random() % length;
        hand.setPosition(static_cast<int>(at));
        const std::uint64_t end = std::min(length - 1, at + random() % 900);
        if (random() % 2 == 0) hand.setPosition(static_cast<int>(end), QTextCursor::KeepAnchor);
        hand.insertText(random() % 2 == 0 ? QStringLiteral("by hand") : QStringLiteral("a\nb\n"));
        log = view.take();
      }
    }
    states.push_back(log);
    ASSERT_EQ(read_whole(document), test::shown(log.part(view.hidden(), view.end()))) << i;
  }
  EXPECT_EQ(view.hidden() > 0, lines > 0);
}

TEST(ShownRichText, TakesEveryEditAndShowsEveryFormerState) {
  edit_and_go_back(0, 400);
  edit_and_go_back(60'000, 20);
}

TEST(ShownRichText, WhatIsHiddenGoesOnlyWithAllThatIsShown) {
  RichText log;
  for (int line = 0; line < 27'000; ++line) log.append_plain("first\n");
  QTextDocument document;
  ShownRichText view(document);
  view.show(log);
  ASSERT_GT(view.hidden(), 0U);
  QTextCursor all(&document);
  all.select(QTextCursor::Document);
  QTextCharFormat bold;
  bold.setFontWeight(QFont::Bold);
  all.mergeCharFormat(bold);
  EXPECT_EQ(view.take().plain(), log.plain()) << "other letters take nothing away";
  for (const QString& anew : {QStringLiteral("anew"), QString(900'000, u'x')}) {
    QTextCursor(&document).insertText(QStringLiteral("typed before "));
    all.select(QTextCursor::Document);
    all.insertText(anew);
    EXPECT_EQ(view.take().plain(), anew.toStdString());
    EXPECT_EQ(view.hidden(), 0U);
    view.show(log);
    EXPECT_EQ(view.text(), log) << "it can be taken back";
  }
}

// Of a hundred thousand entries each is found, forward and backward, with a part in the document.
TEST(LogWindow, FindsEveryEntryOfAVeryLongLog) {
  RichText log;
  constexpr int entries = 100'000;
  for (int i = 0; i < entries; ++i)
    log.append_plain("entry " + std::to_string(i) +
                     (i % 30'000 == 10'000 ? " wanted\n" : " other\n"));
  LogWindow window(log);
  window.show();
  window.refresh();
  window.open_search();
  auto& entry = *window.findChild<QLineEdit*>();
  const auto line = [&] { return from_qt(window.textCursor().block().text()); };
  QTest::keyClicks(&entry, QStringLiteral("wanted"));
  std::vector<std::string> met = {line()};
  for (int i = 0; i < 4; ++i) QTest::keyClick(&window, Qt::Key_F3), met.push_back(line());
  EXPECT_EQ(met, (std::vector<std::string>{"entry 10000 wanted", "entry 40000 wanted",
                                           "entry 70000 wanted", "entry 10000 wanted",
                                           "entry 40000 wanted"}));
  met.clear();
  for (int i = 0; i < 4; ++i)
    QTest::keyClick(&window, Qt::Key_F3, Qt::ShiftModifier), met.push_back(line());
  EXPECT_EQ(met, (std::vector<std::string>{"entry 10000 wanted", "entry 70000 wanted",
                                           "entry 40000 wanted", "entry 10000 wanted"}));
  EXPECT_LT(window.document()->blockCount(), 40'000);
  QTest::keyClick(&window, Qt::Key_End, Qt::ControlModifier);
  EXPECT_EQ(line(), "");
  QTest::keyClick(&window, Qt::Key_Home, Qt::ControlModifier);
  EXPECT_EQ(line(), "entry 0 other");
}

class LogByKeys : public test::WindowWorld {
 protected:
  std::string pasted(const char* type) {
    return person.paste_elsewhere(QString::fromUtf8(type)).toStdString();
  }
};

TEST_F(LogByKeys, IsCopiedInAllForms) {
  program.commands.run([&] { AppendLog(session(), table, true); });
  LogWindow& log_window = window.windows().log();
  person.press({"ctrl+4", "ctrl+a", "ctrl+c"});
  EXPECT_EQ(RichText::from_rtf(pasted("text/rtf")), session().project.log);
  EXPECT_EQ(pasted("UTF8_STRING"), log());
  EXPECT_TRUE(log().ends_with("Model\tr^2\nW\t0.98 7\n")) << log();
  const std::string html = pasted("text/html");
  EXPECT_NE(html.find("<tr><td><span style=\"font-weight:bold;\">Model</span></td><td>r^2</td>"),
            std::string::npos)
      << html;

  log_window.setTextCursor(log_window.document()->find(QStringLiteral("Model")));
  person.press({"ctrl+c"});
  EXPECT_EQ(pasted("UTF8_STRING"), "Model");
  EXPECT_EQ(test::shown(RichText::from_rtf(pasted("text/rtf"))), "<b20>Model");
}

TEST_F(LogByKeys, IsEditedSearchedAndTakenBack) {
  program.commands.run(
      [&] { AppendLog(session(), "Gears of the north\nGEARS of the south", false); });
  const std::string before = log();
  person.press({"ctrl+4", "ctrl+f"});
  person.type("gears of the S");
  person.press({"Escape"});
  LogWindow& view = window.windows().log();
  EXPECT_EQ(view.textCursor().selectedText(), QStringLiteral("GEARS of the s"));
  person.type("Wheels in the s");
  person.press({"ctrl+1"});
  EXPECT_TRUE(log().ends_with("north\nWheels in the south")) << log();
  EXPECT_EQ(session().history.undo_name(), "Edit Log");
  person.press({"ctrl+4", "ctrl+z"});
  EXPECT_EQ(log(), before);
  EXPECT_EQ(view.toPlainText().toStdString(), before);
  program.commands.run([&] { AppendLog(session(), "\nlast", false); });
  EXPECT_EQ(log(), before + "\nlast");
}

TEST_F(LogByKeys, LeavesADroppedFileToTheFrame) {
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(QStringLiteral(TAVLO_EXAMPLES "/ball-bearings.txt"))});
  QWidget* const place = window.windows().log().viewport();
  QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QDropEvent end(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(place, &enter);
  QApplication::sendEvent(place, &end);
  EXPECT_TRUE(test::wait_until([&] {
    const QWidget* const import = window.findChild<QWidget*>(QStringLiteral("frm_Import"));
    return import && import->isVisible();
  }));
  EXPECT_EQ(log().find("file:"), std::string::npos);
}

TEST_F(LogByKeys, IsExportedAsTheReportIsAndNoHalfFileIsLeft) {
  type_handbook_example();
  const QTemporaryDir folder;
  const auto size_after = [&](int command, const QString& name) {
    answer_files_with(folder.filePath(name));
    window.DoCommand(command);
    return QFileInfo(folder.filePath(name)).size();
  };
  for (const char* const type : {"rtf", "pdf", "html", "txt"})
    EXPECT_GT(size_after(command::export_log, QStringLiteral("log.") + to_qt(type)), 20) << type;
  for (const char* const type : {"pdf", "html"})
    EXPECT_GT(size_after(command::export_report, QStringLiteral("it.") + to_qt(type)), 5000)
        << type;
  EXPECT_TRUE(boxes.texts().isEmpty());
  EXPECT_EQ(size_after(command::export_report, QStringLiteral("none/x.pdf")), 0);

  // A report tells of the rows that are seen, and fits follow them.
  person.press({"alt+c"});
  ASSERT_TRUE(test::wait_until([&] { return fits().rows() == 2 && !program.commands.running(); }));
  person.press({"ctrl+1"});
  person.type("999\n");
  ASSERT_TRUE(test::wait_until([&] { return !session().project.data(1).is_read(); }));
  const auto told_in = [&](const QString& name) {
    QFile file(folder.filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  };
  const auto asked_before = boxes.texts().size();
  EXPECT_GT(size_after(command::export_report, QStringLiteral("new.html")), 5000);
  EXPECT_EQ(boxes.texts().size(), asked_before);
  EXPECT_TRUE(session().project.data(1).is_read());
  EXPECT_TRUE(told_in(QStringLiteral("new.html")).contains("\u03B7"));

  // Those that the rows refuse are named before they leave without numbers.
  person.press({"ctrl+1", "ctrl+a", "Delete", "ctrl+Home"});
  person.type("999\n");
  ASSERT_TRUE(test::wait_until([&] { return session().project.data(1).rows.size() == 1; }));
  boxes.press_on_boxes("Return");
  person.press({"alt+c"});
  ASSERT_TRUE(test::wait_until([&] { return boxes.texts().size() > asked_before; }));
  ASSERT_TRUE(test::wait_until([&] { return !program.commands.running(); }));
  const auto told_before = boxes.texts().size();
  boxes.press_on_boxes("alt+y");
  EXPECT_GT(size_after(command::export_report, QStringLiteral("old.html")), 2000);
  ASSERT_EQ(boxes.texts().size(), told_before + 1) << "they are not tried again";
  EXPECT_TRUE(boxes.texts().back().startsWith(QStringLiteral("A fit is out of date")));
  EXPECT_FALSE(told_in(QStringLiteral("old.html")).contains("\u03B7"))
      << "no number of the old fit, nor in the chart";
}

}  // namespace
}  // namespace tavlo
