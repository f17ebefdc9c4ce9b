#include "workspace/frame/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMessageBox>
#include <QMimeData>
#include <QScopedValueRollback>
#include <QStatusBar>
#include <QTimer>
#include <QUrl>

#include "actions/announce.h"
#include "actions/clipboard_text.h"
#include "actions/intake.h"
#include "actions/new_project.h"
#include "actions/other_programs.h"
#include "actions/program_end.h"
#include "actions/recent_files.h"
#include "actions/records.h"
#include "actions/reports.h"
#include "actions/undo.h"
#include "actions/work.h"
#include "chart/compose/make_chart.h"
#include "chart/metafile/chart_exits.h"
#include "painter/clipboard_forms.h"
#include "workspace/fit/comparison_dialog.h"
#include "workspace/fit/fit_choices.h"
#include "workspace/frame/captions.h"
#include "workspace/frame/command_table.h"
#include "workspace/frame/help_desk.h"
#include "workspace/frame/kept_questions.h"
#include "workspace/frame/options_dialog.h"
#include "workspace/frame/sample_dialog.h"
#include "workspace/guidance/library_window.h"
#include "workspace/guidance/wizard_window.h"
#include "workspace/qt/look.h"
#include "workspace/qt/own_store.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

/// The path of one file of this computer; empty for anything else.
QString dropped_file(const QMimeData& data) {
  const QList<QUrl> urls = data.urls();
  return urls.size() == 1 ? urls[0].toLocalFile() : QString();
}

}  // namespace

MainWindow::MainWindow(Program& program)
    : program_(program),
      session_(program.session),
      tree_dock_(tr("Project")),
      windows_(program),
      charts_(program, windows_, *this),
      sheets_(program, windows_),
      files_(program, *this,
             {[this] { show_work(); }, [this](int index) { show_set(index); },
              [this] { return windows_.current_index(); }}),
      documents_(program, windows_),
      busy_(program.progress) {
  setObjectName(QStringLiteral("frm_vk"));
  setCentralWidget(&windows_);
  setAcceptDrops(true);
  program_.prompts.set_parent(this);
  set_up_tree();
  set_up_status_bar();
  commands_ = std::make_unique<CommandRegistry>(
      *menuBar(), with_captions(all_commands(*this), session_.LanguageText),
      [this](int id) { DoCommand(id); },
      [this](const QString& path) { return menu_caption(path, session_.LanguageText); });
  files_.attach(commands_->menu(QStringLiteral("&File")),
                commands_->menu(QStringLiteral("&File|Recent &Files")),
                commands_->menu(QStringLiteral("&File|&Examples")),
                commands_->menu(QStringLiteral("&File|Re&cover")));
  bars_ = std::make_unique<ToolBars>(*this, *commands_, [this] {
    const QMdiSubWindow* front = windows_.activeSubWindow();
    return front ? front->windowTitle() : QString();
  });
  show_bars();
  windows_.setContextMenuPolicy(Qt::CustomContextMenu);
  connect(&windows_, &QWidget::customContextMenuRequested, this,
          [this](const QPoint& at) { bars_->all_menus().popup(windows_.mapToGlobal(at)); });
  help_ = std::make_unique<HelpDesk>([this] { return keys_of(all_commands(*this)); });
  chart_menu_.setObjectName(QStringLiteral("mnu_Chart"));
  commands_->fill(chart_menu_, chart_pop_up());
  commands_->menu(QStringLiteral("&Edit|&View Columns")).installEventFilter(&sheets_);
  heading_menu_.setObjectName(QStringLiteral("mnu_Heading"));
  commands_->fill(heading_menu_, heading_pop_up());
  give_commands(tree_, tree_pop_up());
  connect(&tree_, &QTreeWidget::currentItemChanged, this, [this] { commands_->refresh(); });
  connect_views();
  NewProject();
  session_.step.clear();
  session_.history.restart(session_.project);
}

