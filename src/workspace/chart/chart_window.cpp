#include "workspace/chart/chart_window.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>
#include <cmath>
#include <utility>

#include "chart/compose/reading_text.h"
#include "chart/compose/zoom.h"
#include "chart/parts/movable_boxes.h"
#include "chart/scales/chart_view.h"
#include "numerics/number_text.h"
#include "painter/player.h"
#include "project/chart_looks.h"
#include "workspace/chart/chart_overlay.h"
#include "workspace/chart/chart_tips.h"
#include "workspace/chart/mark_dialog.h"
#include "workspace/qt/qt_text.h"

namespace tavlo {

namespace {

constexpr int usual_digits = 4;
constexpr int precise_digits = 7;

ChartTool tool_of(MarkKind kind) {
  switch (kind) {
    case MarkKind::text: return ChartTool::text;
    case MarkKind::line: return ChartTool::line;
    case MarkKind::arrow: return ChartTool::arrow;
    case MarkKind::symbol: return ChartTool::symbol;
  }
  return ChartTool::pointer;
}

/// How far the wheel is to zoom each axis: both, or the one whose labels it is turned over
/// or that a key asks for.
QPointF turns_of(const QWheelEvent& event, const QRectF& plot) {
  constexpr double notch = 120;  // eighths of a degree
  const QPoint angle = event.angleDelta();
  const double turns = (angle.y() != 0 ? angle.y() : angle.x()) / notch;
  const bool across_alone =
      (event.modifiers() & Qt::ShiftModifier) || event.position().y() > plot.bottom();
  const bool up_alone =
      (event.modifiers() & Qt::ControlModifier) || event.position().x() < plot.left();
  return {up_alone ? 0 : turns, across_alone ? 0 : turns};
}

/// The way of an arrow key; none for other keys.
QPointF direction_of(int key) {
  switch (key) {
    case Qt::Key_Left: return {-1, 0};
    case Qt::Key_Right: return {1, 0};
    case Qt::Key_Up: return {0, -1};
    case Qt::Key_Down: return {0, 1};
    default: return {};
  }
}

}  // namespace

ChartWindow::ChartWindow(Session& session, UserCommands& commands, int chart_index, QWidget* parent)
    : QWidget(parent),
      commands_(commands),
      stage_(session, chart_index),
      hand_(stage_),
      value_box_(stage_, commands, this) {
  setAccessibleName(tr("Chart"));
  setFocusPolicy(Qt::StrongFocus);
  setBackgroundRole(QPalette::Base);
  setAutoFillBackground(true);
  setMouseTracking(true);
  reading_later_.setSingleShot(true);
  connect(&reading_later_, &QTimer::timeout, this, [this] {
    if (!commands_.running()) commands_.run_aside([this] { show_reading(); });
  });
  connect(&value_box_, &ValueBox::said, this, &ChartWindow::hint_wanted);
  connect(&value_box_, &ValueBox::changed, this, qOverload<>(&QWidget::update));
  connect(&value_box_, &ValueBox::closed, this, [this] { setFocus(); });
}

/// While a fit is under way the records are not at rest: the hand waits.
void ChartWindow::run(const std::function<void()>& action) {
  if (commands_.running()) return;
  commands_.run([&] {
    action();
    show_state();
  });
}

void ChartWindow::compose() {
  stage_.compose();
  show_drawing();
}

void ChartWindow::show_age() {
  stage_.show_age();
  show_drawing();
}

void ChartWindow::show_drawing() {
  played_is_old_ = true;
  hand_.check_selected();
  value_box_.follow();
  if (!hand_.is_moving_a_part()) read_again();
  emit state_changed();
  update();
}

void ChartWindow::show_state() {
  if (pointer_) setCursor(hand_.cursor_at(*pointer_));
  emit state_changed();
  update();
}

// --- what the menus do

void ChartWindow::set_zooming(bool on) {
  if (on)
    return take(ChartTool::zoom, tr("Drag a rectangle to zoom in; Backspace goes a step "
                                    "back, Esc puts the cross away"));
  take(ChartTool::pointer, {});
  end_zoom(stage_.chart());
}

void ChartWindow::zoom_in() {
  const QRectF plot = stage_.plot_area();
  const QPointF half = QPointF(plot.width(), plot.height()) / 4;
  tavlo::zoom_in(stage_.chart(), stage_.place(plot.center() - half),
                 stage_.place(plot.center() + half));
}

void ChartWindow::zoom_back() { tavlo::zoom_back(stage_.chart()); }

void ChartWindow::zoom_to_automatic() {
  follow_data(stage_.chart());
  stage_.name_step("Limits");
}

void ChartWindow::set_precise(bool on) {
  precise_ = on;
  if (on && !pointer_) pointer_ = stage_.plot_area().center();
  show_reading();
  show_state();
}

void ChartWindow::set_sub_populations(bool on) {
  stage_.chart().SubPopulations = on;
  stage_.name_step("Sub-Populations");
}

void ChartWindow::set_look(const std::string& look) {
  stage_.session().settings.ChartType = look;
  apply_chart_look(stage_.chart(), look);
  stage_.name_step("Look");
}

void ChartWindow::take(ChartTool tool, const QString& hint) {
  hand_.take(tool);
  show_state();
  emit hint_wanted(hint);
}

void ChartWindow::add_mark(MarkKind kind) {
  const bool has_ends = kind == MarkKind::line || kind == MarkKind::arrow;
  take(tool_of(kind), has_ends ? tr("Drag from one end to the other; Esc cancels")
                               : tr("Click where it shall stand; Esc cancels"));
}

void ChartWindow::edit_selected() {
  if (!selected().is_mark()) return;
  MarkDialog(window(), stage_.session(), commands_, index(), selected().index).exec();
}

void ChartWindow::delete_selected() {
  if (!selected().is_mark()) return;
  delete_mark(stage_.chart(), selected().index);
  hand_.select({});
  stage_.name_step("Delete Mark");
}

void ChartWindow::free_selected() {
  if (!selected().is_box()) return;
  free_box(stage_.chart(), selected().index);
  stage_.name_step("Move");
}

bool ChartWindow::can_free_selected() {
  return selected().is_box() && has_own_place(stage_.chart(), selected().index);
}

// --- reading

void ChartWindow::show_reading() {
  reading_later_.stop();
  if (!pointer_ || !stage_.plot_area().contains(*pointer_)) return hide_reading();
  reading_ = stage_.read(stage_.place(*pointer_), precise_);
  if (reading_)
    emit hint_wanted(to_qt(
        reading_text(*reading_, stage_.chart().Axes(1), precise_ ? precise_digits : usual_digits)));
  update();
}

/// A view that follows another at once, as the wheel makes them, is not read.
void ChartWindow::read_again() {
  constexpr int rest = 100;  // milliseconds
  if (precise_ || !pointer_) return show_reading();
  reading_.reset();
  reading_later_.start(rest);
}

void ChartWindow::hide_reading() {
  if (!reading_) return;
  reading_.reset();
  emit hint_wanted({});
  update();
}

// --- points and rows

void ChartWindow::ring_row(std::int32_t data_id, int row) {
  const bool has_row = chosen_ && chosen_->data_id == data_id && chosen_->row == row;
  if (has_row) return;
  chosen_.reset();
  if (row > 0) chosen_ = DataPoint{data_id, row, 0, 0};
  update();
}

void ChartWindow::choose_point(const QPointF& at) {
  const auto reading = stage_.read(stage_.place(at), precise_);
  if (!reading || !reading->point) return;
  const Project& project = stage_.session().project;
  if (!is_as_read(project.data(find_data(project, reading->point->data_id)), reading->point->row))
    return stage_.session().ports.views.status(rows_have_changed);
  chosen_ = reading->point;
  emit point_chosen(*chosen_);
  show_reading();  // the sheet has said what belongs into its cell
}

// --- painting

void ChartWindow::play() {
  const double scale = devicePixelRatioF();
  const QSize pixels = (QSizeF(size()) * scale).toSize();
  if (!played_is_old_ && played_.size() == pixels) return;
  played_ = QPixmap(pixels);
  played_.setDevicePixelRatio(scale);
  played_.fill(palette().color(QPalette::Base));
  QPainter painter(&played_);
  PlayChart(painter, stage_.drawing(), stage_.target());
  played_is_old_ = false;
}

void ChartWindow::paintEvent(QPaintEvent*) {
  play();
  QPainter painter(this);
  painter.drawPixmap(0, 0, played_);
  paint_row(painter);
  value_box_.paint_answers(painter);
  if (reading_ && !is_dragging()) paint_reading(painter);
  hand_.paint(painter);
}

/// What holds the pointer is seen in any case; the words stand beside it where it is a point
/// or the reading is precise.
void ChartWindow::paint_reading(QPainter& painter) {
  const QRectF plot = stage_.plot_area();
  const QPointF at = stage_.pixel(reading_->place);
  if (precise_) paint_hair_cross(painter, plot, at);
  paint_held_lines(painter, plot, at, reading_->on_x_line, reading_->on_y_line);
  const bool is_on_point = reading_->snapped == SnappedTo::point;
  if (is_on_point || reading_->snapped == SnappedTo::line) paint_ring(painter, at);
  if (!precise_ && !is_on_point) return;
  const int digits = precise_ ? precise_digits : usual_digits;
  paint_words(painter, plot, at,
              to_qt(number_text(reading_->x, digits) + "\n" +
                    y_text(reading_->y, stage_.chart().Axes(1), digits)));
}

void ChartWindow::paint_row(QPainter& painter) {
  if (!chosen_) return;
  const auto place = stage_.readout().place_of_row(chosen_->data_id, chosen_->row);
  if (place) paint_row_ring(painter, stage_.pixel(*place));
}

void ChartWindow::resizeEvent(QResizeEvent*) {
  stage_.set_view(size());
  hide_reading();
}

// --- mouse

void ChartWindow::mousePressEvent(QMouseEvent* event) {
  pressed_.reset();
  if (event->button() == Qt::MiddleButton && !is_dragging())
    run([&] { hand_.press_to_pan(event->position()); });
  if (event->button() != Qt::LeftButton) return;
  run([&] {
    hand_.press(event->position());
    if (!is_dragging() && tool() == ChartTool::pointer) pressed_ = event->position();
  });
}

// A menu or dialog that opens meanwhile takes the mouse, and the chart never hears that the
// button was let go.
void ChartWindow::give_up_drag() {
  if (!is_dragging()) return;
  commands_.run([&] {
    hand_.escape();
    show_state();
  });
}

void ChartWindow::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  give_up_drag();
}

