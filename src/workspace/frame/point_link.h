// PointLink: ties the points of the charts to the rows of the sheets. A click on a point
// selects its row; where a person goes to a row, its point is ringed on every chart.
#pragma once

#include <QObject>

#include "workspace/frame/program.h"
#include "workspace/frame/project_windows.h"

namespace tavlo {

class PointLink : public QObject {
  Q_OBJECT

 public:
  PointLink(Program& program, ProjectWindows& windows);

  /// Brings the sheet to the front, at the row of the point.
  void show_row(const DataPoint& point);

 private:
  void connect_view(Block block, int index);
  int data_of(const DataPoint& point);
  void select_row(const DataPoint& point);
  void ring(int data_index, int row);

  Program& program_;
  ProjectWindows& windows_;
};

}  // namespace tavlo
