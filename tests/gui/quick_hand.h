// QuickHand: keys and mouse for a test that needs thousands of them. They come in where those
// of the display do, go to whatever pop-up, dialog or frame is in front, and turn no event
// loop of their own as QTest's do.
#pragma once

#include <QWidget>

namespace tavlo::test {

class QuickHand {
 public:
  explicit QuickHand(QWidget& frame) : frame_(frame) {}

  /// The pop-up or dialog that has to be answered first, else the frame.
  QWidget& front();

  void press(int key, Qt::KeyboardModifiers with = {});
  void type(const char* text);
  /// At a place of the front.
  void click(const QPoint& at, Qt::MouseButton button, Qt::KeyboardModifiers with, int times);
  void hold(const QPoint& at) { send(QEvent::MouseButtonPress, at, Qt::LeftButton, {}); }
  void move_to(const QPoint& at) { send(QEvent::MouseMove, at, Qt::LeftButton, {}); }
  void let_go(const QPoint& at) { send(QEvent::MouseButtonRelease, at, Qt::LeftButton, {}); }
  void turn_wheel(const QPoint& at, int way);

  /// Closes the pop-up or rejects the dialog in front.
  void dismiss();

 private:
  void send_key(int key, Qt::KeyboardModifiers with, const QString& text);
  void send(QEvent::Type type, const QPoint& at, Qt::MouseButton button,
            Qt::KeyboardModifiers with);

  QWidget& frame_;
  int time_ = 1;  // milliseconds; two clicks at once are a double click
};

}  // namespace tavlo::test
