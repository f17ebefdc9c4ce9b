// Clipping: the parts of lines and shapes that lie inside a frame. A drawing may
// hold places anywhere in 32 bits; a metafile has 16, and a coordinate that
// wrapped around would draw a line across the whole picture.
#pragma once

#include <cstdint>
#include <vector>

#include "chart/record/drawing_record.h"

namespace tavlo {

/// A rectangle of the logical plane, its edges included.
struct ClipFrame {
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t right = 0;
  std::int32_t bottom = 0;

  bool holds(drawing::Place place) const;
  bool holds(const std::vector<drawing::Place>& places) const;
};

/// The parts of a polyline inside the frame, in order, each of two places or
/// more (method of Liang and Barsky). Cut places are rounded to whole units.
std::vector<std::vector<drawing::Place>> clipped_polyline(const std::vector<drawing::Place>& places,
                                                          const ClipFrame& frame);

/// The part of a polygon inside the frame (method of Sutherland and Hodgman);
/// where the polygon leaves the frame, its outline follows the frame's edge.
/// Empty when nothing lies inside.
std::vector<drawing::Place> clipped_polygon(const std::vector<drawing::Place>& places,
                                            const ClipFrame& frame);

}  // namespace tavlo
