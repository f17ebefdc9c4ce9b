#include "chart/boxes.h"

#include <cmath>

#include "chart/canvas.h"

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

}  // namespace tavlo
