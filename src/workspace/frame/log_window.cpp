#include "workspace/frame/log_window.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QFontDialog>
#include <QKeyEvent>
#include <QMimeData>
#include <QScrollBar>
#include <QTextBlock>
#include <algorithm>
#include <array>
#include <optional>

#include "project/html_text.h"
#include "workspace/qt/qt_text.h"
#include "workspace/qt/rich_text_document.h"

namespace tavlo {

namespace {

constexpr int milliseconds_between_changes = 50;
constexpr int milliseconds_of_rest = 1500;
constexpr int lines_searched_at_a_time = 1000;

/// Keys of commands that the menus have for every window.
bool is_of_menu(QKeyEvent& key) {
  constexpr std::array keys = {QKeySequence::Undo, QKeySequence::Redo, QKeySequence::Cut,
                               QKeySequence::Copy, QKeySequence::Paste};
  return std::any_of(keys.begin(), keys.end(), [&](auto each) { return key.matches(each); });
}

bool is_of_search(QKeyEvent& key) {
  return key.matches(QKeySequence::Find) || key.key() == Qt::Key_F3;
}

}  // namespace

LogWindow::LogWindow(const RichText& log, QWidget* parent)
    : QTextEdit(parent),
      log_(log),
      shown_(*document()),
      search_(tr("Find in the log"), this),
      earlier_(tr("Show earlier entries"), this),
      later_(tr("Show later entries"), this) {
  setObjectName(QStringLiteral("rtb_Log"));
  setAccessibleName(tr("Log"));
  setUndoRedoEnabled(false);  // the project's own takes edits back
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
  rest_.setSingleShot(true);
  connect(&pause_, &QTimer::timeout, this, &LogWindow::show_changes);
  connect(&rest_, &QTimer::timeout, this, &LogWindow::end_edit);
  connect(&shown_, &ShownRichText::edited, this, [this] { rest_.start(milliseconds_of_rest); });
  earlier_.setObjectName(QStringLiteral("cmd_Earlier"));
  later_.setObjectName(QStringLiteral("cmd_Later"));
  for (QPushButton* bar : {&earlier_, &later_}) {
    bar->setToolTip(tr("Of a very long log a part is shown; a search goes through all of it"));
    bar->setFlat(true);
    bar->hide();
  }
  connect(&earlier_, &QPushButton::clicked, this, &LogWindow::show_earlier);
  connect(&later_, &QPushButton::clicked, this, &LogWindow::show_later);
  connect_search();
}

void LogWindow::refresh() {
  if (pause_.isActive()) return;
  show_changes();
  pause_.start(milliseconds_between_changes);
}

// Only what is new, or what an undo takes back, is laid out: a log may be long.
void LogWindow::show_changes() {
  if (log_ == shown_.text()) return;
  const bool is_longer = log_.continues(shown_.text());
  shown_.show(log_);
  place_bars();
  if (!is_longer) return ensureCursorVisible();
  document()->documentLayout()->documentSize();  // lays all out, so that there is an end to go to
  verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

void LogWindow::end_edit() {
  rest_.stop();
  if (!shown_.is_edited()) return;
  emit edited(shown_.take());
  place_bars();
}

ClipboardText LogWindow::selected() {
  end_edit();
  const QTextCursor cursor = textCursor();
  const bool is_all = cursor.selectionStart() == 0 && !cursor.hasComplexSelection() &&
                      cursor.selectionEnd() == document()->characterCount() - 1;
  const RichText part = is_all ? shown_.text() : rich_text_of(cursor);
  if (part.empty()) return {};
  return {part.plain(), part.rtf(), html_text(part)};
}

// Rows of a table have no place in a cell: there the text alone is inserted.
void LogWindow::insert(const RichText& text) {
  QTextCursor cursor = textCursor();
  cursor.beginEditBlock();
  cursor.removeSelectedText();
  if (cursor.currentTable())
    cursor.insertText(QString::fromStdString(text.plain()));
  else
    cursor.setPosition(insert_rich_text(cursor, text));
  cursor.endEditBlock();
  setTextCursor(cursor);
  ensureCursorVisible();
}

// A file that is dropped is meant for the frame, which opens it.
bool LogWindow::canInsertFromMimeData(const QMimeData* source) const {
  return source->hasText() && !source->hasUrls();
}

void LogWindow::insertFromMimeData(const QMimeData* source) {
  if (source->hasText()) textCursor().insertText(source->text());
}

void LogWindow::choose_font() {
  bool chosen = false;
  const QFont font = QFontDialog::getFont(
      &chosen, font_of_letters(*document(), textCursor().charFormat()), this, tr("Label/Style"));
  if (chosen) mergeCurrentCharFormat(letters_of_font(*document(), font));
}

// The keys for "select all" and the search are the log's own while it has the focus; the menu's
// would take them. Keys mean the log as it is.
bool LogWindow::event(QEvent* event) {
  if (event->type() != QEvent::ShortcutOverride) return QTextEdit::event(event);
  auto& key = static_cast<QKeyEvent&>(*event);
  show_changes();
  if (is_of_menu(key)) return event->ignore(), true;
  if (key.matches(QKeySequence::SelectAll)) end_edit();  // what follows means all entries
  if (key.matches(QKeySequence::SelectAll) || is_of_search(key)) event->accept();
  return QTextEdit::event(event);
}

void LogWindow::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Find)) return open_search();
  if (event->key() == Qt::Key_F3)
    return search(!event->modifiers().testFlag(Qt::ShiftModifier), false);
  if (event->key() == Qt::Key_Escape && !search_.isHidden()) return close_search();
  if (go_to_end_of_all(*event)) return;
  QTextEdit::keyPressEvent(event);
}

