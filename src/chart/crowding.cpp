#include "chart/crowding.h"

#include <algorithm>

namespace tavlo {

using namespace drawing;

namespace {

template <class Shape>
bool box_touches(const Shape& shape, const Rectangle& area) {
  return shape.left <= area.right && shape.right >= area.left && shape.top <= area.bottom &&
         shape.bottom >= area.top;
}

/// Cuts the part 0..1 of a segment down to where the coordinate is within the
/// limits (Liang and Barsky, 1984); false when nothing is left.
bool cut(double from, double to, double low, double high, double& first, double& last) {
  const double step = to - from;
  if (step == 0.0) return from >= low && from <= high;
  const double a = (low - from) / step;
  const double b = (high - from) / step;
  first = std::max(first, std::min(a, b));
  last = std::min(last, std::max(a, b));
  return first <= last;
}

bool segment_touches(const Place& from, const Place& to, const Rectangle& area) {
  double first = 0;
  double last = 1;
  return cut(from.x, to.x, area.left, area.right, first, last) &&
         cut(from.y, to.y, area.top, area.bottom, first, last);
}

int pieces_touching(const std::vector<Place>& places, const Rectangle& area) {
  int count = 0;
  for (std::size_t i = 1; i < places.size(); ++i)
    count += segment_touches(places[i - 1], places[i], area) ? 1 : 0;
  return count;
}

struct Count {
  const Rectangle& area;
  int operator()(const Rectangle& shape) const { return box_touches(shape, area) ? 1 : 0; }
  int operator()(const Ellipse& shape) const { return box_touches(shape, area) ? 1 : 0; }
  int operator()(const Polyline& line) const { return pieces_touching(line.places, area); }
  int operator()(const Polygon& shape) const { return pieces_touching(shape.places, area); }
  template <class Other>
  int operator()(const Other&) const {
    return 0;
  }
};

}  // namespace

int shapes_touching(const DrawingRecord& drawing, const Rectangle& area) {
  int count = 0;
  for (const Record& record : drawing.records) count += std::visit(Count{area}, record);
  return count;
}

}  // namespace tavlo
