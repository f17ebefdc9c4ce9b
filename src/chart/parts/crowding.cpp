#include "chart/parts/crowding.h"

#include <algorithm>
#include <limits>

#include "chart/scales/plot_coordinates.h"

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

constexpr double inside_corner = 80;

/// The places that a box can stand at, as shares of the room that is left.
class Room {
 public:
  Room(const ChartItem& plot, const TextSize& box)
      : left_(x_extent(plot).begin + inside_corner),
        top_(y_extent(plot).begin + inside_corner),
        across_(std::max(0.0, x_extent(plot).length() - 2 * inside_corner - box.width)),
        down_(std::max(0.0, y_extent(plot).length() - 2 * inside_corner - box.height)) {}

  Place at(double x_share, double y_share) const {
    return {to_unit(left_ + x_share * across_), to_unit(top_ + y_share * down_)};
  }

 private:
  double left_, top_, across_, down_;
};

/// 0, 0 is the upper left corner, 1, 1 the lower right one.
struct Share {
  double x;
  double y;
};

Share share_of(Corner corner) {
  const bool right = corner == Corner::top_right || corner == Corner::bottom_right;
  const bool bottom = corner == Corner::bottom_left || corner == Corner::bottom_right;
  return {right ? 1.0 : 0.0, bottom ? 1.0 : 0.0};
}

/// The preferred corner, the one opposite, the two beside it.
std::vector<Share> corners_from(Share first) {
  return {first, {1 - first.x, 1 - first.y}, {first.x, 1 - first.y}, {1 - first.x, first.y}};
}

/// A lattice over the room, the nearest to the preferred corner first.
std::vector<Share> lattice_from(Share first) {
  constexpr int cells = 8;
  std::vector<Share> shares;
  for (int i = 0; i <= cells; ++i)
    for (int k = 0; k <= cells; ++k) shares.push_back({i / double{cells}, k / double{cells}});
  const auto distance = [first](const Share& at) {
    return (at.x - first.x) * (at.x - first.x) + (at.y - first.y) * (at.y - first.y);
  };
  std::stable_sort(shares.begin(), shares.end(),
                   [&](const Share& a, const Share& b) { return distance(a) < distance(b); });
  return shares;
}

}  // namespace

int shapes_touching(const DrawingRecord& drawing, const Rectangle& area) {
  int count = 0;
  for (const Record& record : drawing.records) count += std::visit(Count{area}, record);
  return count;
}

Place freest_place(const ChartItem& plot, const TextSize& box, Corner preferred,
                   const DrawingRecord& content, const std::vector<Rectangle>& taken) {
  constexpr int worse_than_any_line = 1000000;
  const Room room(plot, box);
  Place best = room.at(share_of(preferred).x, share_of(preferred).y);
  int least = std::numeric_limits<int>::max();
  const auto consider = [&](const Share& share) {
    if (least == 0) return;
    const Place at = room.at(share.x, share.y);
    const Rectangle area{at.x, at.y, to_unit(at.x + box.width), to_unit(at.y + box.height)};
    int hidden = shapes_touching(content, area);
    for (const Rectangle& other : taken)
      if (box_touches(other, area)) hidden += worse_than_any_line;
    if (hidden >= least) return;
    least = hidden;
    best = at;
  };
  for (const Share& share : corners_from(share_of(preferred))) consider(share);
  for (const Share& share : lattice_from(share_of(preferred))) consider(share);
  return best;
}

}  // namespace tavlo
