// ChartCommands: the commands of the frame's menus that work on a chart, and
// printing.
#pragma once

#include <QObject>

#include "workspace/frame/menus.h"
#include "workspace/frame/printing.h"
#include "workspace/frame/program.h"
#include "workspace/frame/project_windows.h"

namespace tavlo {

class ChartCommands : public QObject {
  Q_OBJECT

 public:
  /// `frame` is the window that dialogs belong to.
  ChartCommands(Program& program, ProjectWindows& windows, QWidget& frame);

  /// Makes the entries of the menu bar that show a state, and those that the
  /// command table lacks.
  void set_up_menus(Menus& menus);

  /// Gives a chart its pop-up menu.
  void attach(ChartWindow& chart);

  void toggle_zoom();
  void toggle_precise_reading();
  void format();
  /// On the page of what lies at the place.
  void format(ChartWindow& chart, drawing::Place place);
  /// The window that is active.
  void print();
  void preview();
  void set_up_printer();

  /// Shows in the menus how the current chart stands.
  void show_state();

 private:
  ChartWindow& chart();
  PrintJob job();

  Program& program_;
  ProjectWindows& windows_;
  QWidget& frame_;
  Printing printing_;
  QAction* zoom_ = nullptr;
  QAction* precise_reading_ = nullptr;
  QAction* sub_populations_ = nullptr;
  QAction* copy_ = nullptr;
};

}  // namespace tavlo
