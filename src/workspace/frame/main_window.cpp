#include "workspace/frame/main_window.h"

#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QMessageBox>
#include <QStatusBar>
#include <QTimer>

#include "actions/intake.h"
#include "chart/metafile/chart_exits.h"
#include "files/clipboard_text.h"
#include "painter/clipboard_forms.h"
#include "workspace/fit/fit_choices.h"
#include "workspace/frame/command_table.h"
#include "workspace/frame/new_project.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

MainWindow::MainWindow(Program& program)
    : program_(program),
      session_(program.session),
      tree_dock_(tr("Project")),
      windows_(program),
      charts_(program, windows_, *this),
      busy_(program.session) {
  setObjectName(QStringLiteral("frm_vk"));
  setWindowTitle(QStringLiteral("Tavlo"));
  setCentralWidget(&windows_);
  program_.prompts.set_parent(this);
  set_up_tree();
  set_up_status_bar();
  set_up_commands();
  set_up_window_commands();
  set_up_chart_commands();
  set_up_menus();
  connect_views();
  NewProject();
}

void MainWindow::set_up_tree() {
  tree_dock_.setObjectName(QStringLiteral("dock_Project"));
  tree_dock_.setFeatures(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable);
  tree_dock_.setWidget(&tree_);
  addDockWidget(Qt::LeftDockWidgetArea, &tree_dock_);
  resizeDocks({&tree_dock_}, {fontMetrics().height() * 15 / 2}, Qt::Horizontal);
  tree_dock_.setVisible(session_.settings.ProjectTree);
  connect(&tree_, &ProjectTree::chosen, this,
          [this](const QString& key) { program_.commands.run([&] { open_child(key); }); });
}

void MainWindow::set_up_status_bar() {
  hint_.setObjectName(QStringLiteral("lbl_Tip"));
  hint_.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  rows_panel_.setObjectName(QStringLiteral("lbl_Rows"));
  method_panel_.setObjectName(QStringLiteral("lbl_Method"));
  for (QLabel* label : {static_cast<QLabel*>(&hint_), &rows_panel_, &method_panel_})
    label->setContentsMargins(8, 0, 8, 0);
  statusBar()->addWidget(&hint_, 1);
  statusBar()->addPermanentWidget(&rows_panel_);
  statusBar()->addPermanentWidget(&method_panel_);
  statusBar()->setVisible(session_.settings.StatusBar);
}

void MainWindow::set_up_commands() {
  actions_ = {{command::new_project, [this] { ask_for_new_project(); }},
              {command::exit, [this] { QTimer::singleShot(0, this, &QWidget::close); }},
              {command::select_all, [this] { select_all(); }},
              {command::cut, [this] { cut(); }},
              {command::copy, [this] { copy(); }},
              {command::paste, [this] { paste(); }},
              {command::report, [this] { toggle_report(); }},
              {command::about, [this] { show_about(); }}};
}

void MainWindow::set_up_window_commands() {
  actions_.merge(std::map<int, std::function<void()>>{
      {command::cascade, [this] { windows_.cascade(); }},
      {command::tile_horizontal, [this] { windows_.tile(false); }},
      {command::tile_vertical, [this] { windows_.tile(true); }},
      {command::tile_block, [this] { windows_.Tile_Block(); }},
      {command::close_all, [this] { windows_.hide_all(); }},
      {command::restore_all, [this] { windows_.restore_all(); }}});
}

void MainWindow::set_up_chart_commands() {
  actions_.merge(std::map<int, std::function<void()>>{
      {command::print, [this] { charts_.print(); }},
      {command::print_setup, [this] { charts_.set_up_printer(); }},
      {command::precise_reading, [this] { charts_.toggle_precise_reading(); }},
      {command::label_style, [this] { charts_.format(); }},
      {command::zoom, [this] { charts_.toggle_zoom(); }}});
}

