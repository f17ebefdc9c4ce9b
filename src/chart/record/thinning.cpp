#include "chart/record/thinning.h"

#include <cmath>
#include <cstddef>

#include "numerics/rounding.h"

namespace tavlo {

using drawing::Place;

namespace {

constexpr std::size_t stride = 8;

/// The chord between two points, measured across its longer extent.
class Chord {
 public:
  Chord(Place from, Place to) : from_(from) {
    const double dx = static_cast<double>(to.x) - from.x;
    const double dy = static_cast<double>(to.y) - from.y;
    has_length_ = dx != 0.0 || dy != 0.0;
    steep_ = std::fabs(dy) > std::fabs(dx);
    if (has_length_) slope_ = steep_ ? dx / dy : dy / dx;
  }

  bool has_length() const { return has_length_; }

  double deviation(Place place) const {
    const double x = static_cast<double>(place.x) - from_.x;
    const double y = static_cast<double>(place.y) - from_.y;
    return std::fabs(steep_ ? x - y * slope_ : y - x * slope_);
  }

 private:
  Place from_;
  bool has_length_;
  bool steep_;
  double slope_ = 0;
};

bool chord_holds(const std::vector<Place>& line, std::size_t a, std::size_t b, int tolerance) {
  const Chord chord(line[a], line[b]);
  if (!chord.has_length()) return false;
  int at_tolerance = 0;
  for (std::size_t i = b - 1; i > a; --i) {
    const double deviation = chord.deviation(line[i]);
    if (deviation < tolerance - 0.5) continue;  // the usual case, whatever the rounding
    const double whole = round_half_even(deviation);
    if (whole > tolerance) return false;
    if (whole == tolerance && ++at_tolerance > tolerance) return false;
  }
  return true;
}

/// The far end that is tried from an anchor, and the step that led there.
struct Candidate {
  std::size_t at;
  std::size_t step;
};

Candidate beyond(std::size_t from, std::size_t last) {
  return from + stride <= last ? Candidate{from + stride, stride} : Candidate{from + 1, 1};
}

}  // namespace

std::vector<Place> thin_line(const std::vector<Place>& line, int tolerance) {
  if (line.size() < 3) return line;
  const std::size_t last = line.size() - 1;
  std::vector<Place> kept = {line.front()};
  std::size_t anchor = 0;
  Candidate to = beyond(anchor, last);
  while (to.at <= last) {
    if (chord_holds(line, anchor, to.at, tolerance)) {
      to = beyond(to.at, last);
    } else if (to.step >= 2) {
      to.step /= 2;
      to.at -= to.step;
    } else {
      const bool is_next = to.at == anchor + 1;
      anchor = is_next ? to.at : to.at - 1;
      if (!is_next) kept.push_back(line[anchor]);
      to = beyond(anchor, last);
    }
  }
  kept.push_back(line.back());
  return kept;
}

}  // namespace tavlo