void LogWindow::focusOutEvent(QFocusEvent* event) {
  QTextEdit::focusOutEvent(event);
  if (event->reason() != Qt::PopupFocusReason) end_edit();
}

void LogWindow::resizeEvent(QResizeEvent* event) {
  QTextEdit::resizeEvent(event);
  place_bars();
}

void LogWindow::connect_search() {
  connect(&search_, &FindBar::changed, this, [this] { search(true, true); });
  connect(&search_, &FindBar::next, this, [this] { search(true, false); });
  connect(&search_, &FindBar::previous, this, [this] { search(false, false); });
  connect(&search_, &FindBar::closed, this, &LogWindow::close_search);
}

void LogWindow::open_search() {
  show_changes();
  const QString selected = textCursor().selectedText();
  search_.open(selected.contains(QChar::ParagraphSeparator) ? QString() : selected);
  place_bars();
}

void LogWindow::close_search() {
  search_.hide();
  place_bars();
  setFocus();
}

/// The bars take their room from the text, so that they hide none.
void LogWindow::place_bars() {
  earlier_.setVisible(shown_.hidden() > 0);
  later_.setVisible(shown_.end() < shown_.text().size());
  const auto room = [](const QWidget& bar) { return bar.isHidden() ? 0 : bar.sizeHint().height(); };
  const int above = room(earlier_);
  const int below = room(later_);
  setViewportMargins(0, above, 0, below + room(search_));
  const QRect text = viewport()->geometry();  // the scroll bar lies below the search
  earlier_.setGeometry(text.left(), text.top() - above, text.width(), above);
  later_.setGeometry(text.left(), text.bottom() + 1, text.width(), below);
  search_.setGeometry(text.left(), text.bottom() + 1 + below, text.width(), room(search_));
}

void LogWindow::reveal(std::size_t place) {
  end_edit();
  QApplication::setOverrideCursor(Qt::WaitCursor);
  shown_.reveal(place);
  QApplication::restoreOverrideCursor();
  place_bars();
}