void MainWindow::set_up_menus() {
  menus_ = std::make_unique<Menus>(
      *menuBar(), [this](int id) { return actions_.contains(id); },
      [this](int id) { DoCommand(id); });
  QMenu& analysis = menus_->menu(QStringLiteral("&Analysis"));
  QAction* first = analysis.actions().value(0);
  auto* calculate = new QAction(tr("&Calculate Fit"), &analysis);
  calculate->setObjectName(QStringLiteral("mnu_Calculate"));
  calculate->setShortcut(QKeySequence(Qt::ALT | Qt::Key_C));
  connect(calculate, &QAction::triggered, this,
          program_.commands.slot([this] { CheckAndFit(session_, windows_.current_index()); }));
  analysis.insertAction(first, calculate);
  auto* methods = new QMenu(tr("&Method"), &analysis);
  analysis.insertMenu(first, methods);
  set_up_method_menu(*methods);
  set_up_window_menu(menus_->menu(QStringLiteral("&Window")));
  charts_.set_up_menus(*menus_);
}

void MainWindow::set_up_method_menu(QMenu& menu) {
  auto* group = new QActionGroup(&menu);
  for (const Method& method : methods()) {
    QAction* action = menu.addAction(to_qt(method_menu_caption(method.code)));
    action->setCheckable(true);
    group->addAction(action);
    method_actions_[method.code] = action;
    connect(action, &QAction::triggered, this,
            program_.commands.slot([this, code = method.code] { choose_method(code); }));
  }
}

void MainWindow::set_up_window_menu(QMenu& menu) {
  menu.addSeparator();
  add_key(menu, tr("&Next Window"),
          {QKeySequence(Qt::Key_F6), QKeySequence(Qt::CTRL | Qt::Key_Tab)},
          [this] { windows_.activateNextSubWindow(); });
  add_key(menu, tr("Previous &Window"),
          {QKeySequence(Qt::SHIFT | Qt::Key_F6), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab)},
          [this] { windows_.activatePreviousSubWindow(); });
  menu.addSeparator();
  add_key(menu, tr("&Data"), {QKeySequence(Qt::CTRL | Qt::Key_1)},
          [this] { open_child(QStringLiteral("D1")); });
  add_key(menu, tr("&Fit"), {QKeySequence(Qt::CTRL | Qt::Key_2)},
          [this] { open_child(QStringLiteral("F1")); });
  add_key(menu, tr("Char&t"), {QKeySequence(Qt::CTRL | Qt::Key_3)},
          [this] { open_child(QStringLiteral("C1")); });
  add_key(menu, tr("L&og"), {QKeySequence(Qt::CTRL | Qt::Key_4)},
          [this] { open_child(QStringLiteral("L1")); });
  add_key(menu, tr("&Project Tree"), {QKeySequence(Qt::CTRL | Qt::Key_0)}, [this] {
    tree_dock_.show();
    tree_.setFocus();
  });
}

void MainWindow::add_key(QMenu& menu, const QString& caption, const QList<QKeySequence>& keys,
                         const std::function<void()>& action) {
  QAction* entry = menu.addAction(caption);
  entry->setShortcuts(keys);
  connect(entry, &QAction::triggered, this, program_.commands.slot(action));
}

void MainWindow::connect_views() {
  connect(&program_.views, &ViewSignals::status_text, &hint_, &HintLine::say);
  connect(&program_.views, &ViewSignals::busy_changed, &busy_, &BusyFilter::set_busy);
  connect(&windows_, &ProjectWindows::hint_wanted, &hint_, &HintLine::say);
  connect(&windows_, &ProjectWindows::rows_pasted, this, [this] { DoCommand(command::paste); });
  connect(&windows_, &ProjectWindows::content_changed, this, &MainWindow::show_state);
  connect(&windows_, &ProjectWindows::child_hidden, &tree_, &ProjectTree::recycle);
  connect(&windows_, &ProjectWindows::child_shown, &tree_, &ProjectTree::restore);
  connect(&program_.commands, &UserCommands::finished, this, [this] {
    session_.fitting.stop_wanted = false;
    // The slope entered for a Weibayes may have changed the model.
    windows_.panel(windows_.current_index()).show_choices();
    show_state();
    if (close_wanted_) QTimer::singleShot(0, this, &QWidget::close);
  });
}

void MainWindow::NewProject() {
  windows_.end_all();
  start_project(session_);
  tree_.rebuild();
  windows_.build();
  set_up_pop_up_menus();
  hint_.say(tr("Ready"));
  show_state();
}

void MainWindow::set_up_pop_up_menus() {
  for (int i = 1; i <= session_.project.data.bound(); ++i) {
    SheetView& sheet = windows_.sheet(i);
    for (const int id : {command::cut, command::copy, command::paste, command::select_all})
      sheet.addAction(menus_->action(id));
    sheet.setContextMenuPolicy(Qt::ActionsContextMenu);
  }
  for (int i = 1; i <= session_.project.charts.bound(); ++i) charts_.attach(windows_.chart(i));
}

