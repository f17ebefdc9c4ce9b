#include "chart/parts/boxes.h"

#include <algorithm>
#include <cmath>

#include "chart/record/canvas.h"

namespace tavlo {

void draw_box(Recorder& recorder, const ChartItem& item) {
  const bool has_line = item.LineStyle != pen_style::none;
  const double inset = has_line ? std::fabs(static_cast<double>(item.LineWidth)) / 2.0 : 0.0;
  const double right = static_cast<double>(item.Left) + item.Width;
  const double bottom = static_cast<double>(item.Top) + item.Height;
  const auto pen = Selected::pen(recorder, item.LineStyle, item.LineWidth, item.LineColor);
  const auto brush = Selected::brush(recorder, item.Fill != 0, item.FillColor);
  recorder.add(drawing::Rectangle{to_unit(item.Left + inset), to_unit(item.Top + inset),
                                  to_unit(right - inset), to_unit(bottom - inset)});
}

drawing::Rectangle area_of(const ChartItem& item) {
  return {item.Left, item.Top, to_unit(static_cast<double>(item.Left) + item.Width),
          to_unit(static_cast<double>(item.Top) + item.Height)};
}

namespace {

std::int32_t kept_within(std::int32_t begin, std::int32_t length, std::int32_t low,
                         std::int32_t room) {
  const double last = static_cast<double>(low) + room - length;
  return to_unit(std::max<double>(low, std::min<double>(begin, last)));
}

}  // namespace

void keep_on_chart(ChartItem& item, const Chart& chart) {
  const ChartItem& whole = chart.Boxes(chart_item::chart_box);
  item.Left = kept_within(item.Left, item.Width, whole.Left, whole.Width);
  item.Top = kept_within(item.Top, item.Height, whole.Top, whole.Height);
}

}  // namespace tavlo
