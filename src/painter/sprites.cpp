#include "painter/sprites.h"

#include <algorithm>
#include <cmath>

namespace tavlo {

namespace {

using drawing::Place;

constexpr int uses_before_sprite = 100;
constexpr int largest_side = 128;  // device pixels
constexpr std::size_t most_shapes = 8;

bool has_same_shape(const std::vector<Place>& a, const std::vector<Place>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](Place from, Place to) {
    return from.x - a[0].x == to.x - b[0].x && from.y - a[0].y == to.y - b[0].y;
  });
}

/// The number of the part of a pixel, and what rounding to parts adds to the whole.
struct Phase {
  explicit Phase(double at, int phases) {
    const double parts = std::round(at * phases);
    whole = std::floor(parts / phases);
    part = static_cast<int>(parts - whole * phases);
  }
  double whole;
  int part;
};

/// Device pixels around the shape when its first place is the corner of one. Of one
/// shape only the first answer counts: rounding may give the next one another.
QRect room_of(const QTransform& to_device, const QRectF& bounds) {
  return to_device.mapRect(bounds).toAlignedRect().adjusted(-2, -2, 2, 2);
}

QImage painted(const QTransform& to_device, const QRect& room, const QPointF& shift,
               const Sprites::Paint& paint) {
  QImage image(room.size(), QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setTransform(to_device *
                       QTransform::fromTranslate(shift.x() - room.left(), shift.y() - room.top()));
  paint(painter);
  return image;
}

}  // namespace

Sprites::Shape& Sprites::shape_of(const std::vector<Place>& places, const QRect& room) {
  for (Shape& shape : shapes_)
    if (has_same_shape(shape.places, places)) return shape;
  if (shapes_.size() >= most_shapes) shapes_.clear();
  return shapes_.emplace_back(Shape{places, room, 0, {}});
}

bool Sprites::draw(QPainter& painter, const std::vector<Place>& places, const QPointF& at,
                   const QRectF& bounds, const Paint& paint) {
  const QTransform whole = painter.combinedTransform();
  const QTransform scale(whole.m11(), whole.m12(), whole.m21(), whole.m22(), 0, 0);
  Shape& shape = shape_of(places, room_of(scale, bounds));
  const QRect& room = shape.room;
  if (room.width() > largest_side || room.height() > largest_side) return false;
  if (++shape.uses <= uses_before_sprite) return false;
  const QPointF device = whole.map(at);
  const Phase x(device.x(), phases);
  const Phase y(device.y(), phases);
  QImage& image = shape.images[static_cast<std::size_t>(y.part * phases + x.part)];
  if (image.isNull()) {
    const QPointF shift(static_cast<double>(x.part) / phases, static_cast<double>(y.part) / phases);
    image = painted(scale, room, shift, paint);
  }
  painter.save();
  painter.setWorldTransform(whole.inverted() * painter.worldTransform());
  painter.drawImage(QPointF(x.whole + room.left(), y.whole + room.top()), image);
  painter.restore();
  return true;
}

}  // namespace tavlo
