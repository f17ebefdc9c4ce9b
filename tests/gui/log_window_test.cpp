// The log as a document: what is shown is the core's, and so is what is copied.
#include <QAbstractTextDocumentLayout>
#include <QTest>
#include <QTextBlock>
#include <random>

#include "actions/reports.h"
#include "gui/window_world.h"
#include "support/shown_rich_text.h"
#include "workspace/qt/qt_text.h"
#include "workspace/qt/rich_text_document.h"

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

}  // namespace
}  // namespace tavlo
