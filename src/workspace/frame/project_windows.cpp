#include "workspace/frame/project_windows.h"

#include <QApplication>
#include <QResizeEvent>
#include <algorithm>
#include <array>
#include <utility>

#include "actions/clipboard_text.h"
#include "workspace/frame/block_layout.h"
#include "workspace/qt/icons.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

template <class Records>
std::vector<std::int32_t> places_of(const Records& records) {
  std::vector<std::int32_t> ids;
  for (int i = 1; i <= records.bound(); ++i) ids.push_back(records(i).UniqueId);
  return ids;
}

QString key_of(char kind, int index) { return QLatin1Char(kind) + QString::number(index); }

Block block_of(const QString& node_key) {
  switch (node_key.front().toLatin1()) {
    case 'D': return Block::sheet;
    case 'F': return Block::panel;
    case 'C': return Block::chart;
    default: return Block::log;
  }
}

}  // namespace

ProjectWindows::ProjectWindows(Program& program, QWidget* parent)
    : QMdiArea(parent), program_(program) {
  setObjectName(QStringLiteral("area"));
  setBackground(palette().mid());
  setFrameShape(QFrame::NoFrame);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  connect_views();
  connect(this, &QMdiArea::subWindowActivated, this, &ProjectWindows::note_active);
}

ProjectWindows::~ProjectWindows() { end_all(); }

void ProjectWindows::connect_views() {
  const ViewSignals& views = program_.views;
  const auto has = [](const auto& list, int index) {
    return index >= 1 && slot(index) < list.size();
  };
  connect(&views, &ViewSignals::sheet, this, [this, has](int index) {
    if (has(sheets_, index)) sheet(index).refresh();
    emit content_changed();
  });
  connect(&views, &ViewSignals::fit_grid, this, [this, has](int index) {
    if (has(panels_, index)) panel(index).refresh_grid();
  });
  connect(&views, &ViewSignals::button_caption, this, [this, has](int index, const QString& text) {
    if (has(panels_, index)) panel(index).set_button_caption(text);
  });
  connect(&views, &ViewSignals::chart, this, [this, has](int index) {
    if (has(charts_, index)) chart(index).compose();
  });
  connect(&views, &ViewSignals::age_of_chart, this, [this, has](int index) {
    if (has(charts_, index)) chart(index).show_age();
  });
  connect(&views, &ViewSignals::log, this, [this] {
    if (log_) log_->refresh();
  });
  connect(&program_.commands, &UserCommands::finished, this, &ProjectWindows::catch_up);
}

// The sheet closes an edit that the core has ended.
void ProjectWindows::catch_up() {
  for (int i = 1; i <= static_cast<int>(sheets_.size()); ++i)
    if (!program_.session.gDataForm(i)->editing() && sheet(i).edit_box().isVisible())
      sheet(i).refresh();
}

void ProjectWindows::end_all() {
  const auto ending = std::exchange(children_, {});
  sheets_.clear();
  panels_.clear();
  charts_.clear();
  log_ = nullptr;
  for (ChildWindow* each : ending) {
    removeSubWindow(each);
    delete each;
  }
}

void ProjectWindows::follow_records() {
  const Project& project = program_.session.project;
  move_up('D', places_of(project.data), data_ids_);
  move_up('F', places_of(project.fits), fit_ids_);
  move_up('C', places_of(project.charts), chart_ids_);
  drop_behind(sheets_, 'D', project.data.bound());
  drop_behind(panels_, 'F', project.fits.bound());
  drop_behind(charts_, 'C', project.charts.bound());
  while (ssize(sheets_) < project.data.bound()) add_sheet();
  while (ssize(panels_) < project.fits.bound()) add_panel();
  while (ssize(charts_) < project.charts.bound()) add_chart();
  if (!log_) add_log();
  show_new();
  for (int i = 1; i <= project.data.bound(); ++i)
    child(key_of('D', i))->set_title(to_qt(project.data(i).Title));
  for (int i = 1; i <= project.fits.bound(); ++i)
    child(key_of('F', i))->set_title(to_qt(project.fits(i).Title));
  note_active(activeSubWindow());  // it may show another chart now
}

