#include "chart/scales/scale_choice.h"

#include "chart/scales/plot_coordinates.h"

namespace tavlo {

void choose_scale(ChartAxis& axis, int code) {
  axis.ScaleType = static_cast<std::int16_t>(code);
  if (has_place(code, axis.Min) && has_place(code, axis.Max)) return;
  const Chart factory = fuStandard_Chart();
  const ChartAxis& usual = factory.Axes(is_probability_scale(code) ? 1 : 0);
  axis.Min = usual.Min;
  axis.Max = usual.Max;
}

bool is_limit(int code, double value) {
  return has_place(code, value) || (is_probability_scale(code) && value == 1.0);
}

}  // namespace tavlo
