#include "workspace/format/picture_choice.h"

#include <QGridLayout>
#include <QToolButton>

namespace tavlo {

PictureChoice::PictureChoice(int columns, const QSize& picture, QWidget* parent)
    : QWidget(parent), columns_(columns), picture_(picture), grid_(new QGridLayout(this)) {
  grid_->setContentsMargins(0, 0, 0, 0);
  grid_->setSpacing(1);
  grid_->setColumnStretch(columns, 1);
  setFocusPolicy(Qt::ClickFocus);
  connect(&buttons_, &QButtonGroup::idClicked, this, [this](int value) {
    stop_at_checked();
    emit chosen(value);
  });
}

void PictureChoice::add(int value, const QIcon& picture, const QString& name) {
  auto* button = new QToolButton;
  button->setObjectName(QStringLiteral("%1_%2").arg(objectName()).arg(value));
  button->setCheckable(true);
  button->setAutoRaise(true);
  button->setIcon(picture);
  button->setIconSize(picture_);
  button->setToolTip(name);
  if (with_names_) {
    button->setText(name);
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  }
  button->setAccessibleName(name);
  const int count = static_cast<int>(buttons_.buttons().size());
  buttons_.addButton(button, value);
  grid_->addWidget(button, count / columns_, count % columns_);
  stop_at_checked();
}

void PictureChoice::set_value(int value) {
  buttons_.setExclusive(false);
  for (QAbstractButton* button : buttons_.buttons())
    button->setChecked(buttons_.id(button) == value);
  buttons_.setExclusive(true);
  stop_at_checked();
}

// Tab stops at the chosen one, or at the first when none is.
void PictureChoice::stop_at_checked() {
  QAbstractButton* stop = buttons_.checkedButton();
  if (!stop) stop = buttons_.buttons().value(0);
  for (QAbstractButton* button : buttons_.buttons())
    button->setFocusPolicy(button == stop ? Qt::StrongFocus : Qt::ClickFocus);
}

// A label's key leads here.
void PictureChoice::focusInEvent(QFocusEvent*) {
  for (QAbstractButton* button : buttons_.buttons())
    if (button->focusPolicy() == Qt::StrongFocus) button->setFocus(Qt::ShortcutFocusReason);
}

}  // namespace tavlo
