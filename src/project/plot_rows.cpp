#include "project/plot_rows.h"

#include <algorithm>

#include "project/chart_types.h"

namespace tavlo {

namespace {

constexpr int looks = 20;
constexpr int no_fit = 0;

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
  marker.FitNumber = ChartMarker{}.FitNumber;
  marker.Tied = false;
  return marker;
}

int last_row(const Chart& chart) { return std::min(chart.nMarkers, chart.Markers.bound()); }

/// The first row that `is_wanted`; 0 when none is.
template <class Wanted>
int first_row(const Chart& chart, const Wanted& is_wanted) {
  for (int row = 1; row <= last_row(chart); ++row)
    if (is_wanted(chart.Markers(row))) return row;
  return 0;
}

int first_row_of_set(const Project& project, const Chart& chart, int fit_index) {
  return first_row(
      chart, [&](const ChartMarker& marker) { return fit_set_of(project, marker) == fit_index; });
}

void free_row(Chart& chart, int row) {
  chart.Markers(row) = looks_of_row(chart_of_type(chart.Profile), row);
}

/// The row of the points keeps them, those of further lines go.
void take_line_off(const Project& project, Chart& chart, int fit_index, int row) {
  if (row != first_row_of_set(project, chart, fit_index)) return free_row(chart, row);
  chart.Markers(row).FitNumber = no_fit;
  chart.Markers(row).Tied = false;
}

}  // namespace

void ensure_plot_row(Chart& chart, int row) {
  while (chart.Markers.bound() < row)
    chart.Markers.push_back(looks_of_row(chart, chart.Markers.bound() + 1));
  chart.nMarkers = std::max(chart.nMarkers, row);
}

int add_plot_set(Chart& chart, std::int32_t data_id, std::int32_t fit_id, int fit_number) {
  int row = first_row(chart, [](const ChartMarker& marker) { return marker.DataId == 0; });
  if (row == 0) row = last_row(chart) + 1;
  ensure_plot_row(chart, row);
  ChartMarker& marker = chart.Markers(row);
  // The row of a further fit that was taken off by hand would hide the points of a set.
  if (marker.SymbolStyle == pen_style::none && marker.SymbolFill == 0) free_row(chart, row);
  marker.Tied = false;
  marker.DataId = data_id;
  marker.FitId = fit_id;
  marker.FitNumber = fit_number;
  return row;
}

// The points stand on the chart once. The factory looks have ten colours; dashes tell the
// next ten lines from them.
int add_plot_line(const Project& project, Chart& chart, int fit_index, int fit_number) {
  constexpr int colours = 10;
  constexpr int styles = 5;
  const int points = first_row_of_set(project, chart, fit_index);
  const std::int32_t data_id = project.data(data_of_fits(project, fit_index)).UniqueId;
  const int row = add_plot_set(chart, data_id, project.fits(fit_index).UniqueId, fit_number);
  if (points == 0) return row;
  ChartMarker& marker = chart.Markers(row);
  marker.Label = chart.Markers(points).Label;
  marker.SymbolStyle = pen_style::none;
  marker.SymbolFill = 0;
  if (marker.LineStyle == pen_style::solid) marker.LineStyle = (row - 1) / colours % styles;
  return row;
}

int row_of_fit(const Project& project, const Chart& chart, int fit_index, int fit_number) {
  return first_row(chart, [&](const ChartMarker& marker) {
    return marker.FitNumber == fit_number && fit_set_of(project, marker) == fit_index;
  });
}

int following_row(const Project& project, const Chart& chart, int fit_index) {
  return first_row(chart, [&](const ChartMarker& marker) {
    return !marker.Tied && fit_set_of(project, marker) == fit_index;
  });
}

bool shows_set(const Project& project, const Chart& chart, int fit_index) {
  return first_row_of_set(project, chart, fit_index) != 0;
}

void follow_fit(const Project& project, Chart& chart, int fit_index, int fit_number) {
  if (row_of_fit(project, chart, fit_index, fit_number) != 0) return;
  if (const int row = following_row(project, chart, fit_index))
    chart.Markers(row).FitNumber = fit_number;
  else
    add_plot_line(project, chart, fit_index, fit_number);
}

void show_fit(const Project& project, Chart& chart, int fit_index, int fit_number) {
  if (row_of_fit(project, chart, fit_index, fit_number) != 0) return;
  const int row = following_row(project, chart, fit_index);
  const bool is_empty = row != 0 && (chart.Markers(row).FitNumber == no_fit ||
                                     chart.Markers(row).FitNumber > project.fits(fit_index).nFits);
  const int taken = is_empty ? row : add_plot_line(project, chart, fit_index, fit_number);
  chart.Markers(taken).FitNumber = fit_number;
  chart.Markers(taken).Tied = true;
}

void hide_fit(const Project& project, Chart& chart, int fit_index, int fit_number) {
  while (const int row = row_of_fit(project, chart, fit_index, fit_number))
    take_line_off(project, chart, fit_index, row);
}

void forget_fit(const Project& project, Chart& chart, int fit_index, int fit_number) {
  hide_fit(project, chart, fit_index, fit_number);
  for (int row = 1; row <= last_row(chart); ++row) {
    ChartMarker& marker = chart.Markers(row);
    if (marker.FitNumber > fit_number && fit_set_of(project, marker) == fit_index)
      --marker.FitNumber;
  }
}

void forget_data(Chart& chart, std::int32_t data_id) {
  for (int row = 1; row <= last_row(chart); ++row)
    if (chart.Markers(row).DataId == data_id) free_row(chart, row);
}

}  // namespace tavlo
