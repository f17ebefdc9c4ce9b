// Pixel grid: puts upright and level lines on whole device pixels, so that they
// are equally sharp at every size of a window and every scale of a screen.
#pragma once

#include <QLineF>
#include <QPainter>
#include <QRectF>
#include <QTransform>

namespace tavlo {

class PixelGrid {
 public:
  /// Devices that are no pixel images (PDF, SVG, printers) have no grid.
  explicit PixelGrid(const QPainter& painter);

  bool exists() const { return exists_; }

  /// The side of a device pixel in the painter's coordinates.
  double pixel() const { return pixel_; }

  /// A pen's width as a whole number of device pixels, at least one.
  double whole_width(double width) const;

  /// The line or box moved so that a pen of `whole` width covers whole pixels.
  QLineF aligned(const QLineF& line, double whole) const;
  QRectF aligned(const QRectF& box, double whole) const;

 private:
  QPointF aligned(const QPointF& point, double whole) const;

  bool exists_;
  QTransform to_device_;
  QTransform from_device_;
  double pixel_ = 1;
};

}  // namespace tavlo
