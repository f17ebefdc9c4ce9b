#include "chart/record/distance.h"

#include <algorithm>
#include <cmath>

namespace tavlo {

using drawing::Place;

namespace {

/// The nearest place of the segment from a to b.
NearestPlace nearest_of_segment(Place a, Place b, Place place) {
  const double dx = static_cast<double>(b.x) - a.x;
  const double dy = static_cast<double>(b.y) - a.y;
  const double square = dx * dx + dy * dy;
  const double along =
      (static_cast<double>(place.x) - a.x) * dx + (static_cast<double>(place.y) - a.y) * dy;
  const double share = square > 0.0 ? std::clamp(along / square, 0.0, 1.0) : 0.0;
  const double x = a.x + share * dx;
  const double y = a.y + share * dy;
  return {x, y, std::hypot(place.x - x, place.y - y)};
}

}  // namespace

double distance(Place a, Place b) {
  return std::hypot(static_cast<double>(a.x) - b.x, static_cast<double>(a.y) - b.y);
}

double distance_to_box(const drawing::Rectangle& box, Place place) {
  const double x =
      std::clamp<double>(place.x, std::min(box.left, box.right), std::max(box.left, box.right));
  const double y =
      std::clamp<double>(place.y, std::min(box.top, box.bottom), std::max(box.top, box.bottom));
  return std::hypot(place.x - x, place.y - y);
}

NearestPlace nearest_of_line(const std::vector<Place>& line, Place place) {
  NearestPlace nearest = nearest_of_segment(line.front(), line.front(), place);
  for (std::size_t i = 1; i < line.size(); ++i) {
    const NearestPlace here = nearest_of_segment(line[i - 1], line[i], place);
    if (here.distance < nearest.distance) nearest = here;
  }
  return nearest;
}

double distance_to_line(const std::vector<Place>& line, Place place) {
  return nearest_of_line(line, place).distance;
}

}  // namespace tavlo
