// ChartCommands: what the commands that work on a chart do, and printing.
#pragma once

#include <QMenu>
#include <QObject>
#include <QStandardItemModel>
#include <memory>

#include "workspace/chart/chart_files.h"
#include "workspace/frame/point_link.h"
#include "workspace/frame/printing.h"
#include "workspace/frame/program.h"
#include "workspace/frame/project_windows.h"

namespace tavlo {

class ChartCommands : public QObject {
  Q_OBJECT

 public:
  /// `frame` is the window that dialogs belong to.
  ChartCommands(Program& program, ProjectWindows& windows, QWidget& frame);

  /// Answers a chart's wish for a format and gives it the bar of looks; the menu of looks.
  QMenu& attach(ChartWindow& chart);

  bool any() const { return windows_.current_chart() > 0; }

  /// The chart whose window is active, else the first.
  ChartWindow& chart() { return windows_.chart(windows_.current_chart()); }

  void toggle_zoom();
  void toggle_precise_reading();
  /// Opens the box in which a percentage or a time is typed.
  void read_value();
  /// Brings the sheet to the front, at the row of the point that was chosen last.
  void show_row();
  void toggle_sub_populations();
  void format();
  /// On the page of what lay under the mouse when it asked for the pop-up.
  void format_at_menu();
  /// On the page of what lies at the place.
  void format(ChartWindow& chart, drawing::Place place);
  void save();
  /// The window that is active.
  void print();
  void preview();
  void set_up_printer();

 private:
  void bring_to_front();
  PrintJob job();

  Program& program_;
  ProjectWindows& windows_;
  QWidget& frame_;
  Printing printing_;
  PointLink link_;
  ChartFiles files_;
  std::unique_ptr<QStandardItemModel> printed_fits_;  ///< of the job at hand
};

}  // namespace tavlo
