#include "gui/quick_hand.h"

#include <QApplication>
#include <QDialog>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>
#include <cctype>

namespace tavlo::test {

QWidget& QuickHand::front() {
  if (QWidget* popup = QApplication::activePopupWidget()) return *popup;
  if (QWidget* dialog = QApplication::activeModalWidget()) return *dialog;
  return frame_;
}

void QuickHand::send_key(int key, Qt::KeyboardModifiers with, const QString& text) {
  for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease})
    if (QWindow* const on = front().windowHandle()) qt_handleKeyEvent(on, type, key, with, text);
}

void QuickHand::press(int key, Qt::KeyboardModifiers with) {
  const bool writes = key < Qt::Key_AsciiTilde && !(with & ~Qt::ShiftModifier);
  send_key(key, with, writes ? QString(QChar(key)) : QString());
}

void QuickHand::type(const char* text) {
  for (; *text; ++text) send_key(std::toupper(*text), {}, QString(QLatin1Char(*text)));
}

void QuickHand::click(const QPoint& at, Qt::MouseButton button, Qt::KeyboardModifiers with,
                      int times) {
  for (; times > 0; --times)
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
      send(type, at, button, with);
  time_ += 1000;
}

void QuickHand::send(QEvent::Type type, const QPoint& at, Qt::MouseButton button,
                     Qt::KeyboardModifiers with) {
  QWindow* const on = front().windowHandle();
  if (!on) return;
  const bool is_move = type == QEvent::MouseMove;
  const bool is_down = is_move || type == QEvent::MouseButtonPress;
  qt_handleMouseEvent(on, at, on->mapToGlobal(at), is_down ? button : Qt::NoButton,
                      is_move ? Qt::NoButton : button, type, with, time_ += 100);
}

void QuickHand::turn_wheel(const QPoint& at, int way) {
  QWidget* const place = front().childAt(at);
  QWheelEvent event(QPointF(), front().mapToGlobal(at), {}, {0, 120 * way}, {}, {},
                    Qt::NoScrollPhase, false);
  if (place) QApplication::sendEvent(place, &event);
}

void QuickHand::dismiss() {
  if (QWidget* popup = QApplication::activePopupWidget()) popup->close();
  if (auto* dialog = qobject_cast<QDialog*>(&front())) dialog->reject();
}

}  // namespace tavlo::test