// A window that ends makes another one active and may end an edit: nobody may ask then what
// can be done by members that have gone already.
MainWindow::~MainWindow() {
  program_.commands.drop_later();
  disconnect(&program_.commands, nullptr, this, nullptr);
  disconnect(&program_.views, nullptr, this, nullptr);
  disconnect(&windows_, nullptr, this, nullptr);
  windows_.end_all();
}

void MainWindow::set_up_tree() {
  tree_dock_.setObjectName(QStringLiteral("dock_Project"));
  tree_dock_.setFeatures(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable);
  tree_dock_.setWidget(&tree_);
  addDockWidget(Qt::LeftDockWidgetArea, &tree_dock_);
  constexpr int branches_and_icon = 80;  // pixels, with the edges
  const int name = fontMetrics().horizontalAdvance(QStringLiteral("Chart1"));
  resizeDocks({&tree_dock_}, {branches_and_icon + name}, Qt::Horizontal);
  // The tree is still about to close its own edit.
  connect(
      &tree_, &ProjectTree::renamed, this,
      [this](const QString& key, const QString& title) {
        program_.commands.run([&] { rename_record(key, title); });
      },
      Qt::QueuedConnection);
  connect(&tree_, &ProjectTree::chosen, this, [this](const QString& key) {
    program_.commands.run([&] { open_child(WindowKey::of(key)); });
  });
}

void MainWindow::set_up_status_bar() {
  hint_.setObjectName(QStringLiteral("lbl_Tip"));
  hint_.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  hint_.setMinimumWidth(fontMetrics().averageCharWidth() * 22);
  news_.setObjectName(QStringLiteral("lbl_News"));
  news_.setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
  file_panel_.setObjectName(QStringLiteral("lbl_File"));
  rows_panel_.setObjectName(QStringLiteral("lbl_Rows"));
  method_panel_.setObjectName(QStringLiteral("lbl_Method"));
  for (QLabel* label : {static_cast<QLabel*>(&hint_), static_cast<QLabel*>(&news_), &file_panel_,
                        &rows_panel_, &method_panel_})
    label->setContentsMargins(8, 0, 8, 0);
  statusBar()->addWidget(&hint_, 1);
  statusBar()->addPermanentWidget(&news_);
  statusBar()->addPermanentWidget(&file_panel_);
  statusBar()->addPermanentWidget(&rows_panel_);
  statusBar()->addPermanentWidget(&method_panel_);
}

void MainWindow::connect_views() {
  connect(&program_.views, &ViewSignals::status_text, &news_, &HintLine::say);
  connect(&program_.views, &ViewSignals::records, this, &MainWindow::follow_records);
  connect(&program_.views, &ViewSignals::busy_changed, &busy_, &BusyFilter::set_busy);
  connect(&windows_, &ProjectWindows::hint_wanted, &hint_, &HintLine::say);
  connect(&windows_, &ProjectWindows::wizard_wanted, this, &MainWindow::open_wizard);
  connect(&windows_, &ProjectWindows::rows_pasted, this, [this] { DoCommand(command::paste); });
  connect(&windows_, &ProjectWindows::content_changed, this, &MainWindow::show_state);
  connect(&windows_, &ProjectWindows::child_hidden, &tree_, &ProjectTree::recycle);
  connect(&windows_, &ProjectWindows::child_shown, &tree_, &ProjectTree::restore);
  connect(&windows_, &ProjectWindows::made, this, &MainWindow::set_up_pop_up_menu);
  connect(&windows_, &QMdiArea::subWindowActivated, this, &MainWindow::show_state);
  connect(&program_.commands, &UserCommands::finished, this, &MainWindow::finish_command);
}

void MainWindow::finish_command() {
  program_.progress.start_anew();
  tell_changes();
  if (!windows_.is_dragging()) end_step(session_);
  // The slope entered for a Weibayes may have changed the model.
  windows_.follow_choices();
  show_state();
  if (close_wanted_) QTimer::singleShot(0, this, &QWidget::close);
}

