#include "chart/parts/marker_line.h"

#include <cmath>

#include "chart/record/chart_style.h"
#include "chart/record/dashes.h"

namespace tavlo {

void draw_marker_line(Canvas& canvas, const ChartMarker& marker,
                      const std::vector<drawing::Place>& places) {
  const bool in_pieces = chart_style(canvas.chart).has_wide_dashes && is_broken(marker.LineStyle);
  const auto pen = Selected::pen(canvas.recorder, in_pieces ? pen_style::solid : marker.LineStyle,
                                 marker.LineWidth, marker.LineColor);
  if (!in_pieces) return canvas.recorder.add(drawing::Polyline{places});
  const double width = std::fabs(static_cast<double>(marker.LineWidth));
  for (auto& dash : dashes_of(places, marker.LineStyle, width))
    canvas.recorder.add(drawing::Polyline{std::move(dash)});
}

}  // namespace tavlo
