#include "chart/record/canvas.h"

#include <algorithm>
#include <cmath>

#include "numerics/rounding.h"

namespace tavlo {

TextSize text_size(TextMeasure& measure, const std::string& text, const ChartItem& item,
                   double scale) {
  const TextExtent extent = measure.measure(
      text, {item.FontName, drawn_font_size(item.FontSize), item.FontBold, item.FontItalic});
  return {extent.width * scale, extent.height * scale};
}

std::int32_t readable_text_colour(const ChartItem& item) {
  return item.Fill != 0 && item.TextColor == item.FillColor ? item.LineColor : item.TextColor;
}

std::int32_t to_unit(double value) {
  constexpr double widest = 2147483645.0;
  return std::isnan(value) ? 0 : ToInt32(std::clamp(value, -widest, widest));
}

}  // namespace tavlo
