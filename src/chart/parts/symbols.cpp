#include "chart/parts/symbols.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

#include "chart/record/canvas.h"

namespace tavlo {

using namespace drawing;

namespace {

constexpr double inverse_root_two = 0.707106781186548;
constexpr double triangle_side = 1.15470053837925;   // of the half size: 2 / sqrt 3
constexpr double triangle_base = 0.577350269189626;  // 1 / sqrt 3
constexpr double thin = 0.12;                        // of the full size
constexpr double pi = 3.14159265358979323846;

/// Corners of a shape in half sizes around the centre, Y downward.
struct UnitCorner {
  double x;
  double y;
};
using Corners = std::vector<UnitCorner>;

/// Builds the parts of a symbol in logical units.
class Shapes {
 public:
  explicit Shapes(double half) : half_(half) {}

  Shapes& polygon(const Corners& corners) {
    parts.push_back(Polygon{places(corners)});
    return *this;
  }
  Shapes& line(UnitCorner from, UnitCorner to) {
    parts.push_back(Polyline{places({from, to})});
    return *this;
  }
  Shapes& ellipse(double half_width, double half_height) {
    const std::int32_t x = std::max(1, to_unit(half_width * half_));
    const std::int32_t y = std::max(1, to_unit(half_height * half_));
    parts.push_back(Ellipse{-x, -y, x, y});
    return *this;
  }
  Shapes& circle(double radius = 1.0) { return ellipse(radius, radius); }
  Shapes& box(double half_width, double half_height) {
    return polygon({{-half_width, -half_height},
                    {half_width, -half_height},
                    {half_width, half_height},
                    {-half_width, half_height}});
  }
  Shapes& plus(double reach = 1.0) {
    return line({-reach, 0}, {reach, 0}).line({0, -reach}, {0, reach});
  }
  Shapes& cross(double reach = inverse_root_two) {
    return line({-reach, -reach}, {reach, reach}).line({-reach, reach}, {reach, -reach});
  }

  std::vector<Record> parts;

 private:
  std::vector<Place> places(const Corners& corners) const {
    std::vector<Place> result;
    for (const UnitCorner& corner : corners)
      result.push_back({to_unit(corner.x * half_), to_unit(corner.y * half_)});
    return result;
  }

