#include "gui/person.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QInputDialog>
#include <QMessageBox>
#include <QProcess>
#include <QTest>

namespace tavlo::test {

namespace {

/// Runs a program while the event loop turns; its output.
QByteArray run(const QString& program, const QStringList& arguments, const QByteArray& input = {},
               bool wants_output = false) {
  QProcess process;
  if (!wants_output) process.setStandardOutputFile(QProcess::nullDevice());
  process.start(program, arguments);
  process.write(input);
  process.closeWriteChannel();
  const bool ended = wait_until([&] { return process.state() == QProcess::NotRunning; });
  EXPECT_TRUE(ended && process.exitCode() == 0)
      << qPrintable(program) << " " << qPrintable(arguments.join(u' ')) << "\n"
      << process.readAllStandardError().toStdString();
  return wants_output ? process.readAllStandardOutput() : QByteArray();
}

void xdotool(const QStringList& arguments) { run(QStringLiteral("xdotool"), arguments); }

/// A person sees a dialog come, or the window behind it come back, before typing into it: in
/// between nobody hears a key. The wait ends by itself where the keys are meant for another
/// program.
void wait_for_a_listener() {
  wait_until(
      [] {
        const QWidget* const active = QApplication::activeWindow();
        const QWidget* const modal = QApplication::activeModalWidget();
        return active && active->isVisible() && (!modal || modal->isActiveWindow());
      },
      1000);
}

QStringList moving_to(const QWidget& widget, const QPoint& at) {
  const QPoint point = widget.mapToGlobal(at) * widget.devicePixelRatioF();
  return {QStringLiteral("mousemove"), QString::number(point.x()), QString::number(point.y())};
}

}  // namespace

bool wait_until(const std::function<bool()>& holds, int milliseconds) {
  return QTest::qWaitFor(holds, milliseconds);
}

void Person::type(const char* text) {
  wait_for_a_listener();
  QStringList arguments;
  for (const QString& part : QString::fromUtf8(text).split(u'\n')) {
    if (!arguments.isEmpty()) arguments << QStringLiteral("key") << QStringLiteral("Return");
    if (!part.isEmpty())
      xdotool(arguments + QStringList{QStringLiteral("type"), QStringLiteral("--delay"),
                                      QStringLiteral("4"), part});
    else if (!arguments.isEmpty())
      xdotool(arguments);
    arguments = {QStringLiteral("sleep"), QStringLiteral("0")};
  }
}

void Person::press(std::initializer_list<const char*> keys) {
  for (const char* key : keys) {
    wait_for_a_listener();
    xdotool({QStringLiteral("key"), QString::fromUtf8(key)});
  }
}

void Person::click(const QWidget& widget) { click(widget, widget.rect().center()); }

void Person::click(const QWidget& widget, const QPoint& at) {
  xdotool(moving_to(widget, at) + QStringList{QStringLiteral("click"), QStringLiteral("1")});
}

void Person::click_twice(const QWidget& widget) {
  xdotool(moving_to(widget, widget.rect().center()) +
          QStringList{QStringLiteral("click"), QStringLiteral("--repeat"), QStringLiteral("2"),
                      QStringLiteral("--delay"), QStringLiteral("10"), QStringLiteral("1")});
}

void Person::ask_for_menu(const QWidget& widget, const QPoint& at) {
  xdotool(moving_to(widget, at) + QStringList{QStringLiteral("click"), QStringLiteral("3")});
}

void Person::move_to(const QWidget& widget, const QPoint& at) { xdotool(moving_to(widget, at)); }

void Person::hold(const QWidget& widget, const QPoint& at) {
  xdotool(moving_to(widget, at) + QStringList{QStringLiteral("mousedown"), QStringLiteral("1")});
}

void Person::let_go() { xdotool({QStringLiteral("mouseup"), QStringLiteral("1")}); }

void Person::turn_wheel(const QWidget& widget, const QPoint& at, bool away) {
  xdotool(moving_to(widget, at) +
          QStringList{QStringLiteral("click"), away ? QStringLiteral("4") : QStringLiteral("5")});
}

void Person::drag(const QWidget& widget, const QList<QPoint>& way) {
  hold(widget, way.front());
  for (const QPoint& at : way.mid(1)) move_to(widget, at);
  let_go();
}

void Person::copy_elsewhere(const std::string& text) {
  run(QStringLiteral("xclip"),
      {QStringLiteral("-selection"), QStringLiteral("clipboard"), QStringLiteral("-i")},
      QByteArray::fromStdString(text));
}

QByteArray Person::paste_elsewhere(const QString& type) {
  return run(QStringLiteral("xclip"),
             {QStringLiteral("-selection"), QStringLiteral("clipboard"), QStringLiteral("-o"),
              QStringLiteral("-t"), type},
             {}, true);
}

BoxReader::BoxReader() {
  connect(&timer_, &QTimer::timeout, this, [this] { look(); });
  timer_.start(10);
}

void BoxReader::answer_questions(std::initializer_list<const char*> keys) {
  line_keys_.emplace();
  for (const char* key : keys) line_keys_->append(QString::fromUtf8(key));
}

void BoxReader::look() {
  QWidget* const window = QApplication::activeModalWidget();
  if (!window || window == answered_ || !window->isActiveWindow()) return;
  const auto* box = qobject_cast<QMessageBox*>(window);
  const auto* question = qobject_cast<QInputDialog*>(window);
  if (question && !answers_.isEmpty()) line_keys_ = answers_.takeFirst();
  if (!box && !(question && line_keys_)) return;
  answered_ = window;
  texts_ << (box ? box->text() : question->labelText());
  QStringList keys = {QStringLiteral("key")};
  if (question) keys += *line_keys_;
  keys += key_;
  QProcess::startDetached(QStringLiteral("xdotool"), keys);
}

}  // namespace tavlo::test
