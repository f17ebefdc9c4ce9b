// MainWindow (frm_vk): the frame with menus, project tree, status bar and the
// area of the child windows. Every command of the menus goes through DoCommand.
#pragma once

#include <QDockWidget>
#include <QLabel>
#include <QMainWindow>
#include <functional>
#include <map>
#include <memory>

#include "workspace/frame/busy_filter.h"
#include "workspace/frame/chart_commands.h"
#include "workspace/frame/hint_line.h"
#include "workspace/frame/menus.h"
#include "workspace/frame/program.h"
#include "workspace/frame/project_tree.h"
#include "workspace/frame/project_windows.h"

namespace tavlo {

class MainWindow : public QMainWindow {
  Q_OBJECT

 public:
  explicit MainWindow(Program& program);

  /// Empties the project and builds it again: one sheet, panel and chart, the
  /// log with its head line, the tree, and the windows in blocks.
  void NewProject();

  /// Carries out a command of the table; does nothing for other numbers.
  void DoCommand(int id);

  ProjectWindows& windows() { return windows_; }
  ProjectTree& tree() { return tree_; }

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void set_up_commands();
  void set_up_window_commands();
  void set_up_chart_commands();
  void set_up_menus();
  void set_up_method_menu(QMenu& menu);
  void set_up_window_menu(QMenu& menu);
  void set_up_tree();
  void set_up_status_bar();
  void set_up_pop_up_menus();
  void connect_views();
  void add_key(QMenu& menu, const QString& caption, const QList<QKeySequence>& keys,
               const std::function<void()>& action);

  bool may_lose_project(const std::string& title, const std::string& question);
  void ask_for_new_project();
  void select_all();
  void cut();
  void copy();
  void paste();
  void toggle_report();
  void show_about();
  void open_child(const QString& node_key);
  void choose_method(int method);
  void show_state();

  Program& program_;
  Session& session_;
  std::map<int, std::function<void()>> actions_;
  std::unique_ptr<Menus> menus_;
  std::map<int, QAction*> method_actions_;
  QDockWidget tree_dock_;
  ProjectTree tree_;
  ProjectWindows windows_;
  HintLine hint_;
  HintLine news_;
  QLabel rows_panel_;
  QLabel method_panel_;
  ChartCommands charts_;
  BusyFilter busy_;
  bool close_wanted_ = false;
};

}  // namespace tavlo