/// Windows and tree get what the project has now.
void MainWindow::follow_records() {
  windows_.follow_records();
  tree_.show_records(session_.project);
  show_state();
}

void MainWindow::NewProject() {
  start_project(session_);
  show_work();
  news_.say(tr("Ready"));
}

/// The state is shown once, after the views of all records have followed.
void MainWindow::tell_changes() {
  const QScopedValueRollback telling(is_telling_, true);
  announce(session_);
}

void MainWindow::show_work() {
  tell_changes();
  {
    const QScopedValueRollback telling(is_telling_, true);
    windows_.show_from_start();
  }
  hint_.say({});
  show_state();
}

// The menu is the frame's: one of the toolkit's own would stand on the stack as a child of the
// view, which a command may delete while it is open.
void MainWindow::give_commands(QAbstractScrollArea& place, std::span<const int> ids) {
  commands_->fill(place, ids);
  place.setContextMenuPolicy(Qt::CustomContextMenu);
  connect(&place, &QWidget::customContextMenuRequested, this, [this, &place](const QPoint& at) {
    view_menu_.clear();
    view_menu_.addActions(place.actions());
    view_menu_.popup(place.viewport()->mapToGlobal(at));
  });
}

/// Its keys are those of its pop-up.
void MainWindow::set_up_sheet(int index) {
  SheetView& view = windows_.sheet(index);
  give_commands(view, sheet_pop_up());
  sheets_.attach(index);
  connect(&view, &SheetView::heading_menu_wanted, this, [this](const QPoint& at) {
    commands_->refresh();
    heading_menu_.popup(at);
  });
  // The check mark of a command is that of the rows that are selected.
  connect(view.selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
    if (!is_telling_ && !program_.commands.running()) commands_->refresh();
  });
}

/// A view that was made gets its commands.
void MainWindow::set_up_pop_up_menu(Block block, int index) {
  switch (block) {
    case Block::sheet: return set_up_sheet(index);
    case Block::panel:
      windows_.panel(index).show_life(shows_life_);
      connect(&windows_.panel(index).life(), &LifePanel::row_chosen, this, [this] {
        if (!is_telling_ && !program_.commands.running()) commands_->refresh();
      });
      return give_commands(windows_.panel(index).grid(), fits_pop_up());
    case Block::log: return give_commands(windows_.log(), log_pop_up());
    case Block::chart: break;
  }
  ChartWindow& chart = windows_.chart(index);
  QMenu& looks = charts_.attach(chart);
  commands_->give_keys(chart, CommandReach::chart);
  connect(&chart, &ChartWindow::state_changed, this, [this] { commands_->refresh(); });
  connect(&chart, &ChartWindow::menu_wanted, this, [this, &looks](const QPoint& at) {
    if (chart_looks_) chart_menu_.removeAction(chart_looks_);
    chart_looks_ = looks.menuAction();
    chart_menu_.insertAction(chart_menu_.actions().value(1), chart_looks_);
    chart_menu_.popup(at);
  });
}

/// What stands in a cell that is still being typed counts: it is a step of its own.
void MainWindow::end_edits() {
  if (windows_.child({Block::log, 1}) && !program_.is_busy()) windows_.log().end_edit();
  for (int i = 1; i <= session_.project.data.bound(); ++i)
    if (session_.gDataForm(i)->editing() && !program_.is_busy()) windows_.sheet(i).leave_edit();
}

void MainWindow::DoCommand(int id) {
  if (windows_.is_dragging()) return;
  end_edits();
  const Command* command = commands_->ready(id);
  if (command && !program_.is_busy()) program_.commands.run(command->run);
  commands_->refresh();
}

void MainWindow::add_data_and_fit() {
  add_data_set(session_);
  show_set(session_.project.data.bound());
}

