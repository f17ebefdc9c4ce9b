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

void LogWindow::refresh() {
  if (log_.changes() == shown_changes_) return;
  shown_changes_ = log_.changes();
  const QString text = to_qt(log_.plain());
  // The log grows at its end: only the new part is laid out.
  QTextCursor end(document());
  end.movePosition(QTextCursor::End);
  if (text.startsWith(shown_)) {
    end.insertText(text.sliced(shown_.size()));
  } else {
    setPlainText(text);
  }
  shown_ = text;
  verticalScrollBar()->setValue(verticalScrollBar()->maximum());
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
