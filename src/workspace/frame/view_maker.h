// ViewMaker: makes the view of a record, the sheet, the panel, the chart or the log,
// and passes on what it says.
#pragma once

#include <QObject>

#include "workspace/chart/chart_window.h"
#include "workspace/data/sheet_view.h"
#include "workspace/fit/fit_window.h"
#include "workspace/frame/block_layout.h"
#include "workspace/frame/log_window.h"
#include "workspace/frame/program.h"

namespace tavlo {

class ViewMaker : public QObject {
  Q_OBJECT

 public:
  explicit ViewMaker(Program& program) : program_(program) {}

  /// The view of the record at `index`, from 1. The caller owns it.
  QWidget* make(Block block, int index);

  /// What its window is called.
  QString title(Block block, int index) const;

 signals:
  void hint_wanted(const QString& hint);
  void wizard_wanted();
  void rows_pasted();
  void content_changed();

 private:
  LogWindow* make_log();
  SheetView* make_sheet(int index);
  void connect_drops(SheetView& view, int index);
  FitWindow* make_panel(int index);
  ChartWindow* make_chart(int index);

  Program& program_;
};

}  // namespace tavlo
