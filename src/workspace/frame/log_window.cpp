#include "workspace/frame/log_window.h"

#include <QKeyEvent>
#include <QScrollBar>

#include "workspace/qt/qt_text.h"

namespace tavlo {

LogWindow::LogWindow(const RichText& log, QWidget* parent) : QPlainTextEdit(parent), log_(log) {
  setObjectName(QStringLiteral("rtb_Log"));
  setAccessibleName(tr("Log"));
  setReadOnly(true);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  QFont small = font();
  small.setPointSizeF(0.9 * small.pointSizeF());
  setFont(small);
  // A column holds a number of seven digits, so that a fit's line stays whole.
  constexpr int between_columns = 3;
  setTabStopDistance(fontMetrics().horizontalAdvance(QStringLiteral("8888.888")) + between_columns);
  setTabChangesFocus(true);
  setFrameShape(QFrame::NoFrame);
}

// Only what is new, or what an undo takes back, is read and laid out: a log may be long.
void LogWindow::refresh() {
  if (log_ == shown_) return;
  if (const auto added = log_.behind(shown_)) {
    QTextCursor end(document());
    end.movePosition(QTextCursor::End);
    end.insertText(to_qt(added->plain()));
  } else if (const auto gone = shown_.behind(log_)) {
    remove_end(static_cast<int>(to_qt(gone->plain()).size()));
  } else {
    setPlainText(to_qt(log_.plain()));
  }
  shown_ = log_;
  verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

void LogWindow::remove_end(int length) {
  QTextCursor end(document());
  end.movePosition(QTextCursor::End);
  end.setPosition(end.position() - length, QTextCursor::KeepAnchor);
  end.removeSelectedText();
}

// The keys for "select all" and "copy" are the log's own while it has the focus;
// the menu's would take them.
bool LogWindow::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    const auto& key = *static_cast<QKeyEvent*>(event);
    if (key.matches(QKeySequence::SelectAll) || key.matches(QKeySequence::Copy)) event->accept();
  }
  return QPlainTextEdit::event(event);
}

}  // namespace tavlo