/// Where a record goes from the middle of its list, each one behind it takes its place: its
/// window stands as the one that showed it so far.
void ProjectWindows::move_up(char kind, const std::vector<std::int32_t>& ids,
                             std::vector<std::int32_t>& shown) {
  const auto [there, gone] = std::mismatch(ids.begin(), ids.end(), shown.begin(), shown.end());
  const auto left = shown.end() - gone;
  if (left > 0 && ids.end() - there == left - 1 && std::equal(there, ids.end(), gone + 1)) {
    const int first = static_cast<int>(gone - shown.begin()) + 1;
    for (int i = first; i < static_cast<int>(shown.size()); ++i)
      take_place(*child(key_of(kind, i)), *child(key_of(kind, i + 1)));
    if (kind == 'D' && last_set_ > first) --last_set_;
  }
  shown = ids;
}

void ProjectWindows::take_place(ChildWindow& window, const ChildWindow& of) {
  window.setGeometry(of.geometry());
  if (!of.isHidden()) return window.show();
  window.hide();
  emit child_hidden(window.node_key());
}

void ProjectWindows::show_from_start() {
  in_blocks_ = true;
  for (ChildWindow* each : children_) each->show();
  Tile_Block();
  // The three of the first set: the button that calculates belongs to the sheet one sees.
  for (const auto* key : {"C1", "F1", "D1"})
    if (ChildWindow* window = child(to_qt(key))) window->bring_to_front();
}

bool ProjectWindows::is_dragging() const {
  return std::any_of(charts_.begin(), charts_.end(),
                     [](const ChartWindow* each) { return each->is_dragging(); });
}

template <class View>
void ProjectWindows::drop_behind(std::vector<View*>& views, char kind, int count) {
  for (; ssize(views) > count; views.pop_back()) {
    ChildWindow* window = child(key_of(kind, static_cast<int>(views.size())));
    std::erase(children_, window);
    removeSubWindow(window);
    delete window;
  }
}

// Later: the program that the text comes from waits until the drop is over, and a box
// would hold it.
void ProjectWindows::connect_drops(SheetView& view, int index) {
  const auto enter = [this, &view, index](auto act) {
    return [this, &view, index, act](const QString& dropped) {
      if (program_.is_busy()) return;
      program_.commands.run([&] {
        view.mirror_selection();
        act(program_.session, index, from_qt(dropped));
      });
    };
  };
  connect(&view, &SheetView::text_dropped, &view, enter(drop_text), Qt::QueuedConnection);
  connect(&view, &SheetView::file_dropped, &view, enter(drop_file), Qt::QueuedConnection);
}

void ProjectWindows::add_sheet() {
  Session& session = program_.session;
  const int index = static_cast<int>(sheets_.size()) + 1;
  auto* view = new SheetView(*session.gDataForm(index), program_.commands, nullptr);
  connect(view, &SheetView::hint_wanted, this, &ProjectWindows::hint_wanted);
  connect(view, &SheetView::rows_pasted, this, &ProjectWindows::rows_pasted);
  connect_drops(*view, index);
  connect(view, &SheetView::edited, this, [this](const QString& step) {
    program_.session.step = from_qt(step);
    emit content_changed();
  });
  sheets_.push_back(view);
  add(view, key_of('D', index), QStringLiteral("frm_data"), QStringLiteral("editor"),
      session.project.data(index).Title);
}

void ProjectWindows::add_panel() {
  Session& session = program_.session;
  const int index = static_cast<int>(panels_.size()) + 1;
  auto* panel = new FitWindow(session, program_.commands, index);
  connect(panel, &FitWindow::choices_changed, this, &ProjectWindows::content_changed);
  connect(panel, &FitWindow::hint_wanted, this, &ProjectWindows::hint_wanted);
  panels_.push_back(panel);
  add(panel, key_of('F', index), QStringLiteral("frm_Fit"), QStringLiteral("pc"),
      session.project.fits(index).Title);
}

void ProjectWindows::add_chart() {
  const int index = static_cast<int>(charts_.size()) + 1;
  charts_.push_back(new ChartWindow(program_.session, program_.commands, index));
  connect(charts_.back(), &ChartWindow::hint_wanted, this, &ProjectWindows::hint_wanted);
  add(charts_.back(), key_of('C', index), QStringLiteral("frm_Chart"), QStringLiteral("graph"),
      "Chart" + std::to_string(index));
}

