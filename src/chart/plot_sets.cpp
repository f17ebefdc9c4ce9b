#include "chart/plot_sets.h"

#include <algorithm>

namespace tavlo {

namespace {

const FitResult* fit_of(const Session& session, const ChartMarker& marker, int data_index) {
  int index = find_fit(session, marker.FitId);
  if (index == 0) index = data_index;
  if (index > session.nFit) return nullptr;
  const FitSet& fits = session.gFit(index);
  if (marker.FitNumber < 0 || marker.FitNumber > fits.Fits.bound()) return nullptr;
  const FitResult& fit = fits.Fits(marker.FitNumber);
  const bool stands = fit.Status == FitStatus::calculated;
  return stands && fit.Rows.bound() > 0 && fit.nRows > 0 ? &fit : nullptr;
}

}  // namespace

std::vector<PlotSet> plot_sets(const Session& session, const Chart& chart) {
  std::vector<PlotSet> sets;
  const int last = std::min(chart.nMarkers, chart.Markers.bound());
  for (int i = 1; i <= last; ++i) {
    const ChartMarker& marker = chart.Markers(i);
    const int data_index = marker.DataId == 0 ? 0 : find_data(session, marker.DataId);
    if (data_index > 0) sets.push_back({&marker, data_index, fit_of(session, marker, data_index)});
  }
  return sets;
}

}  // namespace tavlo