void MainWindow::show_set(int index) {
  announce(session_);
  open_child({Block::panel, index});
  open_child({Block::sheet, index});
}

void MainWindow::add_chart() {
  tavlo::add_chart(session_);
  announce(session_);
  open_child({Block::chart, session_.project.charts.bound()});
}

// Windows may go with their records, and may not do so inside an event of their own.
void MainWindow::undo() { go_through_history(tavlo::undo); }

void MainWindow::redo() { go_through_history(tavlo::redo); }

void MainWindow::go_through_history(bool (*step)(Session&)) {
  program_.commands.run_later([this, step] {
    if (!windows_.is_dragging() && step(session_)) hint_.say({});  // it was of what is gone
  });
}

void MainWindow::select_all() {
  if (const int index = windows_.focused_sheet()) windows_.sheet(index).selectAll();
  if (windows_.log().hasFocus()) windows_.log().selectAll();
}

void MainWindow::cut() {
  if (documents_.log_is_in_front()) return documents_.cut_from_log();
  const int index = windows_.focused_sheet();
  if (index == 0) return news_.say(tr("Nothing is selected that could be cut"));
  windows_.sheet(index).mirror_selection();
  CutClip(session_, index);
}

void MainWindow::copy() {
  if (const int sheet = windows_.focused_sheet()) {
    windows_.sheet(sheet).mirror_selection();
    CopyClip(session_, sheet);
  } else if (const int panel = windows_.focused_panel()) {
    copy_from_panel(windows_.panel(panel), session_.gFitForm(panel)->grd_Fit);
  } else if (const int chart = windows_.focused_chart()) {
    const DrawingRecord& drawing = windows_.chart(chart).drawing();
    CopyClipChart(session_, make_metafile_drawing(session_, chart), painted_forms(drawing));
  } else if (windows_.log().hasFocus() && windows_.log().textCursor().hasSelection()) {
    session_.ports.clipboard.set_text(windows_.log().selected());
  } else {
    news_.say(tr("Nothing is selected that could be copied"));
  }
}

/// The Life table where the keyboard is on it, else the grid of fits with its headings.
void MainWindow::copy_from_panel(FitWindow& panel, const CellTable& grid) {
  if (panel.life().isAncestorOf(QApplication::focusWidget())) return copy_life();
  panel.mirror_selection();
  CopyClip(session_, grid);
}

void MainWindow::paste() {
  if (documents_.log_is_in_front()) return documents_.paste_into_log();
  const int index = windows_.focused_sheet();
  if (index == 0) return news_.say(tr("Click the cell where the text is to go first"));
  windows_.sheet(index).mirror_selection();
  PasteClip(session_, index);
}

void MainWindow::leave() { QTimer::singleShot(0, this, &QWidget::close); }

void MainWindow::calculate() { CheckAndFit(session_, windows_.current_index()); }

void MainWindow::compare_models() {
  ComparisonDialog::run(
      session_, program_.commands, windows_.current_index(),
      [this] {
        windows_.bring_to_front({Block::log, 1});
      },
      this);
}

/// The charts of planned runs stand behind that of the sample.
void MainWindow::show_sample() {
  show_work();
  if (session_.project.charts.bound() > 1) open_child({Block::chart, 2});
}

void MainWindow::draw_samples() {
  if (!sample_dialog_)
    sample_dialog_ = new SampleDialog(
        program_, [this] { show_sample(); }, this);
  sample_dialog_->open_for(panel().nMethod);
}

void MainWindow::open_wizard() {
  if (!wizard_)
    wizard_ = new WizardWindow(
        session_, [this](const WizardAdvice& advice) { set_model(advice); }, this);
  wizard_->open_wizard();
}

void MainWindow::open_library() {
  if (!library_)
    library_ = new LibraryWindow(
        session_, program_.commands, [this] { return windows_.current_index(); }, this);
  library_->open_window();
}