void LogWindow::show_earlier() {
  const std::size_t top = shown_.hidden();
  reveal(top - 1);
  QTextCursor at(document());
  at.setPosition(shown_.position_before(top));
  setTextCursor(at);
}

void LogWindow::show_later() {
  const std::size_t bottom = shown_.end();
  reveal(bottom + 1);
  QTextCursor at(document());
  at.setPosition(shown_.position_before(bottom));
  setTextCursor(at);
}

/// The first and the last entry are those of the whole log.
bool LogWindow::go_to_end_of_all(QKeyEvent& key) {
  const bool to_start = key.matches(QKeySequence::MoveToStartOfDocument) && shown_.hidden() > 0;
  const bool to_end =
      key.matches(QKeySequence::MoveToEndOfDocument) && shown_.end() < shown_.text().size();
  if (!to_start && !to_end) return false;
  reveal(to_start ? 0 : shown_.text().size());
  moveCursor(to_start ? QTextCursor::Start : QTextCursor::End);
  return true;
}

/// A part of the log that is not in the document.
struct LogWindow::HiddenPart {
  std::size_t begin = 0;
  std::size_t end = 0;
  bool goes_round = false;  ///< the search has come to it by way of the other end
};

/// In the order of the search, behind what is shown and round by way of the other end.
std::vector<LogWindow::HiddenPart> LogWindow::hidden_parts(bool forward) const {
  const RichText& log = shown_.text();
  std::vector<HiddenPart> before, behind;
  const auto add = [&](std::vector<HiddenPart>& parts, std::size_t begin, std::size_t end,
                       bool goes_round) {
    for (const std::size_t next : log.line_begins(begin, lines_searched_at_a_time)) {
      if (next >= end) break;
      if (next > begin) parts.push_back({begin, next, goes_round});
      begin = next;
    }
    if (begin < end) parts.push_back({begin, end, goes_round});
  };
  add(before, 0, shown_.hidden(), forward);
  add(behind, std::min(shown_.end() + 1, log.size()), log.size(), !forward);  // its line end
  std::vector<HiddenPart>& first = forward ? behind : before;
  const std::vector<HiddenPart>& then = forward ? before : behind;
  first.insert(forward ? first.end() : first.begin(), then.begin(), then.end());
  if (!forward) std::reverse(first.begin(), first.end());
  return first;
}

std::optional<LogWindow::HiddenPart> LogWindow::hidden_with_wanted(bool forward) const {
  for (const HiddenPart& part : hidden_parts(forward))
    if (to_qt(shown_.text().part(part.begin, part.end).plain())
            .contains(search_.wanted(), Qt::CaseInsensitive))
      return part;
  return std::nullopt;
}

QTextCursor LogWindow::found_from(const QTextCursor& from, bool forward) const {
  return document()->find(search_.wanted(), from,
                          forward ? QTextDocument::FindFlags() : QTextDocument::FindBackward);
}

/// Begins again at the other end where there is nothing more.
void LogWindow::search(bool forward, bool from_here) {
  if (search_.wanted().isEmpty()) return search_.isHidden() ? open_search() : search_.tell({});
  QTextCursor from = textCursor();
  if (from_here) from.setPosition(from.selectionStart());
  QTextCursor found = found_from(from, forward);
  bool goes_round = false;
  if (found.isNull()) {
    end_edit();
    const auto part = hidden_with_wanted(forward);
    goes_round = !part || part->goes_round;
    if (part) {
      reveal(part->begin);
      from = QTextCursor(document());
      from.setPosition(forward ? shown_.position_before(part->begin)
                               : shown_.position_behind(part->end));
    } else {
      from.movePosition(forward ? QTextCursor::Start : QTextCursor::End);
    }
    found = found_from(from, forward);
  }
  search_.tell(found.isNull() ? tr("Not found")
               : goes_round   ? (forward ? tr("From the beginning") : tr("From the end"))
                              : QString());
  if (!found.isNull()) setTextCursor(found);
}

}  // namespace tavlo
