#include "chart/compose/free_words.h"

#include <algorithm>
#include <utility>

namespace tavlo {

using drawing::Place;
using drawing::Rectangle;

namespace {

constexpr std::int32_t inside = 30;  // units, from the edges of the plot

bool overlap(const Rectangle& a, const Rectangle& b) {
  return a.left <= b.right && a.right >= b.left && a.top <= b.bottom && a.bottom >= b.top;
}

bool lies_in(const Rectangle& inner, const Rectangle& outer) {
  return inner.left >= outer.left && inner.right <= outer.right && inner.top >= outer.top &&
         inner.bottom <= outer.bottom;
}

Rectangle area_at(Place corner, const TextSize& words) {
  return {corner.x, corner.y, to_unit(corner.x + words.width), to_unit(corner.y + words.height)};
}

/// The nearest first, none beyond the sides of the plot. A rising line leaves the places below on
/// the right and above on the left free.
std::vector<Place> corners_beside(Place at, const TextSize& words, double beside,
                                  const Rectangle& plot) {
  constexpr int farthest = 4;  // lines of words
  const std::int32_t right = to_unit(std::min(at.x + beside, plot.right - words.width));
  const std::int32_t left =
      to_unit(std::max(at.x - beside - words.width, static_cast<double>(plot.left)));
  std::vector<Place> corners;
  for (int line = 0; line <= farthest; ++line) {
    const std::int32_t below = to_unit(at.y + beside + line * words.height);
    const std::int32_t above = to_unit(at.y - beside - (line + 1) * words.height);
    corners.insert(corners.end(), {{right, below}, {left, above}, {right, above}, {left, below}});
  }
  return corners;
}

}  // namespace

FreeWords::FreeWords(const ChartItem& plot, Obstacles plotted, std::int32_t beside)
    : plot_{plot.Left + inside, plot.Top + inside, plot.Left + plot.Width - inside,
            plot.Top + plot.Height - inside},
      plotted_(std::move(plotted)),
      beside_(beside) {}

double FreeWords::badness(const Rectangle& area) const {
  constexpr double worse_than_any_point = 1e6;
  double bad = plotted_.hidden_by(area);
  for (const Rectangle& other : taken_) bad += overlap(area, other) ? worse_than_any_point : 0;
  return bad + (lies_in(area, plot_) ? 0 : worse_than_any_point);
}

Place FreeWords::place_beside(Place at, const TextSize& words) {
  const auto corners = corners_beside(at, words, beside_, plot_);
  Place best = corners.front();
  double least = badness(area_at(best, words));
  for (const Place& corner : corners) {
    const double bad = least > 0 ? badness(area_at(corner, words)) : least;
    if (bad >= least) continue;
    least = bad;
    best = corner;
  }
  return best;
}

}  // namespace tavlo
