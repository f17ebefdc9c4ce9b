#include "workspace/qt/find_bar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QToolButton>

namespace tavlo {

namespace {

QToolButton* make_button(QWidget* parent, Qt::ArrowType arrow, const QString& name,
                         const QString& tip) {
  auto* button = new QToolButton(parent);
  button->setArrowType(arrow);
  if (arrow == Qt::NoArrow) button->setText(QStringLiteral("\u00D7"));
  button->setObjectName(name);
  button->setAccessibleName(tip);
  button->setToolTip(tip);
  button->setAutoRaise(true);
  button->setFocusPolicy(Qt::TabFocus);
  return button;
}

}  // namespace

FindBar::FindBar(const QString& invitation, QWidget* parent)
    : QWidget(parent), line_(new QLineEdit(this)), told_(new QLabel(this)) {
  setAutoFillBackground(true);
  line_->setObjectName(QStringLiteral("txt_Find"));
  line_->setPlaceholderText(invitation);
  line_->setAccessibleName(invitation);
  line_->setMaxLength(200);
  told_->setObjectName(QStringLiteral("lbl_Found"));
  auto* back = make_button(this, Qt::UpArrow, QStringLiteral("btn_FindPrevious"),
                           tr("Previous place (Shift+F3)"));
  auto* on =
      make_button(this, Qt::DownArrow, QStringLiteral("btn_FindNext"), tr("Next place (F3)"));
  auto* close = make_button(this, Qt::NoArrow, QStringLiteral("btn_FindClose"), tr("Close (Esc)"));
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(4, 2, 4, 2);
  row->setSpacing(4);
  row->addWidget(line_, 2);
  row->addWidget(back);
  row->addWidget(on);
  row->addWidget(told_, 1);
  row->addWidget(close);
  connect(line_, &QLineEdit::textChanged, this, &FindBar::changed);
  connect(back, &QToolButton::clicked, this, &FindBar::previous);
  connect(on, &QToolButton::clicked, this, &FindBar::next);
  connect(close, &QToolButton::clicked, this, &FindBar::closed);
  hide();
}

void FindBar::open(const QString& offered) {
  line_->setClearButtonEnabled(true);  // its icon is looked for in every theme: not at the start
  if (!offered.isEmpty()) line_->setText(offered);
  show();
  line_->setFocus();
  line_->selectAll();
}

void FindBar::tell(const QString& words) { told_->setText(words); }

void FindBar::keyPressEvent(QKeyEvent* event) {
  const bool is_enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  const bool is_next = is_enter || event->key() == Qt::Key_F3;
  if (is_next)
    event->modifiers().testFlag(Qt::ShiftModifier) ? emit previous() : emit next();
  else if (event->key() == Qt::Key_Escape)
    emit closed();
  else
    QWidget::keyPressEvent(event);
}

}  // namespace tavlo
