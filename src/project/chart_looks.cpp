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
  marker.Tied = own.Tied;
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
  marker.Tied = false;
}

bool is_without_symbols(const ChartMarker& marker) {
  return marker.SymbolStyle == pen_style::none && marker.SymbolFill == 0;
}

/// The row is a further line of data whose points stand on the chart already.
bool is_only_a_line(const Chart& chart, int row) {
  const ChartMarker& marker = chart.Markers(row);
  if (marker.DataId == 0 || !is_without_symbols(marker)) return false;
  for (int i = 1; i < row; ++i)
    if (chart.Markers(i).DataId == marker.DataId) return true;
  return false;
}

void take_symbols_off(ChartMarker& marker) {
  marker.SymbolStyle = pen_style::none;
  marker.SymbolFill = 0;
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
    if (i <= chart.nMarkers && is_only_a_line(chart, i)) take_symbols_off(markers(i));
  }
  return markers;
}

/// Words that somebody chose stay; those of the chart's type go with it.
void keep_own_titles(Chart& looks, const Chart& chart) {
  const Chart factory = chart_of_type(chart.Profile);
  for (const int title :
       {chart_item::main_title, chart_item::sub_title, chart_item::x_title, chart_item::y_title})
    if (chart.Boxes(title).Text2 != factory.Boxes(title).Text2)
      looks.Boxes(title).Text2 = chart.Boxes(title).Text2;
}

/// Scales, limits, their rule and the form of the numbers; the pens come with the looks.
void keep_scales(Chart& looks, const Chart& chart) {
  Slots<ChartAxis> axes = chart.Axes;
  const int last = std::min(axes.bound(), looks.Axes.bound());
  for (int i = 0; i <= last; ++i) {
    ChartAxis& axis = looks.Axes(i);
    axis.AutoMax = axes(i).AutoMax;
    axis.AutoMin = axes(i).AutoMin;
    axis.Max = axes(i).Max;
    axis.Min = axes(i).Min;
    axis.ScaleType = axes(i).ScaleType;
    axis.Label.Int4 = axes(i).Label.Int4;
    axis.Label.Text2 = axes(i).Label.Text2;
    axes(i) = axis;
  }
  looks.nAxes = chart.nAxes;
  looks.Axes = std::move(axes);
}

/// An answer is one of a fit of the project that the looks come from.
void take_answers_off(Chart& looks) {
  Slots<ChartItem> marks = looks.Texts;
  int kept = 0;
  for (int i = 1; i <= std::min(looks.nTexts, looks.Texts.bound()); ++i)
    if (!is_answer_mark(looks.Texts(i))) marks(++kept) = looks.Texts(i);
  marks.resize(kept);
  looks.Texts = std::move(marks);
  looks.nTexts = kept;
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
  } else {
    take_answers_off(dressed);
  }
  chart = std::move(dressed);
}

void apply_chart_type(Chart& chart, std::string_view type) {
  Chart looks = chart_of_type(type);
  keep_own_titles(looks, chart);
  if (is_only_looks(type)) keep_scales(looks, chart);
  apply_profile(chart, looks);
}

void apply_chart_look(Chart& chart, std::string_view look) {
  Chart looks = chart_of_type(look);
  keep_own_titles(looks, chart);
  keep_scales(looks, chart);
  apply_profile(chart, looks);
}

bool has_factory_look(const Chart& chart) {
  Chart anew = chart;
  apply_chart_look(anew, chart.Profile);
  return anew == chart && !is_only_looks(chart.Profile);
}

}  // namespace tavlo
