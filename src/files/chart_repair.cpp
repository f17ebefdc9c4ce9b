#include "files/chart_repair.h"

#include <algorithm>

#include "chart/scales/plot_coordinates.h"

namespace tavlo {

namespace {

constexpr std::int32_t longest_side = 32767;  // what a metafile's header can say
constexpr float smallest_font = 1;
constexpr float largest_font = 500;
constexpr double highest_fraction = 0.99999999;

template <class Records>
void pad(Records& records, std::int32_t& bound, int least_bound, const Records& factory) {
  if (bound >= least_bound) return;
  const int first_missing = bound + 1;
  bound = least_bound;
  records.resize(bound);
  for (int i = first_missing; i <= bound; ++i) records(i) = factory(i);
}

void hold_size(ChartItem& box) {
  box.Width = std::clamp(box.Width, 1, longest_side);
  box.Height = std::clamp(box.Height, 1, longest_side);
}

void hold_font(ChartItem& item) {
  item.FontSize = std::clamp(item.FontSize, smallest_font, largest_font);
}

// The drawing keeps an upper limit of 1 or more, which has no place on the paper
// and would report an error with each redraw.
void hold_fractions(ChartAxis& axis) {
  if (!is_probability_scale(y_scale_of(axis))) return;
  axis.Max = std::min(axis.Max, highest_fraction);
  axis.Min = std::min(axis.Min, highest_fraction);
}

}  // namespace

void make_drawable(Chart& chart) {
  const Chart factory = fuStandard_Chart();
  pad(chart.Axes, chart.nAxes, 1, factory.Axes);
  pad(chart.Boxes, chart.nBoxes, chart_item::date, factory.Boxes);
  pad(chart.Markers, chart.nMarkers, 1, factory.Markers);
  hold_size(chart.Boxes(chart_item::chart_box));
  hold_size(chart.Boxes(chart_item::plot_box));
  hold_fractions(chart.Axes(1));
  for (ChartItem& box : chart.Boxes) hold_font(box);
  for (ChartItem& mark : chart.Texts) hold_font(mark);
  for (ChartAxis& axis : chart.Axes) hold_font(axis.Label);
}

}  // namespace tavlo
