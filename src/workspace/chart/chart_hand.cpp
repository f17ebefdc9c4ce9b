#include "workspace/chart/chart_hand.h"

#include <algorithm>
#include <optional>

#include "workspace/chart/chart_overlay.h"

namespace tavlo {

using drawing::Place;

namespace {

constexpr int first_symbol = 1;

std::optional<MarkKind> mark_of(ChartTool tool) {
  switch (tool) {
    case ChartTool::text: return MarkKind::text;
    case ChartTool::line: return MarkKind::line;
    case ChartTool::arrow: return MarkKind::arrow;
    case ChartTool::symbol: return MarkKind::symbol;
    default: return std::nullopt;
  }
}

/// A new mark; a text without words is none.
std::optional<ChartItem> new_mark(Prompts& prompts, MarkKind kind, Place from, Place to) {
  switch (kind) {
    case MarkKind::line: return line_mark(from, to);
    case MarkKind::arrow: return arrow_mark(from, to);
    case MarkKind::symbol: return symbol_mark(to, first_symbol);
    case MarkKind::text: break;
  }
  const auto words = prompts.ask_line("Add Text", "Text on the chart:", "");
  if (!words || words->find_first_not_of(' ') == std::string::npos) return std::nullopt;
  return text_mark(to, *words);
}

}  // namespace

void ChartHand::take(ChartTool tool) {
  if (drag_) drag_->cancel();
  drag_.reset();
  tool_ = tool;
  if (tool != ChartTool::pointer) selected_ = {};
}

bool ChartHand::select_next(bool backward) {
  std::vector<MovablePart> parts = parts_of(stage_);
  if (backward) std::reverse(parts.begin(), parts.end());
  auto next = std::find(parts.begin(), parts.end(), selected_);
  next = next == parts.end() ? parts.begin() : next + 1;
  selected_ = next == parts.end() ? MovablePart{} : *next;
  return static_cast<bool>(selected_);
}

void ChartHand::check_selected() {
  const std::vector<MovablePart> parts = parts_of(stage_);
  if (std::find(parts.begin(), parts.end(), selected_) == parts.end()) selected_ = {};
}

std::unique_ptr<ChartDrag> ChartHand::drag_from(const QPointF& at) {
  if (tool_ == ChartTool::zoom) return std::make_unique<ZoomDrag>(stage_, at);
  if (const auto kind = mark_of(tool_))
    return std::make_unique<MarkDrag>(
        stage_, *kind, at, [this, kind](Place from, Place to) { make_mark(*kind, from, to); });
  selected_ = part_at(stage_, stage_.place(at));
  return selected_ ? std::make_unique<MoveDrag>(stage_, selected_, at) : nullptr;
}

void ChartHand::press(const QPointF& at) { drag_ = drag_from(at); }

bool ChartHand::move_to(const QPointF& at) {
  if (drag_) drag_->move_to(at);
  return drag_ != nullptr;
}

void ChartHand::release(const QPointF& at) {
  // A box that asks for words turns the event loop: the drag is over by then.
  const std::unique_ptr<ChartDrag> drag = std::move(drag_);
  if (!drag) return;
  drag->release_at(at);
  drag->finish();
}

bool ChartHand::escape() {
  if (drag_) {
    drag_->cancel();
    drag_.reset();
  } else if (tool_ != ChartTool::pointer) {
    tool_ = ChartTool::pointer;
  } else if (selected_) {
    selected_ = {};
  } else {
    return false;
  }
  return true;
}

void ChartHand::make_mark(MarkKind kind, Place from, Place to) {
  tool_ = ChartTool::pointer;
  auto mark = new_mark(stage_.session().ports.prompts, kind, from, to);
  if (!mark) return;
  selected_ = {MovablePart::Kind::mark, add_mark(stage_.chart(), std::move(*mark))};
  stage_.name_step("Mark");
}

bool ChartHand::nudge(double right, double down) {
  if (!selected_) return false;
  const QRectF stands = stage_.area(area_of(stage_, selected_)).translated(right, down);
  if (!stage_.target().contains(stands.center())) return true;
  const Place origin = stage_.place(stage_.target().topLeft());
  const Place step =
      stage_.place(stage_.target().topLeft() + QPointF(std::abs(right), std::abs(down)));
  PartMove(stage_, selected_)
      .to((step.x - origin.x) * (right < 0 ? -1 : 1), (step.y - origin.y) * (down < 0 ? -1 : 1));
  return true;
}

bool ChartHand::place_in_middle() {
  const auto kind = mark_of(tool_);
  if (!kind) return false;
  const QRectF plot = stage_.plot_area();
  const QPointF half(plot.width() / 10, plot.height() / 10);
  const bool has_ends = *kind == MarkKind::line || *kind == MarkKind::arrow;
  const QPointF from = has_ends ? plot.center() - half : plot.center();
  make_mark(*kind, stage_.place(from), stage_.place(has_ends ? plot.center() + half : from));
  return true;
}

Qt::CursorShape ChartHand::cursor_at(const QPointF& at) {
  if (tool_ != ChartTool::pointer) return Qt::CrossCursor;
  if (drag_) return Qt::ClosedHandCursor;
  return part_at(stage_, stage_.place(at)) ? Qt::OpenHandCursor : Qt::ArrowCursor;
}

void ChartHand::paint(QPainter& painter) {
  if (selected_) paint_selection(painter, stage_.area(area_of(stage_, selected_)));
  if (drag_) drag_->paint(painter);
}

}  // namespace tavlo