void ProjectWindows::add_log() {
  log_ = new LogWindow(program_.session.project.log);
  add(log_, QStringLiteral("L1"), QStringLiteral("frm_Log"), QStringLiteral("doc"), "Log");
}

ChildWindow& ProjectWindows::add(QWidget* content, const QString& key, const QString& name,
                                 const QString& image, const std::string& title) {
  auto* window = new ChildWindow(content, key, to_qt(title), icon(image));
  window->setObjectName(name);
  addSubWindow(window);
  window->installEventFilter(this);
  connect(window, &ChildWindow::moved_by_user, this, &ProjectWindows::leave_layout);
  connect(window, &ChildWindow::recycled, this, [this, window] {
    if (in_blocks_) Tile_Block();
    activateNextSubWindow();
    emit child_hidden(window->node_key());
  });
  children_.push_back(window);
  new_.push_back(window);
  return *window;
}

/// After all have been added: the area looks for the place of each among those it shows.
void ProjectWindows::show_new() {
  for (ChildWindow* each : std::exchange(new_, {})) each->show();
}

/// Once, however many windows have come into view.
void ProjectWindows::tile_later() {
  if (std::exchange(will_tile_, true)) return;
  QMetaObject::invokeMethod(
      this,
      [this] {
        will_tile_ = false;
        if (in_blocks_) Tile_Block();
      },
      Qt::QueuedConnection);
}

ChildWindow* ProjectWindows::child(const QString& node_key) const {
  const auto found = std::find_if(children_.begin(), children_.end(), [&](const ChildWindow* each) {
    return each->node_key() == node_key;
  });
  return found == children_.end() ? nullptr : *found;
}

// From a chart or the log the set that was worked on last is meant. Its record may have gone
// already, and the window be about to.
int ProjectWindows::current_index() const {
  return last_set_ <= program_.session.project.fits.bound() ? last_set_ : 1;
}

void ProjectWindows::note_active(const QMdiSubWindow* active) {
  const auto* child = qobject_cast<const ChildWindow*>(active);
  if (child && (child->node_key().front() == u'D' || child->node_key().front() == u'F'))
    last_set_ = child->node_key().mid(1).toInt();
  if (child && child->node_key().front() == u'C') note_chart(child->node_key().mid(1).toInt());
}

/// The boxes of the fit grids are those of the chart that is worked on.
void ProjectWindows::note_chart(int index) {
  Session& session = program_.session;
  if (index > session.project.charts.bound()) return;
  session.chart_at_work = session.project.charts(index).UniqueId;
  for (FitWindow* each : panels_) each->refresh_grid();
}

QChar ProjectWindows::active_kind() const {
  const auto* active = qobject_cast<const ChildWindow*>(activeSubWindow());
  return active ? active->node_key().front() : u'C';
}

bool ProjectWindows::any(bool shown) const {
  return std::any_of(children_.begin(), children_.end(),
                     [shown](const ChildWindow* each) { return each->isHidden() != shown; });
}

int ProjectWindows::focused_sheet() const {
  const auto found = std::find_if(sheets_.begin(), sheets_.end(),
                                  [](const SheetView* each) { return each->hasFocus(); });
  return found == sheets_.end() ? 0 : static_cast<int>(found - sheets_.begin()) + 1;
}

int ProjectWindows::focused_panel() const {
  const QWidget* focus = QApplication::focusWidget();
  const auto found = std::find_if(panels_.begin(), panels_.end(), [focus](const FitWindow* each) {
    return focus && each->isAncestorOf(focus);
  });
  return found == panels_.end() ? 0 : static_cast<int>(found - panels_.begin()) + 1;
}

int ProjectWindows::focused_chart() const {
  const auto found = std::find_if(charts_.begin(), charts_.end(),
                                  [](const ChartWindow* each) { return each->hasFocus(); });
  return found == charts_.end() ? 0 : static_cast<int>(found - charts_.begin()) + 1;
}

