#include "project/chart_looks.h"

#include <algorithm>
#include <utility>

#include "project/chart_types.h"

namespace tavlo {

namespace {

void tie(ChartMarker& marker, const ChartMarker& own) {
  marker.FitNumber = own.FitNumber;
  marker.DataId = own.DataId;
  marker.FitId = own.FitId;
  marker.Label = own.Label;
}

bool is_same_view(const ChartAxis& a, const ChartAxis& b) {
  return a.AutoMin == b.AutoMin && a.AutoMax == b.AutoMax && a.Min == b.Min && a.Max == b.Max &&
         a.ScaleType == b.ScaleType;
}

/// A zoom lives on only where the axes are seen as before.
bool keeps_zoom(const Chart& chart, const Chart& profile) {
  return is_same_view(chart.Axes(0), profile.Axes(0)) &&
         is_same_view(chart.Axes(1), profile.Axes(1));
}

/// The identities in a row that came with a profile mean nothing in this project.
void untie(ChartMarker& marker) {
  const ChartMarker fresh;
  marker.FitNumber = fresh.FitNumber;
  marker.DataId = fresh.DataId;
  marker.FitId = fresh.FitId;
}

Slots<ChartMarker> dressed_markers(const Chart& chart, const Chart& profile) {
  Slots<ChartMarker> markers = chart.Markers;
  markers.resize(std::max(chart.nMarkers, profile.nMarkers));
  for (int i = 0; i <= profile.nMarkers; ++i) {
    markers(i) = profile.Markers(i);
    if (i <= chart.nMarkers)
      tie(markers(i), chart.Markers(i));
    else
      untie(markers(i));
  }
  return markers;
}

}  // namespace

void apply_profile(Chart& chart, const Chart& profile) {
  Chart dressed = profile;
  dressed.UniqueId = chart.UniqueId;
  dressed.Name = chart.Name;
  dressed.SubPopulations = chart.SubPopulations;
  dressed.ZoomedFrom = keeps_zoom(chart, profile) ? chart.ZoomedFrom : std::vector<ChartView>{};
  dressed.nDataIds = chart.nDataIds;
  dressed.DataIds = chart.DataIds;
  dressed.nFitIds = chart.nFitIds;
  dressed.FitIds = chart.FitIds;
  dressed.Markers = dressed_markers(chart, profile);
  dressed.nMarkers = dressed.Markers.bound();
  ChartItem& file_name = dressed.Boxes(chart_item::file_name);
  file_name.Text1 = chart.Boxes(chart_item::file_name).Text1;
  file_name.Text2 = chart.Boxes(chart_item::file_name).Text2;
  if (chart.nTexts > 0) {
    dressed.nTexts = chart.nTexts;
    dressed.Texts = chart.Texts;
  }
  chart = std::move(dressed);
}

void apply_chart_type(Chart& chart, std::string_view type) {
  Chart looks = chart_of_type(type);
  for (const int title :
       {chart_item::main_title, chart_item::sub_title, chart_item::x_title, chart_item::y_title})
    looks.Boxes(title).Text2 = chart.Boxes(title).Text2;
  if (is_only_colours(type)) {
    looks.nAxes = chart.nAxes;
    looks.Axes = chart.Axes;
  }
  apply_profile(chart, looks);
}

}  // namespace tavlo
