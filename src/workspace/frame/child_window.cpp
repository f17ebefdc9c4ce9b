#include "workspace/frame/child_window.h"

#include <QBoxLayout>
#include <QCloseEvent>
#include <QMdiArea>
#include <QScopedValueRollback>
#include <array>

#include "workspace/qt/icons.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

struct Kind {
  const char* name;
  const char* image;
};

/// In the order of the blocks.
constexpr std::array<Kind, block_count> kinds = {
    {{"frm_data", "editor"}, {"frm_Log", "doc"}, {"frm_Chart", "graph"}, {"frm_Fit", "pc"}}};

/// The title of the active window has the ground of a selection.
QIcon selected(const QIcon& plain) {
  const int side = 16;
  QIcon drawn;
  for (const int scale : {1, 2, 3}) drawn.addPixmap(plain.pixmap(side * scale, QIcon::Selected));
  return drawn;
}

}  // namespace

ChildWindow::ChildWindow(QWidget* content, WindowKey key, const QString& title) : key_(key) {
  const Kind& kind = kinds[static_cast<std::size_t>(key.block)];
  setObjectName(to_qt(kind.name));
  const QIcon plain = icon(to_qt(kind.image));
  setWindowIcon(plain);
  connect(this, &QMdiSubWindow::windowStateChanged, this,
          [this, plain](Qt::WindowStates, Qt::WindowStates now) {
            const bool is_on_highlight = (now & Qt::WindowActive) && !(now & Qt::WindowMaximized);
            setWindowIcon(is_on_highlight ? selected(plain) : plain);
          });
  setWidget(content);
  set_title(title);
  setFocusProxy(content);
  // Tab goes round the controls of the content; the frame itself is no stop.
  setFocusPolicy(Qt::ClickFocus);
}

void ChildWindow::set_title(const QString& title) {
  setWindowTitle(title);
  setAccessibleName(title);
}

void ChildWindow::bring_to_front() {
  if (isMinimized()) showNormal();
  show();
  if (mdiArea()) mdiArea()->setActiveSubWindow(this);
  if (!isAncestorOf(focusWidget())) widget()->setFocus();
}

void ChildWindow::show_behind() {
  const QScopedValueRollback quiet(is_quiet_, true);
  show();
}

// The base makes each window that is shown the active one: for hundreds of them that is
// most of the time that they take.
void ChildWindow::showEvent(QShowEvent* event) {
  is_quiet_ ? QWidget::showEvent(event) : QMdiSubWindow::showEvent(event);
}

void ChildWindow::add_bar(QWidget* bar) {
  if (auto* rows = qobject_cast<QBoxLayout*>(layout())) rows->insertWidget(0, bar);
}

void ChildWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  hide();
  emit recycled();
}

void ChildWindow::mousePressEvent(QMouseEvent* event) {
  geometry_at_press_ = geometry();
  QMdiSubWindow::mousePressEvent(event);
}

void ChildWindow::mouseReleaseEvent(QMouseEvent* event) {
  QMdiSubWindow::mouseReleaseEvent(event);
  if (geometry() != geometry_at_press_) emit moved_by_user();
}

}  // namespace tavlo
