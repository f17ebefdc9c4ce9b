#include "chart/record/chart_style.h"

#include "project/chart_types.h"

namespace tavlo {

const ChartStyle& chart_style(const Chart& chart) {
  static constexpr ChartStyle usual = {};
  static constexpr ChartStyle report = {.division = Division::round,
                                        .wording = Wording::plain,
                                        .titles = TitlePlace::left,
                                        .has_mark = false,
                                        .has_wide_dashes = true,
                                        .titled_by_data = true,
                                        .parameters = Corner::bottom_right,
                                        .legend = Corner::top_left,
                                        .line_spacing = 1.25,
                                        .widest_parameters = 0.9,
                                        .legend_slack = 1.03,
                                        .widest_legend = 0.68};
  static constexpr ChartStyle page = [] {
    ChartStyle style = report;
    style.parameters_give_way = true;
    return style;
  }();
  if (chart.Profile == page_chart_type) return page;
  return chart.Profile == report_chart_type ? report : usual;
}

}  // namespace tavlo
