#include "chart/record/dashes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <span>

#include "chart/record/canvas.h"

namespace tavlo {

using drawing::Place;

namespace {

// In widths of the line: dash, gap, dash, gap ...
constexpr double dash = 5;
constexpr double dot = 0.2;
constexpr double gap = 3;
constexpr std::array<double, 2> dashed = {dash, gap};
constexpr std::array<double, 2> dotted = {dot, gap};
constexpr std::array<double, 4> dash_dotted = {dash, gap, dot, gap};
constexpr std::array<double, 6> dash_dot_dotted = {dash, gap, dot, gap, dot, gap};

std::span<const double> pattern_of(std::int32_t style) {
  switch (style) {
    case 1: return dashed;
    case 2: return dotted;
    case 3: return dash_dotted;
    case 4: return dash_dot_dotted;
    default: return {};
  }
}

/// Walks along a line and lays its pattern down.
class Walk {
 public:
  Walk(std::span<const double> pattern, double width, const Place& start)
      : pattern_(pattern), width_(width), left_(pattern[0] * width), pieces_{{start}} {}

  void go(const Place& from, const Place& to) {
    const double length = std::hypot(double{1} * to.x - from.x, double{1} * to.y - from.y);
    double at = 0;
    while (at + left_ < length) {
      at += left_;
      turn({to_unit(from.x + at / length * (double{1} * to.x - from.x)),
            to_unit(from.y + at / length * (double{1} * to.y - from.y))});
    }
    left_ -= length - at;
    if (is_drawing()) pieces_.back().push_back(to);
  }

  /// Pieces of one place are no lines. Those of two get one between them: a player draws
  /// a level line of two places without round ends, and dots are nothing else.
  std::vector<std::vector<Place>> end() {
    std::erase_if(pieces_, [](const auto& piece) { return piece.size() < 2; });
    for (auto& piece : pieces_)
      if (piece.size() == 2)
        piece.insert(piece.begin() + 1, {std::midpoint(piece[0].x, piece[1].x),
                                         std::midpoint(piece[0].y, piece[1].y)});
    return std::move(pieces_);
  }

 private:
  bool is_drawing() const { return part_ % 2 == 0; }
  /// A dash ends at the place, or the next begins there.
  void turn(const Place& place) {
    if (is_drawing())
      pieces_.back().push_back(place);
    else
      pieces_.push_back({place});
    part_ = (part_ + 1) % pattern_.size();
    left_ = pattern_[part_] * width_;
  }

  std::span<const double> pattern_;
  double width_;
  double left_;           // of the part at work
  std::size_t part_ = 0;  // of the pattern
  std::vector<std::vector<Place>> pieces_;
};

}  // namespace

bool is_broken(std::int32_t style) { return !pattern_of(style).empty(); }

std::vector<std::vector<Place>> dashes_of(const std::vector<Place>& places, std::int32_t style,
                                          double width) {
  const auto pattern = pattern_of(style);
  constexpr double thinnest = 4;  // below it the dashes would be too many to see
  if (pattern.empty() || places.size() < 2) return {places};
  Walk walk(pattern, std::max(width, thinnest), places.front());
  for (std::size_t i = 1; i < places.size(); ++i) walk.go(places[i - 1], places[i]);
  return walk.end();
}

}  // namespace tavlo
