#include "chart/record/clipping.h"

#include <algorithm>
#include <optional>

#include "numerics/rounding.h"

namespace tavlo {

using drawing::Place;

namespace {

using Places = std::vector<Place>;

/// The part of a line that is left, as fractions of its length.
struct Part {
  double begin = 0;
  double end = 1;
};

/// Keeps where `slope` x fraction is at most `room`; false when nothing is left.
bool narrow(Part& part, double slope, double room) {
  if (slope == 0) return room >= 0;
  const double cut = room / slope;
  if (slope < 0)
    part.begin = std::max(part.begin, cut);
  else
    part.end = std::min(part.end, cut);
  return part.begin <= part.end;
}

std::optional<Part> part_inside(Place from, Place to, const ClipFrame& frame) {
  const double dx = static_cast<double>(to.x) - from.x;
  const double dy = static_cast<double>(to.y) - from.y;
  Part part;
  const bool inside = narrow(part, -dx, static_cast<double>(from.x) - frame.left) &&
                      narrow(part, dx, static_cast<double>(frame.right) - from.x) &&
                      narrow(part, -dy, static_cast<double>(from.y) - frame.top) &&
                      narrow(part, dy, static_cast<double>(frame.bottom) - from.y);
  if (!inside) return std::nullopt;
  return part;
}

/// Exact at both ends, since neither may move by a rounding.
Place between(Place from, Place to, double fraction) {
  if (fraction == 0) return from;
  if (fraction == 1) return to;
  const auto along = [fraction](std::int32_t a, std::int32_t b) {
    return ToInt32(a + fraction * (static_cast<double>(b) - a));
  };
  return {along(from.x, to.x), along(from.y, to.y)};
}

/// The part of a polygon where `depth` is not negative.
template <class Depth>
Places cut(const Places& places, Depth depth) {
  Places kept;
  for (std::size_t i = 0; i < places.size(); ++i) {
    const Place& from = places[i == 0 ? places.size() - 1 : i - 1];
    const Place& to = places[i];
    const double before = depth(from);
    const double after = depth(to);
    if ((before < 0) != (after < 0)) kept.push_back(between(from, to, before / (before - after)));
    if (after >= 0) kept.push_back(to);
  }
  return kept;
}

}  // namespace

bool ClipFrame::holds(Place place) const {
  return place.x >= left && place.x <= right && place.y >= top && place.y <= bottom;
}

bool ClipFrame::holds(const Places& places) const {
  return std::all_of(places.begin(), places.end(), [this](Place place) { return holds(place); });
}

std::vector<Places> clipped_polyline(const Places& places, const ClipFrame& frame) {
  std::vector<Places> runs;
  bool joined = false;
  for (std::size_t i = 1; i < places.size(); ++i) {
    const auto part = part_inside(places[i - 1], places[i], frame);
    if (part && (!joined || part->begin > 0))
      runs.push_back({between(places[i - 1], places[i], part->begin)});
    if (part) runs.back().push_back(between(places[i - 1], places[i], part->end));
    joined = part && part->end == 1;
  }
  return runs;
}

Places clipped_polygon(const Places& places, const ClipFrame& frame) {
  Places kept = cut(places, [&](Place p) { return static_cast<double>(p.x) - frame.left; });
  kept = cut(kept, [&](Place p) { return static_cast<double>(frame.right) - p.x; });
  kept = cut(kept, [&](Place p) { return static_cast<double>(p.y) - frame.top; });
  return cut(kept, [&](Place p) { return static_cast<double>(frame.bottom) - p.y; });
}

}  // namespace tavlo
