#include "workspace/data/find_bar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QShortcut>
#include <QToolButton>

namespace tavlo {

namespace {

QToolButton* tool_button(QWidget& bar, const QString& caption, const QString& tip) {
  auto* button = new QToolButton(&bar);
  button->setText(caption);
  button->setToolTip(tip);
  button->setAccessibleName(tip);
  button->setFocusPolicy(Qt::TabFocus);
  return button;
}

}  // namespace

FindBar::FindBar(SheetView& view, UserCommands& commands) : view_(view), commands_(commands) {
  setObjectName(QStringLiteral("find_bar"));
  text_.setObjectName(QStringLiteral("txt_Find"));
  text_.setAccessibleName(tr("Find in the sheet"));
  text_.setPlaceholderText(tr("Find in the sheet"));
  text_.setMaxLength(200);
  text_.setClearButtonEnabled(true);
  text_.installEventFilter(this);
  answer_.setObjectName(QStringLiteral("lbl_Found"));
  add_controls();
  for (const auto& [keys, way] :
       {std::pair(Qt::Key_F3 | Qt::KeyboardModifiers(), SearchWay::forward),
        {Qt::Key_F3 | Qt::ShiftModifier, SearchWay::backward}})
    connect(new QShortcut(keys, this, nullptr, nullptr, Qt::WidgetWithChildrenShortcut),
            &QShortcut::activated, this, [this, way = way] { find(way); });
}

void FindBar::add_controls() {
  auto* line = new QHBoxLayout(this);
  line->setContentsMargins(4, 3, 4, 3);
  line->setSpacing(4);
  QToolButton* const previous =
      tool_button(*this, QStringLiteral("\u25B2"), tr("Find the previous one (Shift+F3)"));
  QToolButton* const next =
      tool_button(*this, QStringLiteral("\u25BC"), tr("Find the next one (F3)"));
  QToolButton* const close = tool_button(*this, QStringLiteral("\u2715"), tr("Close (Esc)"));
  line->addWidget(&text_, 1);
  for (QWidget* each : {static_cast<QWidget*>(previous), static_cast<QWidget*>(next),
                        static_cast<QWidget*>(&answer_), static_cast<QWidget*>(close)})
    line->addWidget(each);
  connect(previous, &QToolButton::clicked, this, [this] { find(SearchWay::backward); });
  connect(next, &QToolButton::clicked, this, [this] { find(SearchWay::forward); });
  connect(close, &QToolButton::clicked, this, &FindBar::close_bar);
  connect(&text_, &QLineEdit::textChanged, &answer_, &QLabel::clear);
}

void FindBar::open() {
  show();
  text_.setFocus();
  text_.selectAll();
}

void FindBar::close_bar() {
  hide();
  view_.setFocus();
}

void FindBar::find(SearchWay way) {
  if (text_.text().isEmpty()) return open();
  commands_.run([&] {
    const CellPlace from = view_.current_cell();
    show_found(find_cell(view_.sheet(), view_.shown_columns(), text_.text(), from, way), from, way);
  });
}

void FindBar::show_found(std::optional<CellPlace> found, CellPlace from, SearchWay way) {
  if (!found) return answer_.setText(tr("Not found"));
  view_.go_to_cell(found->row, found->column);
  const auto place = [](CellPlace cell) { return std::pair(cell.row, cell.column); };
  const bool forward = way == SearchWay::forward;
  if (*found == from)
    answer_.setText(tr("The only one"));
  else if (forward == (place(*found) < place(from)))
    answer_.setText(forward ? tr("From the top") : tr("From the end"));
  else
    answer_.clear();
}

bool FindBar::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
  const auto& key = *static_cast<QKeyEvent*>(event);
  if (key.key() == Qt::Key_Escape) {
    close_bar();
    return true;
  }
  if (key.key() != Qt::Key_Return && key.key() != Qt::Key_Enter) return false;
  find(key.modifiers() & Qt::ShiftModifier ? SearchWay::backward : SearchWay::forward);
  return true;
}

}  // namespace tavlo