void ChartWindow::mouseMoveEvent(QMouseEvent* event) {
  if (!(event->buttons() & (Qt::LeftButton | Qt::MiddleButton))) give_up_drag();
  pointer_ = event->position();
  if (commands_.running()) return;
  commands_.run([&] {
    if (hand_.move_to(event->position())) update();
    setCursor(hand_.cursor_at(event->position()));
    if (!hand_.is_moving_a_part()) show_reading();
  });
}

void ChartWindow::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton && event->button() != Qt::MiddleButton) return;
  run([&] {
    hand_.release(event->position());
    const auto pressed = std::exchange(pressed_, std::nullopt);
    if (pressed && (*pressed - event->position()).manhattanLength() < shortest_drag)
      choose_point(*pressed);
  });
}

/// Touchpads tell many small turns, and a chart of many points takes its time: those that
/// have come meanwhile are shown at once.
void ChartWindow::wheelEvent(QWheelEvent* event) {
  event->accept();
  if (is_dragging() || commands_.running()) return;
  if (wheel_.isNull()) QTimer::singleShot(0, this, &ChartWindow::turn_wheel);
  wheel_ += turns_of(*event, stage_.plot_area());
  wheel_at_ = event->position();
}

void ChartWindow::turn_wheel() {
  constexpr double factor = 1.25;  // of what is seen, for a notch
  const QPointF turns = std::exchange(wheel_, {});
  if (turns.isNull()) return;
  run([&] {
    stage_.zoom_about(wheel_at_, std::pow(factor, -turns.x()), std::pow(factor, -turns.y()));
  });
}

