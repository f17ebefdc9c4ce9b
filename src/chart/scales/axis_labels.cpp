#include "chart/scales/axis_labels.h"

#include <algorithm>

namespace tavlo {

using namespace drawing;

namespace {

/// The share of a line's height that figures fill, with a little air.
constexpr double figure_height = 0.8;

/// A label's stretch along its axis.
struct Stretch {
  double begin;
  double end;
  bool overlaps(const Stretch& other) const { return begin < other.end && other.begin < end; }
};

Stretch stretch_of(Canvas& canvas, const AxisLabel& label, const ChartItem& font, double at,
                   bool is_y) {
  const TextSize size = text_size(canvas.text_measure, label.text, font);
  const double gap = text_size(canvas.text_measure, "0", font).width;
  const double half = is_y ? figure_height * size.height / 2 : (size.width + gap) / 2;
  return {at - half, at + half};
}

bool is_inside(const Stretch& stretch, const ChartItem& chart_box, bool is_y) {
  const double begin = is_y ? chart_box.Top : chart_box.Left;
  const double length = is_y ? chart_box.Height : chart_box.Width;
  return stretch.begin >= begin && stretch.end <= begin + length;
}

/// Whether a label of the Y axis would run into the upright title beside it.
bool meets_title(Canvas& canvas, const Stretch& stretch, double label_left) {
  const ChartItem& title = canvas.chart.Boxes(chart_item::y_title);
  const TextSize size = text_size(canvas.text_measure, title.Text2, title);
  const Extent plot = y_extent(canvas.chart.Boxes(chart_item::plot_box));
  const double middle = (plot.begin + plot.end) / 2;
  const Stretch beside{middle - size.width / 2, middle + size.width / 2};
  const double title_right =
      canvas.chart.Boxes(chart_item::chart_box).Left + title.Top + size.height;
  return stretch.overlaps(beside) && label_left < title_right;
}

}  // namespace

double label_offset(TextMeasure& measure, const ChartItem& font) {
  const TextExtent extent = measure.measure(
      "0123456789.ED+-ed%()",
      {font.FontName, drawn_font_size(font.FontSize), font.FontBold, font.FontItalic});
  return extent.height / 0.242245;
}

double label_room_below(TextMeasure& measure, const ChartItem& font) {
  return label_offset(measure, font) + text_size(measure, "0", font).height;
}

void draw_axis_labels(Canvas& canvas, const AxisMap& map, const std::vector<AxisLabel>& labels,
                      const ChartItem& item, bool is_y) {
  const ChartItem& plot = canvas.chart.Boxes(chart_item::plot_box);
  const Extent along = is_y ? y_extent(plot) : x_extent(plot);
  const double offset = label_offset(canvas.text_measure, item);
  const auto font = Selected::font(canvas.recorder, item);
  canvas.recorder.text_colour(item.TextColor);
  canvas.recorder.align(is_y ? TextAlign::right : TextAlign::centre);
  std::vector<Stretch> written;
  for (const AxisLabel& label : labels) {
    if (!has_place(map.code(), label.value)) continue;
    const std::int32_t at = map(label.value);
    if (at < along.begin || at > along.end) continue;
    const Stretch stretch = stretch_of(canvas, label, item, at, is_y);
    const TextSize size = text_size(canvas.text_measure, label.text, item);
    if (is_y && meets_title(canvas, stretch, x_extent(plot).begin - offset - size.width)) continue;
    const auto meets = [&](const Stretch& other) { return stretch.overlaps(other); };
    if (!is_inside(stretch, canvas.chart.Boxes(chart_item::chart_box), is_y) ||
        std::any_of(written.begin(), written.end(), meets))
      continue;
    written.push_back(stretch);
    canvas.recorder.text(
        is_y ? Place{to_unit(x_extent(plot).begin - offset), to_unit(at - size.height / 2)}
             : Place{at, to_unit(y_extent(plot).end + offset)},
        label.text);
  }
}

}  // namespace tavlo
