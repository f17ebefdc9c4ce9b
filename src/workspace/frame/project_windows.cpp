#include "workspace/frame/project_windows.h"

#include <QApplication>
#include <QResizeEvent>
#include <algorithm>
#include <utility>

namespace tavlo {

namespace {

template <class Records>
std::vector<std::int32_t> ids_of(const Records& records) {
  std::vector<std::int32_t> ids;
  for (int i = 1; i <= records.bound(); ++i) ids.push_back(records(i).UniqueId);
  return ids;
}

}  // namespace

ProjectWindows::ProjectWindows(Program& program, QWidget* parent)
    : QMdiArea(parent), program_(program), views_(program) {
  setObjectName(QStringLiteral("area"));
  setBackground(QBrush(Qt::NoBrush));
  viewport()->setBackgroundRole(QPalette::Mid);
  viewport()->setAutoFillBackground(true);
  setFrameShape(QFrame::NoFrame);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  connect(&views_, &ViewMaker::hint_wanted, this, &ProjectWindows::hint_wanted);
  connect(&views_, &ViewMaker::wizard_wanted, this, &ProjectWindows::wizard_wanted);
  connect(&views_, &ViewMaker::rows_pasted, this, &ProjectWindows::rows_pasted);
  connect(&views_, &ViewMaker::content_changed, this, &ProjectWindows::content_changed);
  connect_views();
  connect(this, &QMdiArea::subWindowActivated, this, &ProjectWindows::note_active);
}

ProjectWindows::~ProjectWindows() { end_all(); }

template <class View>
View* ProjectWindows::made_view(Block block, int index) const {
  const ChildWindow* made = has({block, index}) ? seats(block)[slot(index)].window : nullptr;
  return made ? static_cast<View*>(made->widget()) : nullptr;
}

template <class View, class Act>
void ProjectWindows::for_each_made(Block block, const Act& act) const {
  for (int i = 1; i <= ssize(seats(block)); ++i)
    if (auto* view = made_view<View>(block, i)) act(i, *view);
}

/// Set by set: its sheet and its panel, then the charts and the log.
template <class Act>
void ProjectWindows::for_each_seat(const Act& act) {
  for (int i = 1; i <= ssize(seats(Block::sheet)) || i <= ssize(seats(Block::panel)); ++i)
    for (const Block block : {Block::sheet, Block::panel})
      if (has({block, i})) act(WindowKey{block, i}, seat({block, i}));
  for (const Block block : {Block::chart, Block::log})
    for (int i = 1; i <= ssize(seats(block)); ++i) act(WindowKey{block, i}, seat({block, i}));
}

// A view that is not made yet shows the latest when it is.
void ProjectWindows::connect_views() {
  const ViewSignals& views = program_.views;
  connect(&views, &ViewSignals::sheet, this, [this](int index) {
    if (auto* view = made_view<SheetView>(Block::sheet, index)) view->refresh();
    emit content_changed();
  });
  connect(&views, &ViewSignals::fit_grid, this, [this](int index) {
    if (auto* view = made_view<FitWindow>(Block::panel, index)) view->refresh_grid();
  });
  connect(&views, &ViewSignals::button_caption, this, [this](int index, const QString& text) {
    if (auto* view = made_view<FitWindow>(Block::panel, index)) view->set_button_caption(text);
  });
  connect(&views, &ViewSignals::chart, this, [this](int index) {
    if (auto* view = made_view<ChartWindow>(Block::chart, index)) view->compose();
  });
  connect(&views, &ViewSignals::age_of_chart, this, [this](int index) {
    if (auto* view = made_view<ChartWindow>(Block::chart, index)) view->show_age();
  });
  connect(&views, &ViewSignals::log, this, [this] {
    if (auto* view = made_view<LogWindow>(Block::log, 1)) view->refresh();
  });
  connect(&program_.commands, &UserCommands::finished, this, &ProjectWindows::catch_up);
}

// The sheet closes an edit that the core has ended.
void ProjectWindows::catch_up() {
  for_each_made<SheetView>(Block::sheet, [this](int index, SheetView& view) {
    if (!program_.session.gDataForm(index)->editing() && view.edit_box().isVisible())
      view.refresh();
  });
}

void ProjectWindows::end_all() {
  for (const Block block : {Block::sheet, Block::panel, Block::chart, Block::log})
    set_count(block, 0);
}

void ProjectWindows::follow_records() {
  const Project& project = program_.session.project;
  follow(Block::sheet, ids_of(project.data));
  follow(Block::panel, ids_of(project.fits));
  follow(Block::chart, ids_of(project.charts));
  set_count(Block::log, 1);
  for (ChildWindow* each : children()) each->set_title(views_.title(each->block(), each->index()));
  show_front();
  note_active();  // it may show another chart now
}

/// Where a record goes from the middle of its list, each one behind it takes its place: its
/// window stands as the one that showed it so far.
void ProjectWindows::follow(Block block, const Ids& ids) {
  Ids& shown = ids_[static_cast<std::size_t>(block)];
  const auto [there, gone] = std::mismatch(ids.begin(), ids.end(), shown.begin(), shown.end());
  const auto left = shown.end() - gone;
  if (left > 0 && ids.end() - there == left - 1 && std::equal(there, ids.end(), gone + 1)) {
    const int first = static_cast<int>(gone - shown.begin()) + 1;
    for (int i = first; i < ssize(shown); ++i) take_place_of_next({block, i});
    if (block == Block::sheet && last_set_ > first) --last_set_;
  }
  shown = ids;
  set_count(block, static_cast<int>(ids.size()));
}

void ProjectWindows::take_place_of_next(WindowKey key) {
  const Seat next = seat({key.block, key.index + 1});
  if (next.window) window(key).setGeometry(next.window->geometry());
  set_binned(key, next.is_binned);
  if (ChildWindow* window = seat(key).window)
    window->setVisible(next.window ? next.is_shown() : !next.is_binned);
}

void ProjectWindows::set_count(Block block, int count) {
  for (Seats& all = seats(block); ssize(all) > count;) {
    // The window may be asked for by what its end makes active: it is none of the project's.
    ChildWindow* ending = all.back().window;
    all.pop_back();
    if (ending) removeSubWindow(ending);
    delete ending;
  }
  seats(block).resize(static_cast<std::size_t>(count));
}

ChildWindow& ProjectWindows::window(WindowKey key) {
  if (!seat(key).window) make(key);
  return *seat(key).window;
}

void ProjectWindows::make(WindowKey key) {
  auto* window =
      new ChildWindow(views_.make(key.block, key.index), key, views_.title(key.block, key.index));
  seat(key).window = window;
  addSubWindow(window);
  window->installEventFilter(this);
  connect(window, &ChildWindow::moved_by_user, this, [this] { layout_.leave(); });
  connect(window, &ChildWindow::recycled, this, [this, key] { close_up(key); });
  layout_.place_new(*window);
  emit made(key.block, key.index);
}

/// Each kind of window that the project has outside the bin is in view.
void ProjectWindows::show_front() {
  for (const Block block : {Block::sheet, Block::log, Block::chart, Block::panel}) {
    const Seats& all = seats(block);
    if (std::any_of(all.begin(), all.end(), [](const Seat& each) { return each.is_shown(); }))
      continue;
    const auto first =
        std::find_if(all.begin(), all.end(), [](const Seat& each) { return !each.is_binned; });
    if (first != all.end())
      window({block, static_cast<int>(first - all.begin()) + 1}).show_behind();
  }
}

/// A layout of all windows needs them all.
void ProjectWindows::show_all() {
  for_each_seat([this](WindowKey key, const Seat& seat) {
    if (!seat.is_binned) window(key).show_behind();
  });
}

void ProjectWindows::show_from_start() {
  for_each_seat([this](WindowKey key, const Seat&) { set_binned(key, false); });
  show_front();
  Tile_Block();
  // The three of the first set: the button that calculates belongs to the sheet one sees.
  for (const Block block : {Block::chart, Block::panel, Block::sheet}) bring_to_front({block, 1});
}

void ProjectWindows::set_binned(WindowKey key, bool is_binned) {
  if (std::exchange(seat(key).is_binned, is_binned) == is_binned) return;
  is_binned ? emit child_hidden(key.text()) : emit child_shown(key.text());
}

/// After the person has closed a window.
void ProjectWindows::close_up(WindowKey key) {
  set_binned(key, true);
  show_front();
  layout_.follow(shown());
  activateNextSubWindow();
}

bool ProjectWindows::is_dragging() const {
  bool found = false;
  for_each_made<ChartWindow>(
      Block::chart, [&](int, const ChartWindow& view) { found = found || view.is_dragging(); });
  return found;
}

/// Once, however many windows have come into view.
void ProjectWindows::place_later() {
  if (std::exchange(will_place_, true)) return;
  QMetaObject::invokeMethod(
      this,
      [this] {
        will_place_ = false;
        if (layout_.is_in_blocks()) layout_.follow(shown());
      },
      Qt::QueuedConnection);
}

int ProjectWindows::count() const {
  std::size_t count = 0;
  for (const Seats& all : seats_) count += all.size();
  return static_cast<int>(count);
}

std::vector<ChildWindow*> ProjectWindows::children() const {
  std::vector<ChildWindow*> made;
  for (const Seats& all : seats_)
    for (const Seat& each : all)
      if (each.window) made.push_back(each.window);
  return made;
}

std::vector<ChildWindow*> ProjectWindows::shown() const {
  auto found = children();
  std::erase_if(found, [](const ChildWindow* each) { return each->isHidden(); });
  return found;
}

ChildWindow* ProjectWindows::child(WindowKey key) const {
  return has(key) ? seats(key.block)[slot(key.index)].window : nullptr;
}

const ChildWindow* ProjectWindows::active() const {
  return qobject_cast<const ChildWindow*>(activeSubWindow());
}

// From a chart or the log the set that was worked on last is meant. Its record may have gone
// already, and the window be about to.
int ProjectWindows::current_index() const {
  return last_set_ <= program_.session.project.fits.bound() ? last_set_ : 1;
}

void ProjectWindows::follow_choices() {
  if (auto* view = made_view<FitWindow>(Block::panel, current_index())) view->show_choices();
}

void ProjectWindows::note_active() {
  const ChildWindow* window = active();
  if (!window) return;
  if (window->block() == Block::sheet || window->block() == Block::panel)
    last_set_ = window->index();
  if (window->block() == Block::chart) note_chart(window->index());
  raise_partner(*window);
}

/// In blocks the sheets stand on one place and the panels on another: a sheet and its panel
/// belong together, or a person would calculate another set than the one in view.
void ProjectWindows::raise_partner(const ChildWindow& window) {
  const Block block = window.block();
  if (!layout_.is_in_blocks() || (block != Block::sheet && block != Block::panel)) return;
  const WindowKey partner = {block == Block::sheet ? Block::panel : Block::sheet, window.index()};
  if (!has(partner) || seat(partner).is_binned) return;
  ChildWindow& behind = this->window(partner);
  if (behind.isHidden()) behind.show_behind();
  if (!behind.isMinimized()) behind.raise();
}

/// The boxes of the fit grids are those of the chart that is worked on.
void ProjectWindows::note_chart(int index) {
  Session& session = program_.session;
  if (index > session.project.charts.bound()) return;
  session.chart_at_work = session.project.charts(index).UniqueId;
  for_each_made<FitWindow>(Block::panel, [](int, FitWindow& view) { view.refresh_grid(); });
}

Block ProjectWindows::active_block() const { return active() ? active()->block() : Block::chart; }

bool ProjectWindows::any() const {
  return std::any_of(seats_.begin(), seats_.end(), [](const Seats& all) {
    return std::any_of(all.begin(), all.end(), [](const Seat& each) { return !each.is_binned; });
  });
}

int ProjectWindows::focused_sheet() const {
  int found = 0;
  for_each_made<SheetView>(Block::sheet, [&](int index, const SheetView& view) {
    if (view.hasFocus()) found = index;
  });
  return found;
}

int ProjectWindows::focused_panel() const {
  const QWidget* focus = QApplication::focusWidget();
  int found = 0;
  for_each_made<FitWindow>(Block::panel, [&](int index, const FitWindow& view) {
    if (focus && view.isAncestorOf(focus)) found = index;
  });
  return found;
}

int ProjectWindows::focused_chart() const {
  int found = 0;
  for_each_made<ChartWindow>(Block::chart, [&](int index, const ChartWindow& view) {
    if (view.hasFocus()) found = index;
  });
  return found;
}

int ProjectWindows::current_chart() const {
  const int count = program_.session.project.charts.bound();
  const ChildWindow* window = active();
  const bool is_chart = window && window->block() == Block::chart && window->index() <= count;
  return is_chart ? window->index() : std::min(count, 1);
}

void ProjectWindows::bring_to_front(WindowKey key) {
  if (has(key)) window(key).bring_to_front();
}

// One that is an icon stays one.
void ProjectWindows::go_round(bool forward) {
  std::vector<WindowKey> round;
  for_each_seat([&](WindowKey key, const Seat& seat) {
    if (!seat.is_binned) round.push_back(key);
  });
  if (round.empty()) return;
  if (!forward) std::reverse(round.begin(), round.end());
  const auto here = std::find_if(round.begin(), round.end(), [this](WindowKey key) {
    return active() && seat(key).window == active();
  });
  const WindowKey next = here == round.end() || here + 1 == round.end() ? round[0] : *(here + 1);
  ChildWindow& to = window(next);
  to.isMinimized() ? setActiveSubWindow(&to) : to.bring_to_front();
}

void ProjectWindows::add_bar(const ChartWindow& chart, QWidget* bar) {
  window({Block::chart, chart.index()}).add_bar(bar);
}

void ProjectWindows::Tile_Block() { layout_.start_blocks(shown()); }

void ProjectWindows::tile(bool side_by_side) {
  show_all();
  layout_.tile(shown(), side_by_side);
}

void ProjectWindows::cascade() {
  show_all();
  layout_.leave();
  cascadeSubWindows();
}

bool ProjectWindows::any_icon() const {
  const auto all = shown();
  return std::any_of(all.begin(), all.end(),
                     [](const ChildWindow* each) { return each->isMinimized(); });
}

bool ProjectWindows::any_binned() const {
  return std::any_of(seats_.begin(), seats_.end(), [](const Seats& all) {
    return std::any_of(all.begin(), all.end(), [](const Seat& each) { return each.is_binned; });
  });
}

void ProjectWindows::arrange_icons() {
  const QSize room = viewport()->size();
  QPoint free(0, room.height());
  for (ChildWindow* each : shown()) {
    if (!each->isMinimized()) continue;
    const bool is_full = free.x() > 0 && free.x() + each->width() > room.width();
    if (is_full) free = QPoint(0, free.y() - each->height());
    each->move(free.x(), free.y() - each->height());
    free.rx() += each->width();
  }
}

void ProjectWindows::take_places(const QVariantMap& places) {
  for (const QString& key : places.keys())
    if (const WindowKey placed = WindowKey::of(key); has(placed)) window(placed).show_behind();
  layout_.take_places(places, shown());
}

// Those that nobody sees go first, so that none comes up behind one that goes.
void ProjectWindows::hide_all() {
  for_each_seat([this](WindowKey key, const Seat& seat) {
    if (!seat.is_shown()) set_binned(key, true);
  });
  for (ChildWindow* each : shown()) each->close();
}

void ProjectWindows::restore_all() {
  for_each_seat([this](WindowKey key, const Seat& seat) {
    if (seat.is_binned && seat.window) seat.window->show();
    set_binned(key, false);
  });
  show_front();
  layout_.follow(shown());
}

void ProjectWindows::resizeEvent(QResizeEvent* event) {
  QMdiArea::resizeEvent(event);
  layout_.follow(shown());
}

bool ProjectWindows::eventFilter(QObject* watched, QEvent* event) {
  const auto* window = qobject_cast<const ChildWindow*>(watched);
  const bool comes = window && event->type() == QEvent::ShowToParent;
  if (comes && has({window->block(), window->index()})) {
    set_binned({window->block(), window->index()}, false);
    place_later();
  }
  return QMdiArea::eventFilter(watched, event);
}

}  // namespace tavlo
