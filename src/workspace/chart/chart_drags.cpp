#include "workspace/chart/chart_drags.h"

#include <QApplication>
#include <cmath>

#include "chart/compose/zoom.h"
#include "workspace/chart/chart_overlay.h"

namespace tavlo {

using drawing::Place;

void ZoomDrag::finish() {
  const QPointF size = at() - from();
  if (std::abs(size.x()) < shortest_drag || std::abs(size.y()) < shortest_drag) return;
  zoom_in(stage_.chart(), stage_.place(from()), stage_.place(at()));
}

void ZoomDrag::paint(QPainter& painter) const {
  paint_zoom_frame(painter, QRectF(from(), at()).normalized() & stage_.plot_area());
}

void PanDrag::moved() {
  stage_.pan(last_, at());
  last_ = at();
}

void MoveDrag::moved() {
  const QPointF way = at() - from();
  under_way_ = under_way_ || way.manhattanLength() >= QApplication::startDragDistance();
  if (!under_way_) return;
  const Place begin = stage_.place(from());
  const Place end = stage_.place(at());
  move_.to(end.x - begin.x, end.y - begin.y);
}

void MoveDrag::cancel() {
  if (under_way_) move_.back();
}

void MarkDrag::finish() {
  const QPointF way = at() - from();
  if (has_two_ends() && std::hypot(way.x(), way.y()) < shortest_drag) return;
  made_(stage_.place(from()), stage_.place(at()));
}

void MarkDrag::paint(QPainter& painter) const {
  if (has_two_ends()) paint_draft(painter, QLineF(from(), at()));
}

}  // namespace tavlo