bool ChartWindow::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QWidget::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  if (commands_.running() || is_dragging()) return true;
  const QString tip = chart_tip(stage_, help->pos());
  QToolTip::showText(help->globalPos(), tip, this);
  return true;
}

void ChartWindow::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || tool() != ChartTool::pointer) return;
  run([&] {
    hand_.select(part_at(stage_, stage_.place(event->position())));
    if (selected().is_mark()) return edit_selected();
    emit format_wanted(stage_.place(event->position()));
  });
}

void ChartWindow::leaveEvent(QEvent*) {
  pointer_.reset();
  hide_reading();
}

void ChartWindow::contextMenuEvent(QContextMenuEvent* event) {
  if (commands_.running()) return;
  const bool by_mouse = event->reason() == QContextMenuEvent::Mouse;
  menu_place_.reset();
  if (by_mouse) menu_place_ = stage_.place(event->pos());
  if (by_mouse && tool() == ChartTool::pointer)
    run([&] { hand_.select(part_at(stage_, *menu_place_)); });
  emit menu_wanted(by_mouse ? event->globalPos() : mapToGlobal(rect().center()));
}

// --- keys

void ChartWindow::keyPressEvent(QKeyEvent* event) {
  bool taken = false;
  run([&] { taken = take_key(*event); });
  if (!taken) QWidget::keyPressEvent(event);
}

