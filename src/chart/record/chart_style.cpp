#include "chart/record/chart_style.h"

#include "project/chart_types.h"

namespace tavlo {

const ChartStyle& chart_style(const Chart& chart) {
  static constexpr ChartStyle usual = {};
  static constexpr ChartStyle report = {.division = Division::round,
                                        .wording = Wording::plain,
                                        .titles = TitlePlace::left,
                                        .has_mark = false,
                                        .titled_by_data = true,
                                        .parameters = Corner::bottom_right,
                                        .line_spacing = 1.25,
                                        .legend = Corner::top_left};
  return chart.Profile == report_chart_type ? report : usual;
}

}  // namespace tavlo