int ProjectWindows::current_chart() const {
  if (charts_.empty()) return 0;
  const QMdiSubWindow* active = activeSubWindow();
  const auto found = std::find_if(charts_.begin(), charts_.end(), [&](const ChartWindow* each) {
    return active && active->widget() == each;
  });
  const bool stands =
      found != charts_.end() && (*found)->index() <= program_.session.project.charts.bound();
  return stands ? (*found)->index() : 1;
}

void ProjectWindows::bring_to_front(const QWidget& view) {
  for (ChildWindow* each : children_)
    if (each->widget() == &view) each->bring_to_front();
}

void ProjectWindows::add_bar(const QWidget& view, QWidget* bar) {
  for (ChildWindow* each : children_)
    if (each->widget() == &view) each->add_bar(bar);
}

void ProjectWindows::leave_layout() {
  in_blocks_ = false;
  places_.clear();
}

QVariantMap ProjectWindows::places() const {
  QVariantMap found;
  const QSizeF area = viewport()->size();
  if (in_blocks_ || area.isEmpty()) return found;
  for (const ChildWindow* each : children_) {
    const QRectF at = each->geometry();
    if (!each->isHidden() && !each->isMinimized() && !each->isMaximized())
      found[each->node_key()] = QRectF(at.x() / area.width(), at.y() / area.height(),
                                       at.width() / area.width(), at.height() / area.height());
  }
  return found;
}

void ProjectWindows::take_places(const QVariantMap& places) {
  if (places.isEmpty()) return;
  leave_layout();
  places_ = places;
  place_again();
}

void ProjectWindows::place_again() {
  const QSizeF area = viewport()->size();
  for (ChildWindow* each : children_) {
    const QRectF share = places_.value(each->node_key()).toRectF() & QRectF(0, 0, 1, 1);
    const QRectF place(share.x() * area.width(), share.y() * area.height(),
                       share.width() * area.width(), share.height() * area.height());
    if (!share.isEmpty() && !each->isMaximized() && !each->isMinimized())
      each->setGeometry(place.toRect());
  }
}

void ProjectWindows::Tile_Block() {
  in_blocks_ = true;
  places_.clear();
  std::array<bool, block_count> visible{};
  for (const ChildWindow* each : children_)
    if (!each->isHidden()) visible[static_cast<std::size_t>(block_of(each->node_key()))] = true;
  const auto places = block_layout(viewport()->size(), fontMetrics().height(), visible);
  for (ChildWindow* each : children_) {
    if (each->isHidden()) continue;
    if (each->isMaximized() || each->isMinimized()) each->showNormal();
    each->setGeometry(places[static_cast<std::size_t>(block_of(each->node_key()))]);
  }
}

void ProjectWindows::tile(bool side_by_side) {
  leave_layout();
  std::vector<ChildWindow*> shown;
  for (ChildWindow* each : children_)
    if (!each->isHidden()) shown.push_back(each);
  const int count = static_cast<int>(shown.size());
  for (int i = 0; i < count; ++i) {
    shown[static_cast<std::size_t>(i)]->showNormal();
    shown[static_cast<std::size_t>(i)]->setGeometry(
        strip(viewport()->size(), i, count, side_by_side));
  }
}

void ProjectWindows::cascade() {
  leave_layout();
  cascadeSubWindows();
}

void ProjectWindows::hide_all() {
  for (ChildWindow* each : children_)
    if (!each->isHidden()) each->close();
}

void ProjectWindows::restore_all() {
  for (ChildWindow* each : children_)
    if (each->isHidden()) each->show();
  if (in_blocks_) Tile_Block();
}

void ProjectWindows::resizeEvent(QResizeEvent* event) {
  QMdiArea::resizeEvent(event);
  const auto* active = activeSubWindow();
  if (in_blocks_ && !(active && active->isMaximized())) Tile_Block();
  if (!places_.isEmpty()) place_again();
}

bool ProjectWindows::eventFilter(QObject* watched, QEvent* event) {
  auto* window = qobject_cast<ChildWindow*>(watched);
  if (window && event->type() == QEvent::ShowToParent) {
    emit child_shown(window->node_key());
    if (in_blocks_) tile_later();
  }
  return QMdiArea::eventFilter(watched, event);
}

}  // namespace tavlo