/// Chooses as the person would, and calculates nothing.
void MainWindow::set_model(const WizardAdvice& advice) {
  program_.commands.run([&] {
    const int index = windows_.current_index();
    const Model* const model = find_model(advice.model);
    if (!model || panel().busy) return;
    tavlo::choose_model(session_, index, model_of_panel(*model)->panel_row);
    if (advice.method) tavlo::choose_method(session_, index, *advice.method);
    windows_.follow_choices();
    show_state();
    news_.say(tr("The fit panel is set to %1; press Calculate Fit").arg(to_qt(model->long_name)));
  });
}

void MainWindow::delete_fit() {
  const int panel = windows_.focused_panel();
  if (panel == 0) return;
  const int row = windows_.panel(panel).current_row();
  tavlo::delete_fit(session_, panel, fit_at(session_, panel, row).slot);
}

void MainWindow::fit_as(std::int16_t model_code) {
  const Block block = windows_.active_block();
  const bool is_of_set = block == Block::sheet || block == Block::panel;
  const int index = is_of_set ? windows_.current_index() : 1;
  if (const Model* model = find_model(model_code))
    tavlo::choose_model(session_, index, model->panel_row);
  windows_.panel(index).show_choices();
  CheckAndFit(session_, index);
}

void MainWindow::open_method_menu() {
  commands_->menu(QStringLiteral("&Analysis|&Method")).popup(QCursor::pos());
}

/// The panel of the set at work where its window is made, else null.
FitWindow* MainWindow::fit_window() {
  const ChildWindow* window = windows_.child({Block::panel, windows_.current_index()});
  return window ? qobject_cast<FitWindow*>(window->widget()) : nullptr;
}

bool MainWindow::has_fit() { return session_.project.fits(windows_.current_index()).nFits > 0; }

bool MainWindow::shows_life() { return shows_life_; }

void MainWindow::toggle_life() {
  shows_life_ = !shows_life_;
  for (ChildWindow* each : windows_.children())
    if (auto* panel = qobject_cast<FitWindow*>(each->widget())) panel->show_life(shows_life_);
}

void MainWindow::copy_life() {
  if (!windows_.panel(windows_.current_index()).life().copy())
    hint_.say(tr("There is no up-to-date fit whose life could be copied"));
}

void MainWindow::mark_life() { windows_.panel(windows_.current_index()).life().mark(); }

std::string MainWindow::why_no_life_copy() {
  const FitWindow* panel = fit_window();
  return panel ? panel->life().why_not_copied() : "Open the fit panel of the set first.";
}

void MainWindow::open_pop_up() {
  QWidget* place = QApplication::focusWidget();
  if (!place) return;
  const QPoint at = place->inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
  // Behind this command: a menu is none of its steps.
  QApplication::postEvent(
      place, new QContextMenuEvent(QContextMenuEvent::Keyboard, at, place->mapToGlobal(at)));
}

std::string MainWindow::why_no_life_mark() {
  const FitWindow* panel = fit_window();
  return panel ? panel->life().why_not_marked() : "Open the fit panel of the set first.";
}

void MainWindow::show_fit_notes() {
  FitWindow* panel = fit_window();
  if (!panel) return;
  const std::string notes = panel->notes();
  session_.ports.prompts.show({"Notes of the fit", notes.empty() ? "There are none." : notes,
                               BoxIcon::information, BoxButtons::ok});
}

void MainWindow::toggle_fit() {
  if (FitWindow* panel = fit_window()) panel->toggle_shown();
}

void MainWindow::choose_fit_colour() {
  if (FitWindow* panel = fit_window()) panel->choose_colour();
}

void MainWindow::delete_record() {
  const QString key = tree_.record();
  const int index = key.mid(1).toInt();
  key.startsWith(u'C') ? delete_chart(session_, index) : delete_set(session_, index);
}

