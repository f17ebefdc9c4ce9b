// ChartMenu: the pop-up menu of a chart's window, and the keys of its entries.
#pragma once

#include <QAction>
#include <QMenu>
#include <QObject>
#include <functional>

#include "workspace/chart/chart_window.h"

namespace tavlo {

/// What the frame does for a chart.
struct FrameEntries {
  QAction* zoom = nullptr;
  QAction* precise_reading = nullptr;
  QAction* sub_populations = nullptr;
  QAction* copy = nullptr;
  QMenu* looks = nullptr;
  std::function<void()> format;
  std::function<void()> save;
  std::function<void()> print;
  std::function<void()> preview;
};

class ChartMenu : public QObject {
  Q_OBJECT

 public:
  /// Belongs to the chart's window.
  ChartMenu(ChartWindow& chart, UserCommands& commands, const FrameEntries& frame);

 private:
  QAction* add(QMenu& menu, const QString& caption, const char* name,
               const std::function<void()>& action, const QList<QKeySequence>& keys = {});
  void add_zoom(const FrameEntries& frame);
  void add_marks();
  void add_exits(const FrameEntries& frame);
  void show_state();

  ChartWindow& chart_;
  UserCommands& commands_;
  QMenu menu_;
  QAction* zoom_back_ = nullptr;
  QAction* edit_ = nullptr;
  QAction* delete_ = nullptr;
  QAction* free_ = nullptr;
};

}  // namespace tavlo
