#include "workspace/frame/help_desk.h"

#include <QApplication>
#include <QDialog>
#include <QHash>
#include <QKeyEvent>

namespace tavlo {

namespace {

/// The page about a dialog by its name.
QString page_of_dialog(const QWidget& dialog) {
  static const QHash<QString, QString> pages = {
      {QStringLiteral("frm_Options"), QStringLiteral("setup")},
      {QStringLiteral("frm_MC"), QStringLiteral("samples")},
      {QStringLiteral("frm_Dist"), QStringLiteral("comparison")},
      {QStringLiteral("frm_Format"), QStringLiteral("charts")},
      {QStringLiteral("frm_Import"), QStringLiteral("import")},
      {QStringLiteral("frm_ModFit"), QStringLiteral("wizard")},
      {QStringLiteral("frm_lib"), QStringLiteral("library")},
      {QStringLiteral("frm_LibRow"), QStringLiteral("library")},
  };
  return pages.value(dialog.objectName(), QStringLiteral("contents"));
}

}  // namespace

HelpDesk::HelpDesk(std::function<QString()> keyboard) : keyboard_(std::move(keyboard)) {
  qApp->installEventFilter(this);
}

void HelpDesk::show_page(const QString& key) {
  if (!window_) window_ = std::make_unique<HelpWindow>(manual_pages(keyboard_()));
  window_->show_page(key);
}

void HelpDesk::close() { window_.reset(); }

QString HelpDesk::page_of(Block block) {
  switch (block) {
    case Block::sheet: return QStringLiteral("sheet");
    case Block::panel: return QStringLiteral("fit-panel");
    case Block::chart: return QStringLiteral("charts");
    case Block::log: return QStringLiteral("log-and-reports");
  }
  return {};
}

// The shortcuts of the frame are not heard while a dialog is open. One that holds the whole
// program would hold the manual too.
bool HelpDesk::eventFilter(QObject*, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  const auto* dialog = qobject_cast<QDialog*>(QApplication::activeWindow());
  if (static_cast<QKeyEvent*>(event)->key() != Qt::Key_F1 || !dialog ||
      dialog->windowModality() == Qt::ApplicationModal)
    return false;
  show_page(page_of_dialog(*dialog));
  return true;
}

}  // namespace tavlo
