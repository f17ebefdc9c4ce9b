// Sprites: shapes that come again and again, as the symbols of a large data set, are
// painted a few times, for the places that they have within a pixel, and then
// copied. For pixel images alone.
#pragma once

#include <QImage>
#include <QPainter>
#include <array>
#include <functional>
#include <vector>

#include "chart/record/drawing_record.h"

namespace tavlo {

class Sprites {
 public:
  /// Paints a shape with its first place at the origin of the painter.
  using Paint = std::function<void(QPainter& painter)>;

  /// To be called when another pen or brush comes.
  void forget() { shapes_.clear(); }

  /// Draws the shape of `places` with its first place at `at`, no further than an
  /// eighth of a device pixel from there. False, and nothing is drawn, when it is
  /// too large or hasn't come often enough to be worth a sprite. `bounds` is what
  /// `paint` covers.
  bool draw(QPainter& painter, const std::vector<drawing::Place>& places, const QPointF& at,
            const QRectF& bounds, const Paint& paint);

 private:
  static constexpr int phases = 4;  // in each direction

  struct Shape {
    std::vector<drawing::Place> places;
    QRect room;  // device pixels around the first place
    int uses = 0;
    std::array<QImage, std::size_t{phases} * phases> images;
  };
  Shape& shape_of(const std::vector<drawing::Place>& places, const QRect& room);

  std::vector<Shape> shapes_;
};

}  // namespace tavlo
