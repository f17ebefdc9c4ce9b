#include "chart/parts/crowding.h"

#include <algorithm>
#include <cmath>
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

/// The length of the part of a segment that lies in the area.
double length_inside(const Place& from, const Place& to, const Rectangle& area) {
  double first = 0;
  double last = 1;
  if (!cut(from.x, to.x, area.left, area.right, first, last) ||
      !cut(from.y, to.y, area.top, area.bottom, first, last))
    return 0;
  return (last - first) *
         std::hypot(static_cast<double>(to.x) - from.x, static_cast<double>(to.y) - from.y);
}

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
  constexpr int cells = 12;
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

Rectangle box_around(const std::vector<Place>& places) {
  Rectangle box{places.front().x, places.front().y, places.front().x, places.front().y};
  for (const Place& place : places) {
    box.left = std::min(box.left, place.x);
    box.right = std::max(box.right, place.x);
    box.top = std::min(box.top, place.y);
    box.bottom = std::max(box.bottom, place.y);
  }
  return box;
}

Obstacles::Obstacles(std::initializer_list<const DrawingRecord*> drawings) {
  for (const DrawingRecord* drawing : drawings)
    for (const Record& record : drawing->records) add(record);
}

void Obstacles::add(const Record& record) {
  if (const auto* box = std::get_if<Rectangle>(&record)) shapes_.push_back(*box);
  if (const auto* shape = std::get_if<Ellipse>(&record))
    shapes_.push_back({shape->left, shape->top, shape->right, shape->bottom});
  if (const auto* shape = std::get_if<Polygon>(&record); shape && !shape->places.empty())
    shapes_.push_back(box_around(shape->places));
  if (const auto* line = std::get_if<Polyline>(&record)) add_line(line->places);
}

void Obstacles::add_line(const std::vector<Place>& places) {
  for (std::size_t i = 1; i < places.size(); ++i) pieces_.push_back({places[i - 1], places[i]});
}

double Obstacles::hidden_by(const Rectangle& area) const {
  constexpr double shape_length = 400;  // of a line that is as bad to hide as a point
  double hidden = 0;
  for (const Rectangle& shape : shapes_) hidden += box_touches(shape, area) ? 1 : 0;
  double length = 0;
  for (const auto& [from, to] : pieces_) length += length_inside(from, to, area);
  return hidden + length / shape_length;
}

FreePlace freest_place(const ChartItem& plot, const TextSize& box, Corner preferred,
                       const Obstacles& obstacles, const std::vector<Rectangle>& taken) {
  constexpr double worse_than_any_line = 1e6;
  constexpr double clearance = 40;
  const Room room(plot, box);
  FreePlace best{room.at(share_of(preferred).x, share_of(preferred).y),
                 std::numeric_limits<double>::max()};
  const auto consider = [&](const Share& share) {
    if (best.hidden == 0) return;
    const Place at = room.at(share.x, share.y);
    const Rectangle area{to_unit(at.x - clearance), to_unit(at.y - clearance),
                         to_unit(at.x + box.width + clearance),
                         to_unit(at.y + box.height + clearance)};
    double hidden = obstacles.hidden_by(area);
    for (const Rectangle& other : taken)
      if (box_touches(other, area)) hidden += worse_than_any_line;
    if (hidden < best.hidden) best = {at, hidden};
  };
  for (const Share& share : corners_from(share_of(preferred))) consider(share);
  for (const Share& share : lattice_from(share_of(preferred))) consider(share);
  return best;
}

}  // namespace tavlo
