#include "chart/compose/chart_parts.h"

#include <cmath>

#include "chart/compose/readout.h"
#include "chart/parts/movable_boxes.h"
#include "chart/record/canvas.h"
#include "chart/scales/axis_labels.h"

namespace tavlo {

namespace {

constexpr double note_strip = 280;  // at the foot of the chart

bool is_on_plot_set(const Session& session, const Chart& chart, drawing::Place place,
                    double reach) {
  const auto reading = Readout(session, chart).precise_at(place, reach);
  return reading && reading->snapped != SnappedTo::nothing;
}

/// Labels first and the title below them; notes only in the corners, which the
/// title leaves free.
ChartPart part_below_plot(const Session& session, const Chart& chart, drawing::Place place) {
  const ChartItem& box = chart.Boxes(chart_item::chart_box);
  const double labels_end = y_extent(chart.Boxes(chart_item::plot_box)).end +
                            label_room_below(session.ports.text_measure, chart.Axes(0).Label);
  if (place.y <= labels_end) return ChartPart::x_axis;
  const double foot = static_cast<double>(box.Top) + box.Height - note_strip;
  const double from_middle = std::abs(place.x - (box.Left + box.Width / 2.0));
  const bool in_corner = from_middle > box.Width / 4.0;
  return place.y >= foot && in_corner ? ChartPart::notes : ChartPart::titles;
}

ChartPart part_left_of_plot(const Session& session, const Chart& chart, drawing::Place place) {
  const ChartItem& title = chart.Boxes(chart_item::y_title);
  const double height = text_size(session.ports.text_measure, title.Text2, title).height;
  const double title_end =
      static_cast<double>(chart.Boxes(chart_item::chart_box).Left) + title.Top + height;
  return place.x <= title_end ? ChartPart::titles : ChartPart::y_axis;
}

}  // namespace

ChartPart chart_part_at(const Session& session, const Chart& chart, const DrawingRecord& drawing,
                        drawing::Place place, double reach) {
  if (movable_box_at(drawing, place) != 0) return ChartPart::insets;
  const ChartItem& plot = chart.Boxes(chart_item::plot_box);
  if (place.y < y_extent(plot).begin) return ChartPart::titles;
  if (place.y > y_extent(plot).end) return part_below_plot(session, chart, place);
  if (place.x < x_extent(plot).begin) return part_left_of_plot(session, chart, place);
  if (place.x > x_extent(plot).end) return ChartPart::boxes;
  return is_on_plot_set(session, chart, place, reach) ? ChartPart::plot_sets : ChartPart::boxes;
}

}  // namespace tavlo