  double half_;
};

/// A point up, with its centre of gravity at the place of the datum.
const Corners triangle = {{0, -triangle_side}, {1, triangle_base}, {-1, triangle_base}};
const Corners diamond = {{0, -1}, {1, 0}, {0, 1}, {-1, 0}};

/// Half of a square, its right angle at the lower left.
const Corners corner_triangle = {{-0.9, -0.9}, {0.9, 0.9}, {-0.9, 0.9}};

Corners turned(const Corners& corners, int quarters) {
  Corners result = corners;
  for (int i = 0; i < quarters; ++i)
    for (UnitCorner& corner : result) corner = {-corner.y, corner.x};
  return result;
}

/// `points` corners on the circle, every second drawn in to `inner`.
Corners star(int points, double inner) {
  Corners result;
  const int corners = inner == 1.0 ? points : 2 * points;
  for (int i = 0; i < corners; ++i) {
    const double angle = 2.0 * pi * i / corners;
    const double radius = i % 2 == 0 ? 1.0 : inner;
    result.push_back({radius * std::sin(angle), -radius * std::cos(angle)});
  }
  return result;
}

/// A cross of bars, `half_bar` half wide, upright.
Corners fat_plus(double half_bar) {
  const double b = half_bar;
  return {{-b, -1}, {b, -1}, {b, -b}, {1, -b}, {1, b},   {b, b},
          {b, 1},   {-b, 1}, {-b, b}, {-1, b}, {-1, -b}, {-b, -b}};
}

Corners rotated_by_eighth(const Corners& corners) {
  Corners result;
  for (const UnitCorner& corner : corners)
    result.push_back(
        {(corner.x - corner.y) * inverse_root_two, (corner.x + corner.y) * inverse_root_two});
  return result;
}

using Drawer = void (*)(Shapes&);

constexpr double square_half = 0.88;  // looks as large as the circle

// Symbols 1 to 27. The numbers are stored in charts, so their order stays.
const std::array<Drawer, 27> drawers = {
    [](Shapes& s) { s.circle(); },
    [](Shapes& s) { s.box(square_half, square_half); },
    [](Shapes& s) { s.polygon(diamond); },
    [](Shapes& s) { s.polygon(turned(triangle, 2)); },
    [](Shapes& s) { s.polygon(triangle); },
    [](Shapes& s) { s.polygon(turned(triangle, 1)); },
    [](Shapes& s) { s.polygon(turned(triangle, 3)); },
    [](Shapes& s) {
      s.polygon({{-1, -1}, {1, -1}, {-1, 1}, {1, 1}});
    },  // hourglass
    [](Shapes& s) { s.plus(); },
    [](Shapes& s) { s.cross(); },
    [](Shapes& s) { s.plus().cross(); },
    [](Shapes& s) { s.circle(0.62).plus(); },  // cross-hair
    [](Shapes& s) { s.box(square_half, square_half).plus(square_half); },
    [](Shapes& s) { s.polygon(diamond).plus(); },
    [](Shapes& s) { s.circle().cross(); },
    [](Shapes& s) { s.box(square_half, square_half).cross(square_half); },
    [](Shapes& s) {
      s.polygon({{-1, -1}, {1, 1}, {1, -1}, {-1, 1}});
    },  // bow tie
    [](Shapes& s) { s.polygon(corner_triangle); },
    [](Shapes& s) { s.polygon(turned(corner_triangle, 2)); },
    [](Shapes& s) { s.box(1.0, 2.0 * thin); },
    [](Shapes& s) { s.box(2.0 * thin, 1.0); },
    [](Shapes& s) { s.ellipse(1.0, 0.55); },
    [](Shapes& s) { s.polygon(star(5, 0.382)); },
    [](Shapes& s) { s.polygon(star(4, 0.35)); },
    [](Shapes& s) { s.circle(); },                       // solid
    [](Shapes& s) { s.box(square_half, square_half); },  // solid
    [](Shapes& s) { s.polygon(rotated_by_eighth(fat_plus(0.22))); },
};

/// Adds `by`; a mark may stand at the edge of 32 bits, so the sum is held there.
void shift(std::int32_t& at, std::int32_t by) {
  using Range = std::numeric_limits<std::int32_t>;
  at = static_cast<std::int32_t>(
      std::clamp<std::int64_t>(std::int64_t{at} + by, Range::min(), Range::max()));
}

Record moved(Record record, Place by) {
  if (auto* ellipse = std::get_if<Ellipse>(&record)) {
    shift(ellipse->left, by.x);
    shift(ellipse->right, by.x);
    shift(ellipse->top, by.y);
    shift(ellipse->bottom, by.y);
    return record;
  }
  auto* polygon = std::get_if<Polygon>(&record);
  for (Place& place : polygon ? polygon->places : std::get<Polyline>(record).places) {
    shift(place.x, by.x);
    shift(place.y, by.y);
  }
  return record;
}

}  // namespace

bool is_symbol(int symbol) { return symbol >= 1 && symbol <= static_cast<int>(drawers.size()); }

bool is_solid_symbol(int symbol) { return symbol == 25 || symbol == 26; }

SymbolStamp::SymbolStamp(int symbol, int size) {
  if (!is_symbol(symbol)) return;
  Shapes shapes(std::fabs(size / 2.0));
  drawers[static_cast<std::size_t>(symbol) - 1](shapes);
  parts_ = std::move(shapes.parts);
}

void SymbolStamp::draw(Recorder& recorder, Place centre) const {
  if (parts_.empty()) return;
  recorder.add(Symbol{centre, static_cast<std::int32_t>(parts_.size())});
  for (const Record& part : parts_) recorder.add(moved(part, centre));
}

}  // namespace tavlo
