#include "project/plot_rows.h"

#include <algorithm>

namespace tavlo {

namespace {

constexpr int looks = 20;

const ChartMarker& factory_row(const Chart& chart, int number) {
  static const ChartMarker plain;
  const int row = number % looks + 1;
  return row <= chart.Markers.bound() ? chart.Markers(row) : plain;
}

ChartMarker looks_of_row(const Chart& chart, int row) {
  const int turn = (row - 1) / looks;
  ChartMarker marker = factory_row(chart, row - 1);
  const ChartMarker& colours = factory_row(chart, row - 1 + turn);
  marker.FillColor = colours.FillColor;
  marker.SymbolColor = colours.SymbolColor;
  marker.LineColor = colours.LineColor;
  marker.Label = "Data " + std::to_string(row);
  marker.DataId = 0;
  return marker;
}

}  // namespace

void ensure_plot_row(Chart& chart, int row) {
  while (chart.Markers.bound() < row)
    chart.Markers.push_back(looks_of_row(chart, chart.Markers.bound() + 1));
  chart.nMarkers = std::max(chart.nMarkers, row);
}

int add_plot_set(Chart& chart, std::int32_t data_id, std::int32_t fit_id, int fit_number) {
  int row = 1;
  const int last = std::min(chart.nMarkers, chart.Markers.bound());
  while (row <= last && chart.Markers(row).DataId != 0) ++row;
  ensure_plot_row(chart, row);
  ChartMarker& marker = chart.Markers(row);
  marker.DataId = data_id;
  marker.FitId = fit_id;
  marker.FitNumber = fit_number;
  return row;
}

}  // namespace tavlo
