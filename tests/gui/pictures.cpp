#include "gui/pictures.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QScrollArea>
#include <QStringList>

namespace tavlo::test {

namespace {

/// Parts of Qt's own widgets take their names from the whole.
bool is_part(const QWidget& widget) {
  return widget.objectName().startsWith(QStringLiteral("qt_")) || widget.focusProxy();
}

QString words_of(const QWidget& widget) {
  if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) return button->text();
  if (const auto* list = qobject_cast<const QComboBox*>(&widget)) return list->currentText();
  const auto* label = qobject_cast<const QLabel*>(&widget);
  return label && !label->wordWrap() ? label->text() : QString();
}

/// What a window smaller than its contents hides and no scroll bar brings back.
bool is_out_of_reach(const QWidget& widget) {
  const QWidget* child = &widget;
  for (const QWidget* parent = child->parentWidget(); parent && !child->isWindow();
       child = parent, parent = parent->parentWidget()) {
    if (qobject_cast<const QAbstractScrollArea*>(parent)) return false;
    if (parent->isVisible() && !parent->rect().intersects(child->geometry())) return true;
  }
  return false;
}

}  // namespace

QString nameless_in(const QWidget& window) {
  QStringList found;
  for (const QWidget* each : window.findChildren<QWidget*>()) {
    if (!each->isVisible() || !(each->focusPolicy() & Qt::TabFocus) || is_part(*each)) continue;
    QAccessibleInterface* face = QAccessible::queryAccessibleInterface(const_cast<QWidget*>(each));
    if (!face || face->text(QAccessible::Name).isEmpty())
      found += QStringLiteral("%1 %2").arg(QString::fromUtf8(each->metaObject()->className()),
                                           each->objectName());
  }
  return found.join(QStringLiteral("; "));
}

QString cut_in(const QWidget& window) {
  QStringList found;
  for (const QWidget* each : window.findChildren<QWidget*>()) {
    const QString words = words_of(*each);
    const QSize least = each->minimumSizeHint();
    const bool may_elide = each->sizePolicy().horizontalPolicy() == QSizePolicy::Ignored;
    if (!each->isVisible() || words.isEmpty()) continue;
    if ((each->width() < least.width() && !may_elide) || each->height() < least.height() ||
        is_out_of_reach(*each))
      found += words + u' ' + each->objectName();
  }
  return found.join(QStringLiteral("; "));
}

void keep_picture(QWidget& window, const QString& name) {
  const QString folder = qEnvironmentVariable("TAVLO_PICTURES");
  if (folder.isEmpty() || !QDir().mkpath(folder)) return;
  window.grab().save(folder + u'/' + name + QStringLiteral(".png"));
}

}  // namespace tavlo::test
