// Distance: how far a place of the chart is from what is drawn there, for the
// pointer's sake.
#pragma once

#include <vector>

#include "chart/record/drawing_record.h"

namespace tavlo {

/// Logical units between two places.
double distance(drawing::Place a, drawing::Place b);

/// To the area; 0 inside it.
double distance_to_box(const drawing::Rectangle& box, drawing::Place place);

struct NearestPlace {
  double x = 0;
  double y = 0;
  double distance = 0;
};

/// The place of a polyline that is nearest to `place`. The line has a point.
NearestPlace nearest_of_line(const std::vector<drawing::Place>& line, drawing::Place place);

double distance_to_line(const std::vector<drawing::Place>& line, drawing::Place place);

}  // namespace tavlo