/// "Data1 and Fit1", "Chart2"; empty for what can't be deleted.
std::string MainWindow::deletable_record() {
  const Project& project = session_.project;
  const QString key = tree_.record();
  const int index = key.mid(1).toInt();
  if (key.startsWith(u'C'))
    return project.charts.bound() > 1 ? "Chart" + std::to_string(index) : std::string();
  if (key.isEmpty() || project.data.bound() < 2 || index > project.data.bound()) return {};
  return project.data(index).Title +
         (index <= project.fits.bound() ? " and " + project.fits(index).Title : "");
}

void MainWindow::rename_record(const QString& key, const QString& title) {
  const int index = key.mid(1).toInt();
  const auto rename = key.startsWith(u'D') ? rename_data : rename_fits;
  if (!rename(session_, index, from_qt(title))) tree_.show_records(session_.project);
}

void MainWindow::show_tree() {
  tree_dock_.show();
  tree_.setFocus();
}

void MainWindow::toggle_report() {
  const int index = chart_at_work();
  const ChildWindow* chart = windows_.child({Block::chart, index});
  const ChildWindow* log = windows_.child({Block::log, 1});
  const bool log_is_read = log && !log->isMinimized() && windows_.activeSubWindow() == log;
  const bool to_chart = !chart || chart->isMinimized() || log_is_read;
  to_chart ? open_child({Block::chart, index}) : open_child({Block::log, 1});
}

int MainWindow::chart_at_work() const {
  const Slots<Chart>& charts = session_.project.charts;
  for (int i = 1; i <= charts.bound(); ++i)
    if (charts(i).UniqueId == session_.chart_at_work) return i;
  return 1;
}

void MainWindow::show_help(const char* page) { help_->show_page(QString::fromUtf8(page)); }

void MainWindow::help_on_window() { help_->show_page(HelpDesk::page_of(windows_.active_block())); }

void MainWindow::start_calculator() { tavlo::start_calculator(session_); }

void MainWindow::start_sibling(const char* name) { tavlo::start_sibling(session_, name); }

void MainWindow::toggle_censored() {
  const bool on = !panel().censored;
  chk_Censored_Click(session_, windows_.current_index(), on);
  news_.say(tr(censored_status(on)));
}

void MainWindow::show_about() {
  session_.ports.prompts.show(
      {"About Tavlo(TM)",
       std::string("Tavlo ") + TAVLO_VERSION +
           "\n\nLife data analysis: times to failure and suspensions, fitted and shown on "
           "probability paper.\n\nBuilt with Qt " +
           qVersion() +
           " (LGPL 3), oneTBB (Apache 2.0), Boost.Math (Boost 1.0) and libcsv (LGPL 2.1); charts "
           "are composed in Liberation Sans (SIL OFL 1.1).  Help > Index > Licences has more.",
       BoxIcon::information, BoxButtons::ok});
}

void MainWindow::show_options() {
  note_bars();
  OptionsDialog::run(
      session_, program_.commands, [this] { show_bars(); }, this);
}

void MainWindow::open_child(WindowKey key) { windows_.bring_to_front(key); }

void MainWindow::choose_model(int option) {
  opt_Model_Click(session_, windows_.current_index(), option);
}

void MainWindow::choose_method(int method) {
  opt_Method_Click(session_, windows_.current_index(), static_cast<std::int16_t>(method));
}

