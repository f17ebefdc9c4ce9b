// Axis labels: the texts of the ticks of one axis, and which of them find room.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "chart/record/canvas.h"
#include "chart/scales/plot_coordinates.h"
#include "chart/scales/scale_points.h"

namespace tavlo {

struct AxisLabel {
  double value = 0;
  std::string text;
};

/// The pattern with one decimal more, ahead of a percent sign; beyond 16
/// characters it becomes "0.00E+00", which grows no further.
std::string with_one_decimal_more(std::string_view pattern);

/// The texts of the major ticks, most important first, and then of the two
/// limits. An empty number format means "0%" on a probability scale and as many
/// digits as a value needs elsewhere. Decimals are added until the text tells
/// the value; evenly spaced ticks share their number of decimals.
std::vector<AxisLabel> axis_labels(const ChartAxis& axis, int code, const ScalePoints& points,
                                   Limits limits);

/// Logical units from the edge of the plot to its labels.
double label_offset(TextMeasure& measure, const ChartItem& font);
/// Logical units that the labels of the X axis take below the plot.
double label_room_below(TextMeasure& measure, const ChartItem& font);

/// Writes the labels that keep clear of those written before them.
void draw_axis_labels(Canvas& canvas, const AxisMap& map, const std::vector<AxisLabel>& labels,
                      const ChartItem& font, bool is_y);

}  // namespace tavlo
