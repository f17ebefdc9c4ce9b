// Data points: the failures of one data set, each as a symbol.
#pragma once

#include <vector>

#include "chart/parts/symbols.h"
#include "chart/record/canvas.h"
#include "chart/scales/plot_coordinates.h"
#include "project/records.h"

namespace tavlo {

/// Whether the marker's points are drawn at all.
bool has_symbols(const ChartMarker& marker);

/// Draws the marker's symbol at each place with the marker's pen and fill.
void draw_symbols(Recorder& recorder, const ChartMarker& marker, const SymbolStamp& stamp,
                  const std::vector<drawing::Place>& places);

/// A failure at its place on the chart.
struct PlacedPoint {
  drawing::Place place;
  DataPair value;
  std::size_t row = 0;  ///< of the sample, from 0
};

/// The failures that can be seen, in order; of those on one place the first.
std::vector<PlacedPoint> visible_points(Canvas& canvas, const ChartMarker& marker,
                                        const DataSet& data);

/// From so many points on their outlines run together and hide what lies below.
inline constexpr std::size_t crowd_of_points = 300;

/// The marker as one of so many points: beyond a hundred they get smaller, down to 0.3
/// of their size, and from `crowd_of_points` on they are plain dots of a colour half way to the
/// paper's, so that a line above them is seen.
ChartMarker look_in_crowd(const ChartMarker& marker, const ChartItem& plot, std::size_t points);

/// Draws the rows with failures that have a place on the chart, in order. Points
/// that fall on the same place are drawn once.
void draw_data_points(Canvas& canvas, const ChartMarker& marker, const DataSet& data);

}  // namespace tavlo
