#include "workspace/frame/view_maker.h"

#include "actions/clipboard_text.h"
#include "actions/reports.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

QWidget* ViewMaker::make(Block block, int index) {
  switch (block) {
    case Block::sheet: return make_sheet(index);
    case Block::panel: return make_panel(index);
    case Block::chart: return make_chart(index);
    case Block::log: break;
  }
  return make_log();
}

QString ViewMaker::title(Block block, int index) const {
  const Project& project = program_.session.project;
  switch (block) {
    case Block::sheet: return to_qt(project.data(index).Title);
    case Block::panel: return to_qt(project.fits(index).Title);
    case Block::chart: return QStringLiteral("Chart%1").arg(index);
    case Block::log: break;
  }
  return QStringLiteral("Log");
}

LogWindow* ViewMaker::make_log() {
  auto* log = new LogWindow(program_.session.project.log);
  connect(log, &LogWindow::edited, this, [this](const RichText& text) {
    program_.commands.run([&] { edit_log(program_.session, text); });
  });
  return log;
}

SheetView* ViewMaker::make_sheet(int index) {
  auto* view = new SheetView(*program_.session.gDataForm(index), program_.commands, nullptr);
  connect(view, &SheetView::hint_wanted, this, &ViewMaker::hint_wanted);
  connect(view, &SheetView::rows_pasted, this, &ViewMaker::rows_pasted);
  connect_drops(*view, index);
  connect(view, &SheetView::edited, this, [this](const QString& step) {
    program_.session.step = from_qt(step);
    emit content_changed();
  });
  return view;
}

// Later: the program that the text comes from waits until the drop is over, and a box
// would hold it.
void ViewMaker::connect_drops(SheetView& view, int index) {
  const auto enter = [this, &view, index](auto act) {
    return [this, &view, index, act](const QString& dropped) {
      if (program_.is_busy()) return;
      program_.commands.run([&] {
        view.mirror_selection();
        act(program_.session, index, from_qt(dropped));
      });
    };
  };
  connect(&view, &SheetView::text_dropped, &view, enter(drop_text), Qt::QueuedConnection);
  connect(&view, &SheetView::file_dropped, &view, enter(drop_file), Qt::QueuedConnection);
}

FitWindow* ViewMaker::make_panel(int index) {
  auto* panel = new FitWindow(program_.session, program_.commands, index);
  connect(panel, &FitWindow::choices_changed, this, &ViewMaker::content_changed);
  connect(panel, &FitWindow::hint_wanted, this, &ViewMaker::hint_wanted);
  connect(panel, &FitWindow::wizard_wanted, this, &ViewMaker::wizard_wanted);
  return panel;
}

ChartWindow* ViewMaker::make_chart(int index) {
  auto* chart = new ChartWindow(program_.session, program_.commands, index);
  connect(chart, &ChartWindow::hint_wanted, this, &ViewMaker::hint_wanted);
  chart->compose();  // what has been announced before it was there
  return chart;
}

}  // namespace tavlo