bool ChartWindow::take_key(const QKeyEvent& key) {
  switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (!hand_.place_in_middle()) edit_selected();
      return true;
    case Qt::Key_Escape:
      if (hand_.escape()) return true;
      if (precise_) set_precise(false);
      chosen_.reset();
      return true;
    default: return starts_value(key) || step(key);
  }
}

/// A figure is the first one of a percentage or a time.
bool ChartWindow::starts_value(const QKeyEvent& key) {
  const bool is_command = key.modifiers() & (Qt::ControlModifier | Qt::AltModifier);
  const QString text = key.text();
  if (is_command || text.size() != 1 || !text.front().isDigit()) return false;
  value_box_.open(text);
  return true;
}

/// An arrow key moves what is selected, else the place of the precise reading.
bool ChartWindow::step(const QKeyEvent& key) {
  constexpr double long_step = 10;  // pixels
  const bool is_long = key.modifiers() & (Qt::ShiftModifier | Qt::ControlModifier);
  const QPointF way = direction_of(key.key()) * (is_long ? long_step : 1);
  if (way.isNull()) return false;
  if (hand_.nudge(way.x(), way.y())) return true;
  if (!precise_) return false;
  const QRectF plot = stage_.plot_area();
  const QPointF to = pointer_.value_or(plot.center()) + way;
  if (plot.contains(to)) pointer_ = to;
  show_reading();
  return true;
}

/// The Tab key goes round the parts of the chart before it leaves it.
bool ChartWindow::focusNextPrevChild(bool next) {
  if (!hasFocus()) return QWidget::focusNextPrevChild(next);  // within the box of values
  bool stays = false;
  run([&] { stays = hand_.select_next(!next); });
  return stays || QWidget::focusNextPrevChild(next);
}

}  // namespace tavlo
