// ChartWindow: shows one chart and takes keys, clicks and drags on it. The drawing
// is composed when the content of the chart changes and played when the window
// has another size; a resize composes nothing.
#pragma once

#include <QPixmap>
#include <QTimer>
#include <QWidget>
#include <optional>

#include "workspace/chart/chart_hand.h"
#include "workspace/chart/chart_stage.h"
#include "workspace/chart/value_box.h"
#include "workspace/qt/user_commands.h"

namespace tavlo {

/// What there is to say where a point is no longer that of its row.
inline constexpr const char* rows_have_changed =
    "The rows have changed since the chart was drawn: calculate first";

class ChartWindow : public QWidget {
  Q_OBJECT

 public:
  ChartWindow(Session& session, UserCommands& commands, int chart_index, QWidget* parent = nullptr);

  int index() const { return stage_.index(); }
  ChartStage& stage() { return stage_; }

  /// Draws the chart as it stands now.
  void compose();
  /// Shows whether the data have changed since they were read.
  void show_age();

  const DrawingRecord& drawing() const { return stage_.drawing(); }
  int compositions() const { return stage_.compositions(); }

  ChartTool tool() const { return hand_.tool(); }
  bool is_dragging() const { return hand_.is_dragging(); }
  MovablePart selected() const { return hand_.selected(); }
  /// Where the mouse asked for the menu; nothing when a key did.
  const std::optional<drawing::Place>& menu_place() const { return menu_place_; }

  /// On: drags zoom in, step by step. Off: back to the view before the first step.
  void set_zooming(bool on);
  /// The next step in, to the middle of the plot.
  void zoom_in();
  void zoom_back();
  void zoom_to_automatic();

  bool is_precise() const { return precise_; }
  void set_precise(bool on);
  /// Opens the box in which a percentage or a time is typed.
  void read_value() { value_box_.open({}); }

  /// Rings the point of a row of a sheet; 0 for none. A row without a point has no ring.
  void ring_row(std::int32_t data_id, int row);
  /// The point that the person chose last, or whose row the sheet is in.
  const std::optional<DataPoint>& chosen_point() const { return chosen_; }

  void set_sub_populations(bool on);
  /// Gives this chart, and those that are made from now on, a look (see chart_looks).
  void set_look(const std::string& look);

  /// The next click or drag places a mark.
  void add_mark(MarkKind kind);
  void edit_selected();
  void delete_selected();
  /// Lets the selected box find its place again, if it was given one.
  void free_selected();
  bool can_free_selected();

 signals:
  void hint_wanted(const QString& hint);
  /// Tool, selection, zoom or reading are not what they were.
  void state_changed();
  /// A double click beside the marks asks for the format of what lies there.
  void format_wanted(drawing::Place place);
  void menu_wanted(const QPoint& at);
  /// The person has clicked a data point.
  void point_chosen(const tavlo::DataPoint& point);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  bool event(QEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  QSize sizeHint() const override { return {700, 420}; }

 private:
  void give_up_drag();
  void run(const std::function<void()>& action);
  void show_drawing();
  void show_state();
  void show_reading();
  void hide_reading();
  void read_again();
  void paint_reading(QPainter& painter);
  void paint_row(QPainter& painter);
  void choose_point(const QPointF& at);
  void turn_wheel();
  bool starts_value(const QKeyEvent& key);
  void take(ChartTool tool, const QString& hint);
  bool take_key(const QKeyEvent& key);
  bool step(const QKeyEvent& key);
  void play();

  UserCommands& commands_;
  ChartStage stage_;
  ChartHand hand_;
  bool precise_ = false;
  std::optional<QPointF> pointer_;  // where the user reads; nothing when that is elsewhere
  std::optional<Reading> reading_;
  QTimer reading_later_;
  std::optional<drawing::Place> menu_place_;
  std::optional<DataPoint> chosen_;
  std::optional<QPointF> pressed_;  // where a click on a point has begun
  QPointF wheel_;                   // turns of the wheel, across and up, that are not shown yet
  QPointF wheel_at_;
  ValueBox value_box_;
  QPixmap played_;  // the drawing at the size of the window
  bool played_is_old_ = true;
};

}  // namespace tavlo
