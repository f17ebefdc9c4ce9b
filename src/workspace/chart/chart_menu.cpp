#include "workspace/chart/chart_menu.h"

#include "chart/parts/movable_boxes.h"
#include "chart/scales/chart_view.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

ChartMenu::ChartMenu(ChartWindow& chart, UserCommands& commands, const FrameEntries& frame)
    : QObject(&chart), chart_(chart), commands_(commands) {
  menu_.setObjectName(QStringLiteral("mnu_Chart"));
  add(menu_, tr("&Format..."), "mnu_FormatChart", frame.format);
  menu_.addMenu(frame.looks);
  menu_.addSeparator();
  add_zoom(frame);
  menu_.addSeparator();
  menu_.addAction(frame.precise_reading);
  menu_.addAction(frame.sub_populations);
  menu_.addSeparator();
  add_marks();
  menu_.addSeparator();
  add_exits(frame);
  connect(&chart, &ChartWindow::state_changed, this, &ChartMenu::show_state);
  connect(&chart, &ChartWindow::menu_wanted, this, [this](const QPoint& at) { menu_.popup(at); });
  show_state();
}

/// Keys work while the chart has the focus. The actions belong to the chart, whose
/// keys they are.
QAction* ChartMenu::add(QMenu& menu, const QString& caption, const char* name,
                        const std::function<void()>& action, const QList<QKeySequence>& keys) {
  auto* entry = new QAction(caption, &chart_);
  entry->setObjectName(QString::fromUtf8(name));
  entry->setShortcuts(keys);
  entry->setShortcutContext(Qt::WidgetShortcut);
  connect(entry, &QAction::triggered, &chart_, commands_.slot(action));
  chart_.addAction(entry);
  menu.addAction(entry);
  return entry;
}

void ChartMenu::add_zoom(const FrameEntries& frame) {
  menu_.addAction(frame.zoom);
  add(menu_, tr("Zoom &In"), "mnu_ZoomIn", [this] { chart_.zoom_in(); }, {Qt::Key_Plus});
  zoom_back_ = add(menu_, tr("Zoom &Back"), "mnu_ZoomBack", [this] { chart_.zoom_back(); },
                   {Qt::Key_Backspace, Qt::Key_Minus, QKeySequence::Undo});
  add(menu_, tr("&Automatic Limits"), "mnu_ZoomAutomatic", [this] { chart_.zoom_to_automatic(); },
      {Qt::Key_Home});
}

void ChartMenu::add_marks() {
  QMenu* marks = menu_.addMenu(tr("Add &Mark"));
  const auto adds = [this](MarkKind kind) { return [this, kind] { chart_.add_mark(kind); }; };
  add(*marks, tr("&Text"), "mnu_AddText", adds(MarkKind::text));
  add(*marks, tr("&Line"), "mnu_AddLine", adds(MarkKind::line));
  add(*marks, tr("&Arrow"), "mnu_AddArrow", adds(MarkKind::arrow));
  add(*marks, tr("&Symbol"), "mnu_AddSymbol", adds(MarkKind::symbol));
  edit_ = add(menu_, tr("&Edit Mark..."), "mnu_EditMark", [this] { chart_.edit_selected(); });
  delete_ = add(menu_, tr("&Delete Mark"), "mnu_DeleteMark", [this] { chart_.delete_selected(); },
                {QKeySequence::Delete});
  free_ = add(menu_, tr("Find Its &Own Place"), "mnu_FreeBox", [this] { chart_.free_selected(); });
}

void ChartMenu::add_exits(const FrameEntries& frame) {
  menu_.addAction(frame.copy);
  add(menu_, tr("&Save As..."), "mnu_SaveChart", frame.save);
  add(menu_, tr("P&rint..."), "mnu_PrintChart", frame.print);
  add(menu_, tr("Print Pre&view..."), "mnu_PreviewChart", frame.preview);
}

void ChartMenu::show_state() {
  const MovablePart part = chart_.selected();
  zoom_back_->setEnabled(zoom_depth(chart_.stage().chart()) > 0);
  edit_->setEnabled(part.is_mark());
  delete_->setEnabled(part.is_mark());
  free_->setEnabled(part.is_box() && has_own_place(chart_.stage().chart(), part.index));
}

}  // namespace tavlo
