#include "workspace/frame/busy_filter.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWidget>

namespace tavlo {

namespace {

bool is_input(QEvent::Type type) {
  switch (type) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::ContextMenu:
    case QEvent::DragEnter:
    case QEvent::Drop:
    case QEvent::InputMethod: return true;
    default: return false;
  }
}

/// A press on the button that stops the work. The button itself gets no event: nothing of the
/// windows is alive but the wish.
bool is_on_stop(const QEvent& event) {
  if (event.type() != QEvent::MouseButtonPress) return false;
  const QPoint at = static_cast<const QMouseEvent&>(event).globalPosition().toPoint();
  const QWidget* under = QApplication::widgetAt(at);
  return under && under->property("stops_work").toBool();
}

}  // namespace

void BusyFilter::set_busy(bool busy) {
  if (!busy && depth_ == 0) return;
  depth_ += busy ? 1 : -1;
  if (busy && depth_ == 1) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    qApp->installEventFilter(this);
  } else if (!busy && depth_ == 0) {
    qApp->removeEventFilter(this);
    QApplication::restoreOverrideCursor();
  }
}

bool BusyFilter::eventFilter(QObject*, QEvent* event) {
  // A box that the calculation itself shows must be answered.
  if (!is_input(event->type()) || QApplication::activeModalWidget()) return false;
  if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape)
    progress_.want_stop();
  if (is_on_stop(*event)) progress_.want_stop();
  return true;
}

}  // namespace tavlo
