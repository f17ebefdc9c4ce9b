#include "chart/parts/plot_sets.h"

#include <algorithm>
#include <string_view>

#include "project/fit_records.h"

namespace tavlo {

namespace {

const FitResult* fit_of(const Session& session, const ChartMarker& marker, int data_index) {
  const int index = fit_set_of(session.project, marker);
  if (index == 0) return nullptr;
  const FitSet& fits = session.project.fits(index);
  if (marker.FitNumber < 0 || marker.FitNumber > fits.Fits.bound()) return nullptr;
  const FitResult& fit = fits.Fits(marker.FitNumber);
  return is_current(fit, session.project.data(data_index)) && fit.Rows.bound() > 0 && fit.nRows > 0
             ? &fit
             : nullptr;
}

constexpr std::string_view factory_word = "Data";

/// "Data 7" and "Data7": names that nobody chose.
bool is_factory_name(const std::string& name) {
  return name.starts_with(factory_word) &&
         name.find_first_not_of(" 0123456789", factory_word.size()) == name.npos;
}

/// "Data 7" for "Data7", so that the sets of a chart are written alike whichever rows they have.
std::string as_label(std::string title) {
  const std::size_t number = factory_word.size();
  if (is_factory_name(title) && title.size() > number && title[number] != ' ')
    title.insert(number, " ");
  return title;
}

}  // namespace

std::vector<PlotSet> plot_sets(const Session& session, const Chart& chart) {
  std::vector<PlotSet> sets;
  const int last = std::min(chart.nMarkers, chart.Markers.bound());
  for (int i = 1; i <= last; ++i) {
    const ChartMarker& marker = chart.Markers(i);
    const int data_index = marker.DataId == 0 ? 0 : find_data(session.project, marker.DataId);
    if (data_index > 0)
      sets.push_back({&marker, i, data_index, fit_of(session, marker, data_index)});
  }
  return sets;
}

bool is_out_of_date(const Session& session, const Chart& chart) {
  const std::vector<PlotSet> sets = plot_sets(session, chart);
  return std::any_of(sets.begin(), sets.end(), [&](const PlotSet& set) {
    const DataSet& data = session.project.data(set.data_index);
    return !data.is_read() && !data.reading.rows().empty();
  });
}

void show_data(ChartMarker& marker, std::int32_t data_id) {
  marker.DataId = data_id;
  marker.FitId = ChartMarker{}.FitId;
  marker.Tied = data_id != 0;
}

std::string names_of_data(const Session& session, const std::vector<PlotSet>& sets) {
  std::string names;
  std::vector<int> named;
  for (const PlotSet& set : sets) {
    if (std::find(named.begin(), named.end(), set.data_index) != named.end()) continue;
    named.push_back(set.data_index);
    const std::string& title = session.project.data(set.data_index).Title;
    const bool is_unnamed = is_factory_name(set.marker->Label) && !title.empty();
    names += (names.empty() ? "" : ", ") + (is_unnamed ? title : set_title(session, set));
  }
  return names;
}

bool show_one_data_set(const std::vector<PlotSet>& sets) {
  return std::all_of(sets.begin(), sets.end(),
                     [&](const PlotSet& set) { return set.data_index == sets.front().data_index; });
}

std::string set_title(const Session& session, const PlotSet& set) {
  const std::string& label = set.marker->Label;
  const std::string& title = session.project.data(set.data_index).Title;
  if (label.empty()) return title;
  return is_factory_name(label) && !title.empty() ? as_label(title) : label;
}

}  // namespace tavlo
