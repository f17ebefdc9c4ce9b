// Person: somebody in front of the program, with a real keyboard, mouse and
// clipboard. Every act spins the event loop until it is over; nobody waits for a
// fixed time.
#pragma once

#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <initializer_list>
#include <optional>

namespace tavlo::test {

/// Turns the event loop until `holds` does; false when that takes too long.
bool wait_until(const std::function<bool()>& holds, int milliseconds = 15000);

class Person {
 public:
  /// Types a text; "\n" is the Enter key.
  void type(const char* text);

  /// Presses keys in their order, each as xdotool names them: "alt+c", "F6".
  void press(std::initializer_list<const char*> keys);

  /// Clicks at the middle of the widget, or at a point of it.
  void click(const QWidget& widget);
  void click(const QWidget& widget, const QPoint& at);
  void click_twice(const QWidget& widget);

  /// The right button.
  void ask_for_menu(const QWidget& widget, const QPoint& at);

  /// The mouse, step by step: it moves, holds its left button down, lets go.
  void move_to(const QWidget& widget, const QPoint& at);
  void hold(const QWidget& widget, const QPoint& at);
  void let_go();
  /// One notch of the wheel.
  void turn_wheel(const QWidget& widget, const QPoint& at, bool away);
  /// From the first place by way of the others to the last.
  void drag(const QWidget& widget, const QList<QPoint>& way);

  /// Puts a text on the clipboard, as another program does.
  void copy_elsewhere(const std::string& text);

  /// What the clipboard holds under a name such as "image/png", as another program gets
  /// it; "TARGETS" lists the names.
  QByteArray paste_elsewhere(const QString& type = QStringLiteral("UTF8_STRING"));
};

/// Reads each message box and presses a key on it: Enter unless told otherwise.
class BoxReader : public QObject {
 public:
  BoxReader();
  void press_on_boxes(const char* key) { key_ = QString::fromUtf8(key); }
  /// Answers questions for a line of text too: the keys to press before Enter. Until
  /// then they are left to the test.
  void answer_questions(std::initializer_list<const char*> keys);
  /// The same where each question is answered in another way.
  void answer_in_turn(std::initializer_list<QStringList> answers) { answers_ = answers; }
  const QStringList& texts() const { return texts_; }

 private:
  void look();

  QTimer timer_;
  QString key_ = QStringLiteral("Return");
  std::optional<QStringList> line_keys_;
  QList<QStringList> answers_;
  QStringList texts_;
  QPointer<QWidget> answered_;
};

}  // namespace tavlo::test
