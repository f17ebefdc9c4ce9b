// ChartHand: what the user's hand does on a chart: points, zooms, or places marks;
// the drag that is under way, and the part that is selected.
#pragma once

#include <QCursor>
#include <QPainter>
#include <memory>

#include "chart/parts/marks.h"
#include "workspace/chart/chart_drags.h"
#include "workspace/chart/chart_stage.h"
#include "workspace/chart/movable_parts.h"

namespace tavlo {

enum class ChartTool { pointer, zoom, text, line, arrow, symbol };

/// Places and moves are pixels of the view.
class ChartHand {
 public:
  explicit ChartHand(ChartStage& stage) : stage_(stage) {}

  ChartTool tool() const { return tool_; }
  /// Takes another tool; a drag that is under way is given up.
  void take(ChartTool tool);

  MovablePart selected() const { return selected_; }
  void select(MovablePart part) { selected_ = part; }
  /// The part behind the selected one, or before it; false behind the last.
  bool select_next(bool backward);
  /// Forgets a selected part that is no longer there.
  void check_selected();

  void press(const QPointF& at);
  /// Takes hold of the paper, whatever the tool.
  void press_to_pan(const QPointF& at) { drag_ = std::make_unique<PanDrag>(stage_, at); }
  /// True when a drag is under way.
  bool move_to(const QPointF& at);
  void release(const QPointF& at);
  bool is_dragging() const { return drag_ != nullptr; }
  bool is_moving_a_part() const { return drag_ && tool_ == ChartTool::pointer; }
  /// Gives up the drag; else the tool; else the selection. False when there was
  /// nothing to give up.
  bool escape();

  /// Moves the selected part; false when there is none.
  bool nudge(double right, double down);
  /// Places a mark of the tool in the middle of the plot, for those without a
  /// mouse; false when the tool places none.
  bool place_in_middle();

  Qt::CursorShape cursor_at(const QPointF& at);
  void paint(QPainter& painter);

 private:
  std::unique_ptr<ChartDrag> drag_from(const QPointF& at);
  void make_mark(MarkKind kind, drawing::Place from, drawing::Place to);

  ChartStage& stage_;
  ChartTool tool_ = ChartTool::pointer;
  MovablePart selected_;
  std::unique_ptr<ChartDrag> drag_;
};

}  // namespace tavlo
