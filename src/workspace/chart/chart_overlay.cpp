#include "workspace/chart/chart_overlay.h"

namespace tavlo {

namespace {

const QColor accent(0x1F, 0x5F, 0xA8);
const QColor hair(0xC0, 0x3A, 0x2B);

/// Lines one pixel wide stand on whole pixels.
QPointF whole(const QPointF& at) { return {std::floor(at.x()) + 0.5, std::floor(at.y()) + 0.5}; }

void draw_across(QPainter& painter, const QRectF& plot, const QPointF& at, bool upright,
                 bool level) {
  const QPointF middle = whole(at);
  if (level) painter.drawLine(QPointF(plot.left(), middle.y()), QPointF(plot.right(), middle.y()));
  if (upright)
    painter.drawLine(QPointF(middle.x(), plot.top()), QPointF(middle.x(), plot.bottom()));
}

void draw_ring(QPainter& painter, const QPointF& at, double radius, const QPen& pen) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(pen);
  painter.setBrush(Qt::NoBrush);
  painter.drawEllipse(at, radius, radius);
  painter.setRenderHint(QPainter::Antialiasing, false);
}

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
  painter.setRenderHint(QPainter::Antialiasing, false);
}

void paint_selection(QPainter& painter, const QRectF& area) {
  constexpr double margin = 4;
  painter.setPen(QPen(accent, 1, Qt::DashLine));
  painter.setBrush(Qt::NoBrush);
  const QRectF around = area.normalized().adjusted(-margin, -margin, margin, margin);
  painter.drawRect(QRectF(whole(around.topLeft()), whole(around.bottomRight())));
}

void paint_hair_cross(QPainter& painter, const QRectF& plot, const QPointF& at) {
  painter.setPen(QPen(hair, 1));
  draw_across(painter, plot, at, true, true);
}

void paint_held_lines(QPainter& painter, const QRectF& plot, const QPointF& at, bool upright,
                      bool level) {
  painter.setPen(QPen(hair, 1.5));
  draw_across(painter, plot, at, upright, level);
}

void paint_ring(QPainter& painter, const QPointF& at) {
  constexpr double radius = 7;
  draw_ring(painter, at, radius, QPen(hair, 2));
}

void paint_row_ring(QPainter& painter, const QPointF& at) {
  constexpr double radius = 9;
  draw_ring(painter, at, radius, QPen(Qt::white, 4));  // seen on dark points too
  draw_ring(painter, at, radius, QPen(accent, 2));
}

void paint_words(QPainter& painter, const QRectF& plot, const QPointF& at, const QString& words) {
  constexpr double gap = 12;
  constexpr double padding = 4;
  QRectF box = painter.fontMetrics().boundingRect(QRect(), Qt::AlignLeft, words);
  box.adjust(-padding, -padding, padding, padding);
  box.moveBottomLeft(at + QPointF(gap, -gap));
  if (box.right() > plot.right()) box.moveRight(at.x() - gap);
  if (box.top() < plot.top()) box.moveTop(at.y() + gap);
  painter.setPen(QPen(hair, 1));
  painter.setBrush(QColor(255, 255, 255, 235));
  painter.drawRect(QRectF(whole(box.topLeft()), whole(box.bottomRight())));
  painter.setPen(Qt::black);
  painter.drawText(box.adjusted(padding, padding, padding, padding), Qt::AlignLeft, words);
}

void paint_drop_line(QPainter& painter, const QRectF& plot, const QPointF& at) {
  constexpr double dot = 3;
  const QPointF corner = whole(at);
  painter.setPen(QPen(hair, 1.5, Qt::DashLine));
  painter.drawLine(QPointF(plot.left(), corner.y()), corner);
  painter.drawLine(corner, QPointF(corner.x(), plot.bottom()));
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(hair);
  painter.drawEllipse(at, dot, dot);
  painter.setRenderHint(QPainter::Antialiasing, false);
}

}  // namespace tavlo