void MainWindow::DoCommand(int id) {
  const auto found = actions_.find(id);
  if (found == actions_.end() || program_.is_busy()) return;
  program_.commands.run(found->second);
}

/// A project can't be saved yet, so the person decides before it is gone.
bool MainWindow::may_lose_project(const std::string& title, const std::string& question) {
  bool empty = true;
  for (int i = 1; i <= session_.project.data.bound(); ++i)
    empty = empty && session_.gDataForm(i)->last_row() == 0;
  return empty || session_.ports.prompts.show(
                      {title, "The data and fits of this project will be lost.\n" + question,
                       BoxIcon::question, BoxButtons::yes_no}) == BoxAnswer::yes;
}

void MainWindow::ask_for_new_project() {
  if (!may_lose_project("New Project", "Start a new project?")) return;
  // The windows may not end inside an event of their own.
  QTimer::singleShot(0, this, program_.commands.slot([this] { NewProject(); }));
}

void MainWindow::select_all() {
  if (const int index = windows_.focused_sheet()) windows_.sheet(index).selectAll();
}

void MainWindow::cut() {
  const int index = windows_.focused_sheet();
  if (index == 0) return;
  copy();
  windows_.sheet(index).clear_selected();
}

void MainWindow::copy() {
  if (const int sheet = windows_.focused_sheet()) {
    windows_.sheet(sheet).mirror_selection();
    CopyClip(session_, sheet);
  } else if (const int panel = windows_.focused_panel()) {
    windows_.panel(panel).mirror_selection();
    CopyClip(session_, session_.gFitForm(panel)->grd_Fit);
  } else if (const int chart = windows_.focused_chart()) {
    const DrawingRecord& drawing = windows_.chart(chart).drawing();
    CopyClipChart(session_, drawing, painted_forms(drawing));
  } else if (windows_.log().hasFocus()) {
    windows_.log().copy();
  }
}

void MainWindow::paste() {
  const int index = windows_.focused_sheet();
  if (index == 0) return;
  windows_.sheet(index).mirror_selection();
  PasteClip(session_, index);
  show_state();
}

void MainWindow::toggle_report() {
  ChildWindow* chart = windows_.child(QStringLiteral("C1"));
  ChildWindow* log = windows_.child(QStringLiteral("L1"));
  const bool to_chart =
      chart->isMinimized() || (!log->isMinimized() && windows_.activeSubWindow() == log);
  (to_chart ? chart : log)->bring_to_front();
}

void MainWindow::show_about() {
  session_.ports.prompts.show(
      {"About Tavlo(TM)",
       std::string("Tavlo ") + TAVLO_VERSION +
           "\n\nLife data analysis: times to failure and suspensions, fitted and shown on "
           "probability paper.",
       BoxIcon::information, BoxButtons::ok});
}

void MainWindow::open_child(const QString& node_key) {
  if (ChildWindow* child = windows_.child(node_key)) child->bring_to_front();
}

void MainWindow::choose_method(int method) {
  const int index = windows_.current_index();
  opt_Method_Click(session_, index, static_cast<std::int16_t>(method));
  windows_.panel(index).show_choices();
  show_state();
}

void MainWindow::show_state() {
  const FitPanel& panel = *session_.gFitForm(windows_.current_index());
  rows_panel_.setText(tr("%1 rows").arg(session_.gDataForm(panel.data_index)->last_row()));
  const Model* model = find_model(panel.nModel);
  const Method* method = find_method(panel.nMethod);
  if (model && method)
    method_panel_.setText(
        QStringLiteral("%1, %2").arg(to_qt(model->long_name), to_qt(method->panel_caption)));
  if (const auto found = method_actions_.find(panel.nMethod); found != method_actions_.end())
    found->second->setChecked(true);
}

// The fit works on the records of the windows: they go after it has returned.
void MainWindow::closeEvent(QCloseEvent* event) {
  if (!program_.is_busy()) {
    const bool may_close = close_wanted_ || may_lose_project("Tavlo", "Leave the program?");
    event->setAccepted(may_close);
    return;
  }
  session_.fitting.stop_wanted = true;
  close_wanted_ = true;
  event->ignore();
}

}  // namespace tavlo
