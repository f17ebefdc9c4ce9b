// Free words: finds a place for the words of a mark, beside a place on the line of a fit, where
// they leave the plot nowhere and hide as little as can be of points, lines and other words.
#pragma once

#include <vector>

#include "chart/parts/crowding.h"

namespace tavlo {

class FreeWords {
 public:
  /// Among what the plot holds; `beside` units stay free between a place and its words.
  FreeWords(const ChartItem& plot, Obstacles plotted, std::int32_t beside);

  /// Where words of that size stand, their upper left corner, beside the place `at`, at most a few
  /// lines from it.
  drawing::Place place_beside(drawing::Place at, const TextSize& words);

  /// Other words keep off the area.
  void take(const drawing::Rectangle& area) { taken_.push_back(area); }

 private:
  double badness(const drawing::Rectangle& area) const;

  drawing::Rectangle plot_;
  Obstacles plotted_;
  std::int32_t beside_;
  std::vector<drawing::Rectangle> taken_;
};

}  // namespace tavlo
