#include "workspace/frame/log_window.h"

#include <QAbstractTextDocumentLayout>
#include <QKeyEvent>
#include <QScrollBar>
#include <algorithm>

#include "project/html_text.h"
#include "workspace/qt/rich_text_document.h"

namespace tavlo {

LogWindow::LogWindow(const RichText& log, QWidget* parent) : QTextEdit(parent), log_(log) {
  setObjectName(QStringLiteral("rtb_Log"));
  setAccessibleName(tr("Log"));
  setReadOnly(true);
  setUndoRedoEnabled(false);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  QFont small = font();
  small.setPointSizeF(0.9 * small.pointSizeF());
  setFont(small);
  document()->setDefaultFont(small);
  // A column holds a number of seven digits, so that a fit's line stays whole.
  constexpr int between_columns = 3;
  setTabStopDistance(fontMetrics().horizontalAdvance(QStringLiteral("8888.888")) + between_columns);
  setTabChangesFocus(true);
  setFrameShape(QFrame::NoFrame);
  pause_.setSingleShot(true);
  connect(&pause_, &QTimer::timeout, this, &LogWindow::show_changes);
}

void LogWindow::refresh() {
  constexpr int milliseconds_between_changes = 50;
  if (pause_.isActive()) return;
  show_changes();
  pause_.start(milliseconds_between_changes);
}

// Only what is new, or what an undo takes back, is laid out: a log may be long.
void LogWindow::show_changes() {
  if (log_ == shown_.back().text) return;
  drop_what_is_gone();
  append_rich_text(*document(), log_.behind(shown_.back().text).value());
  shown_.push_back({log_, document()->characterCount() - 1});
  document()->documentLayout()->documentSize();  // lays all out, so that there is an end to go to
  verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

void LogWindow::drop_what_is_gone() {
  const auto gone =
      std::partition_point(shown_.begin() + 1, shown_.end(),
                           [this](const Shown& each) { return log_.continues(each.text); });
  shown_.erase(gone, shown_.end());
  QTextCursor end(document());
  end.setPosition(shown_.back().end);
  end.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
  end.removeSelectedText();
  end.setBlockFormat({});
}

ClipboardText LogWindow::selected() const {
  const QTextCursor cursor = textCursor();
  const bool is_all = cursor.selectionStart() == 0 && !cursor.hasComplexSelection() &&
                      cursor.selectionEnd() == document()->characterCount() - 1;
  const RichText part = is_all ? shown_.back().text : rich_text_of(cursor);
  if (part.empty()) return {};
  return {part.plain(), part.rtf(), html_text(part)};
}

// The key for "select all" is the log's own while it has the focus; the menu's would take it.
// Keys mean the log as it is.
bool LogWindow::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    show_changes();
    if (static_cast<QKeyEvent*>(event)->matches(QKeySequence::SelectAll)) event->accept();
  }
  return QTextEdit::event(event);
}

}  // namespace tavlo
