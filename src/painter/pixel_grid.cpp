#include "painter/pixel_grid.h"

#include <QPaintEngine>
#include <algorithm>
#include <cmath>

namespace tavlo {

PixelGrid::PixelGrid(const QPainter& painter)
    : exists_(painter.paintEngine()->type() == QPaintEngine::Raster),
      to_device_(painter.combinedTransform()),
      from_device_(to_device_.inverted()) {
  const double scale = std::hypot(to_device_.m11(), to_device_.m12());
  if (scale > 0.0) pixel_ = 1.0 / scale;
}

double PixelGrid::whole_width(double width) const {
  return std::max(1.0, std::round(width / pixel_)) * pixel_;
}

QPointF PixelGrid::aligned(const QPointF& point, double whole) const {
  const double half = whole / pixel_ / 2.0;
  const QPointF device = to_device_.map(point);
  return from_device_.map(
      QPointF(std::round(device.x() - half) + half, std::round(device.y() - half) + half));
}

QLineF PixelGrid::aligned(const QLineF& line, double whole) const {
  return {aligned(line.p1(), whole), aligned(line.p2(), whole)};
}

QRectF PixelGrid::aligned(const QRectF& box, double whole) const {
  return {aligned(box.topLeft(), whole), aligned(box.bottomRight(), whole)};
}

}  // namespace tavlo