void MainWindow::show_state() {
  if (is_telling_) return;
  const FitPanel& panel = *session_.gFitForm(windows_.current_index());
  const DataSheet& sheet = *session_.gDataForm(panel.data_index);
  const int left_out = sheet.left_out_rows();
  rows_panel_.setText(left_out == 0
                          ? tr("%1 rows").arg(sheet.last_row())
                          : tr("%1 rows, %2 left out").arg(sheet.last_row()).arg(left_out));
  const Model* model = find_model(panel.nModel);
  const Method* method = find_method(panel.nMethod);
  if (model && method)
    method_panel_.setText(
        QStringLiteral("%1, %2").arg(to_qt(model->long_name), to_qt(method->panel_caption)));
  const bool unsaved = is_unsaved(session_);
  setWindowTitle(to_qt(project_title(session_)) + QStringLiteral("[*] - Tavlo"));
  setWindowModified(unsaved);
  const std::string& path = present_work(session_).path;
  file_panel_.setText(to_qt((path.empty() ? project_title(session_) : short_file_name(path)) +
                            (unsaved ? " *" : "")));
  file_panel_.setToolTip(to_qt(path));
  tree_.show_age(session_);
  commands_->refresh();
}

void MainWindow::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() == QEvent::ApplicationPaletteChange) make_prompts_readable();
}

/// A key of a command that is grey says why nothing happens.
void MainWindow::keyPressEvent(QKeyEvent* event) {
  const QString refusal = commands_->refusal_of_key(*event, focusWidget());
  if (!refusal.isEmpty()) news_.say(refusal);
  QMainWindow::keyPressEvent(event);
}

// Long work uses the records of the windows: they go after it has returned, and after the
// person has said that they may.
void MainWindow::closeEvent(QCloseEvent* event) {
  close_wanted_ = program_.is_busy();
  if (close_wanted_) {
    program_.progress.want_stop();
    event->ignore();
    return;
  }
  end_edits();
  event->setAccepted(files_.may_leave() && (!library_ || library_->may_close()));
  if (event->isAccepted() && !std::exchange(has_ended_, true)) end_program();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (!dropped_file(*event->mimeData()).isEmpty() && !program_.is_busy())
    event->acceptProposedAction();
}

// The source keeps its file: a drop is always a copy.
void MainWindow::dropEvent(QDropEvent* event) {
  event->setDropAction(Qt::CopyAction);
  event->accept();
  end_edits();
  files_.take_file(from_qt(dropped_file(*event->mimeData())));
}

/// A person may have hidden one by its own button.
void MainWindow::note_bars() {
  session_.settings.ProjectTree = !tree_dock_.isHidden();
  session_.settings.StatusBar = !statusBar()->isHidden();
  session_.settings.StripToolbar = !bars_->strip().isHidden();
  session_.settings.RibbonToolbar = !bars_->ribbon().isHidden();
}

void MainWindow::end_program() {
  note_bars();
  help_->close();
  if (const auto store = own_store(session_.places)) {
    store->setValue(store_key::geometry, saveGeometry());
    store->setValue(store_key::bars, saveState());
    store->setValue(store_key::windows, windows_.places());
    store->setValue(store_key::hidden_columns, sheets_.hidden_columns());
    keep_questions(*store, session_.life_questions);
  }
  End_Program(session_);
}

void MainWindow::show_as_last_time() {
  const auto store = own_store(session_.places);
  if (store) {
    session_.life_questions = kept_questions(*store);
    windows_.panel(1).refresh_grid();  // of the new project that the program starts with
  }
  const bool is_placed = store && restoreGeometry(store->value(store_key::geometry).toByteArray());
  if (store) restoreState(store->value(store_key::bars).toByteArray());
  show_bars();
  is_placed ? show() : show_fitting(*this);
  if (store) sheets_.hide_columns(store->value(store_key::hidden_columns).toList());
  if (store) windows_.take_places(store->value(store_key::windows).toMap());
}

void MainWindow::show_bars() {
  tree_dock_.setVisible(session_.settings.ProjectTree);
  statusBar()->setVisible(session_.settings.StatusBar);
  bars_->strip().setVisible(session_.settings.StripToolbar);
  bars_->ribbon().setVisible(session_.settings.RibbonToolbar);
}

// After the windows have been shown, so that a box about the file stands over them.
void MainWindow::open_at_start(const std::string& path) { files_.open_path(path); }

}  // namespace tavlo
