// Crowding: how much of a drawing lies in a part of the chart, to find a free
// place for a box.
#pragma once

#include <initializer_list>
#include <vector>

#include "chart/record/canvas.h"
#include "chart/record/chart_style.h"
#include "chart/record/drawing_record.h"

namespace tavlo {

/// The smallest box that holds all places; there is at least one.
drawing::Rectangle box_around(const std::vector<drawing::Place>& places);

/// What a box in the plot would hide: the shapes and lines of a drawing.
class Obstacles {
 public:
  Obstacles() = default;
  explicit Obstacles(std::initializer_list<const DrawingRecord*> drawings);

  void add(const drawing::Rectangle& area) { shapes_.push_back(area); }
  void add_line(const std::vector<drawing::Place>& places);

  /// How much of it the area covers: the number of shapes that it touches, and lines
  /// by the length in it.
  double hidden_by(const drawing::Rectangle& area) const;

 private:
  void add(const drawing::Record& record);

  struct Piece {
    drawing::Place from;
    drawing::Place to;
  };
  std::vector<drawing::Rectangle> shapes_;
  std::vector<Piece> pieces_;
};

struct FreePlace {
  drawing::Place place;
  double hidden = 0;  ///< by a box that stands there, see Obstacles
};

/// Where a box of that size hides least of what else the plot holds: in the
/// preferred corner if that is free, else in another, else at the nearest free
/// place between them. It keeps off the boxes that are `taken` if it can.
FreePlace freest_place(const ChartItem& plot, const TextSize& box, Corner preferred,
                       const Obstacles& obstacles, const std::vector<drawing::Rectangle>& taken);

}  // namespace tavlo
