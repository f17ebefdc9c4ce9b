// LookChoice: the looks that a chart can have on any paper, as entries of its tool bar
// and of its menu. The last one chosen is that of new charts.
#pragma once

#include <QActionGroup>
#include <QMenu>
#include <QObject>
#include <QToolBar>

#include "workspace/chart/chart_window.h"

namespace tavlo {

class LookChoice : public QObject {
  Q_OBJECT

 public:
  /// Belongs to the chart's window.
  LookChoice(ChartWindow& chart, UserCommands& commands);

  QMenu& menu() { return menu_; }
  /// A tool bar of its own with the entries.
  QToolBar* make_bar(QWidget* parent);

 private:
  void add(const char* look, UserCommands& commands);
  void show_state();

  ChartWindow& chart_;
  QActionGroup group_;
  QMenu menu_;
};

}  // namespace tavlo
