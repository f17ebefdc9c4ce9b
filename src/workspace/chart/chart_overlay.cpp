#include "workspace/chart/chart_overlay.h"

namespace tavlo {

namespace {

const QColor accent(0x1F, 0x5F, 0xA8);
const QColor hair(0xC0, 0x3A, 0x2B);

/// Lines one pixel wide stand on whole pixels.
QPointF whole(const QPointF& at) { return {std::floor(at.x()) + 0.5, std::floor(at.y()) + 0.5}; }

}  // namespace

void paint_zoom_frame(QPainter& painter, const QRectF& frame) {
  if (frame.isEmpty()) return;
  QColor inside = accent;
  inside.setAlphaF(0.12f);
  painter.setPen(QPen(accent, 1));
  painter.setBrush(inside);
  painter.drawRect(QRectF(whole(frame.topLeft()), whole(frame.bottomRight())));
}

void paint_draft(QPainter& painter, const QLineF& line) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(accent, 1.5));
  painter.drawLine(line);
}

void paint_selection(QPainter& painter, const QRectF& area) {
  constexpr double margin = 4;
  painter.setPen(QPen(accent, 1, Qt::DashLine));
  painter.setBrush(Qt::NoBrush);
  const QRectF around = area.normalized().adjusted(-margin, -margin, margin, margin);
  painter.drawRect(QRectF(whole(around.topLeft()), whole(around.bottomRight())));
}

void paint_hair_cross(QPainter& painter, const QRectF& plot, const QPointF& at, bool snapped) {
  constexpr double ring = 7;
  const QPointF middle = whole(at);
  painter.setPen(QPen(hair, 1));
  painter.drawLine(QPointF(plot.left(), middle.y()), QPointF(plot.right(), middle.y()));
  painter.drawLine(QPointF(middle.x(), plot.top()), QPointF(middle.x(), plot.bottom()));
  if (!snapped) return;
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(hair, 2));
  painter.setBrush(Qt::NoBrush);
  painter.drawEllipse(middle, ring, ring);
}

}  // namespace tavlo
