// MainWindow (frm_vk): the frame with menus, project tree, status bar and the
// area of the child windows. Every command of the menus goes through DoCommand.
#pragma once

#include <QAbstractScrollArea>
#include <QDockWidget>
#include <QLabel>
#include <QMainWindow>
#include <QPointer>
#include <memory>

#include "workspace/frame/busy_filter.h"
#include "workspace/frame/chart_commands.h"
#include "workspace/frame/command_registry.h"
#include "workspace/frame/document_commands.h"
#include "workspace/frame/file_commands.h"
#include "workspace/frame/hint_line.h"
#include "workspace/frame/program.h"
#include "workspace/frame/project_tree.h"
#include "workspace/frame/project_windows.h"
#include "workspace/frame/sheet_commands.h"
#include "workspace/frame/tool_bars.h"

namespace tavlo {

class HelpDesk;
class LibraryWindow;
class SampleDialog;
class WizardWindow;
struct WizardAdvice;

class MainWindow : public QMainWindow {
  Q_OBJECT

 public:
  explicit MainWindow(Program& program);
  ~MainWindow() override;

  /// Empties the project and builds it again: one sheet, panel and chart, the
  /// log with its head line, the tree, and the windows in blocks.
  void NewProject();

  /// Carries out a command of the table; does nothing for other numbers and for
  /// what can't be done now.
  void DoCommand(int id);

  /// Shows the frame where it stood when the program ended last, with the bars and windows
  /// as they were; in its usual size where nothing is known of that.
  void show_as_last_time();

  /// Opens the file that the program was started with.
  void open_at_start(const std::string& path);

  /// Shows or hides tree, status bar and tool bars as the settings say.
  void show_bars();

  ProjectWindows& windows() { return windows_; }
  ProjectTree& tree() { return tree_; }
  ChartCommands& charts() { return charts_; }
  SheetCommands& sheets() { return sheets_; }
  FileCommands& files() { return files_; }
  DocumentCommands& documents() { return documents_; }
  const History& history() const { return session_.history; }
  /// The fit panel that a choice is made for.
  FitPanel& panel() { return *session_.gFitForm(windows_.current_index()); }

  // What the commands do.
  void leave();
  void add_data_and_fit();
  void add_chart();
  void undo();
  void redo();
  void select_all();
  void cut();
  void copy();
  void paste();
  void calculate();
  void compare_models();
  void draw_samples();
  void open_wizard();
  void open_library();
  void delete_fit();
  /// Fits the model to the data of the active window, else to those of the first set.
  void fit_as(std::int16_t model_code);
  void open_method_menu();
  void toggle_life();
  bool shows_life();
  void copy_life();
  void mark_life();
  std::string why_no_life_mark();

  /// The pop-up menu of what has the keyboard, as the menu key opens it: not every desktop's
  /// keyboard has that key.
  void open_pop_up();
  std::string why_no_life_copy();
  bool has_fit();
  void show_fit_notes();
  void toggle_fit();
  void choose_fit_colour();
  void delete_record();
  std::string deletable_record();
  void choose_model(int option);
  void choose_method(int method);
  void toggle_report();
  void open_child(WindowKey key);
  void show_tree();
  void show_about();
  void show_options();
  void show_help(const char* page);
  void help_on_window();
  void start_calculator();
  void start_sibling(const char* name);
  void toggle_censored();

 protected:
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void go_through_history(bool (*step)(Session&));
  void set_up_tree();
  void set_up_status_bar();
  void give_commands(QAbstractScrollArea& place, std::span<const int> ids);
  void set_up_sheet(int index);
  void set_up_pop_up_menu(Block block, int index);
  void connect_views();
  void follow_records();
  void finish_command();
  void note_bars();
  void end_program();
  void end_edits();
  int chart_at_work() const;
  void rename_record(const QString& key, const QString& title);

  void tell_changes();
  FitWindow* fit_window();
  void copy_from_panel(FitWindow& panel, const CellTable& grid);
  void show_work();
  void show_sample();
  void set_model(const WizardAdvice& advice);
  void show_set(int index);
  void show_state();

  Program& program_;
  Session& session_;
  std::unique_ptr<CommandRegistry> commands_;
  std::unique_ptr<ToolBars> bars_;
  std::unique_ptr<HelpDesk> help_;
  QDockWidget tree_dock_;
  ProjectTree tree_;
  ProjectWindows windows_;
  HintLine hint_;
  HintLine news_;
  QLabel file_panel_;
  QLabel rows_panel_;
  QLabel method_panel_;
  ChartCommands charts_;
  SheetCommands sheets_;
  FileCommands files_;
  DocumentCommands documents_;
  QMenu chart_menu_;
  QMenu heading_menu_;
  QMenu view_menu_;                ///< of the view for which it was opened last
  QPointer<QAction> chart_looks_;  // of the chart that the menu was last asked for
  BusyFilter busy_;
  // Made at their first use, as children of the window.
  SampleDialog* sample_dialog_ = nullptr;
  WizardWindow* wizard_ = nullptr;
  LibraryWindow* library_ = nullptr;
  bool shows_life_ = true;  ///< panels that are made later follow it
  bool close_wanted_ = false;
  bool has_ended_ = false;   ///< the settings are written once
  bool is_telling_ = false;  ///< the views are following what has changed
};

}  // namespace tavlo
