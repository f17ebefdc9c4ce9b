#include "actions/announce.h"

#include <algorithm>

#include "actions/reports.h"
#include "chart/compose/answer_marks.h"
#include "chart/compose/auto_scale.h"
#include "project/plot_rows.h"

namespace tavlo {

namespace {

template <class Records>
bool same_heads(const Records& a, const Records& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& x, const auto& y) {
    return x.UniqueId == y.UniqueId && x.Title == y.Title;
  });
}

/// Windows and tree show which records there are, and their names.
bool same_records(const Project& a, const Project& b) {
  return a.charts.bound() == b.charts.bound() && same_heads(a.data, b.data) &&
         same_heads(a.fits, b.fits);
}

template <class Record>
bool same_record(const Slots<Record>& a, const Slots<Record>& b, int index) {
  return index <= std::min(a.bound(), b.bound()) && a(index) == b(index);
}

/// Of the modes that were read; one that is typed is none of them yet.
bool same_mode_names(const DataSet& a, const DataSet& b) {
  const int modes = std::max(a.reading.modes(), b.reading.modes());
  if (modes > std::min(a.ModeNames.bound(), b.ModeNames.bound())) return false;
  return std::equal(a.ModeNames.begin() + 1, a.ModeNames.begin() + 1 + modes,
                    b.ModeNames.begin() + 1);
}

/// What fits and charts show of a data set. They don't follow what is being typed, but for
/// the sign that it is newer than they are.
bool same_reading(const DataSet& a, const DataSet& b) {
  return a.UniqueId == b.UniqueId && a.Title == b.Title && same_mode_names(a, b) &&
         a.read_revision == b.read_revision && a.reading == b.reading;
}

bool same_marker(const Project& a, const Project& b, const ChartMarker& marker) {
  const int data_a = find_data(a, marker.DataId);
  const int data_b = find_data(b, marker.DataId);
  if (data_a == 0 || data_b == 0) return data_a == data_b;
  const int fits_a = fit_set_of(a, marker);
  const int fits_b = fit_set_of(b, marker);
  if ((fits_a == 0) != (fits_b == 0)) return false;
  return same_reading(a.data(data_a), b.data(data_b)) &&
         (fits_a == 0 || a.fits(fits_a) == b.fits(fits_b));
}

bool same_chart(const Project& a, const Project& b, int index) {
  if (!same_record(a.charts, b.charts, index)) return false;
  const Chart& chart = a.charts(index);
  return std::all_of(chart.Markers.begin() + 1, chart.Markers.end(),
                     [&](const ChartMarker& marker) { return same_marker(a, b, marker); });
}

/// Of each data set that the chart shows: whether it is newer than what is shown of it.
bool same_age(const Project& a, const Project& b, const Chart& chart) {
  return std::all_of(
      chart.Markers.begin() + 1, chart.Markers.end(), [&](const ChartMarker& marker) {
        const int in_a = find_data(a, marker.DataId);
        const int in_b = find_data(b, marker.DataId);
        return in_a == 0 || in_b == 0 || a.data(in_a).is_read() == b.data(in_b).is_read();
      });
}

/// The fit grid tells which fits the charts draw.
bool same_markers(const Project& a, const Project& b) {
  return std::equal(a.charts.begin(), a.charts.end(), b.charts.begin(), b.charts.end(),
                    [](const Chart& x, const Chart& y) { return x.Markers == y.Markers; });
}

bool same_grid(const Project& a, const Project& b, int index) {
  return same_record(a.fits, b.fits, index) &&
         same_reading(a.data(data_of_fits(a, index)), b.data(data_of_fits(b, index))) &&
         a.data(data_of_fits(a, index)).is_read() == b.data(data_of_fits(b, index)).is_read();
}

}  // namespace

void announce(Session& session) {
  Project& now = session.project;
  const Project& told = session.told;
  if (now == told) return;
  Views& views = session.ports.views;
  if (!same_records(told, now)) views.records_changed();
  for (int i = 1; i <= now.data.bound(); ++i)
    if (!same_record(told.data, now.data, i)) views.sheet_changed(i);
  const bool draws_others = !same_markers(told, now);
  for (int i = 1; i <= now.fits.bound(); ++i)
    if (draws_others || !same_grid(told, now, i)) Load_Fit(session, i);
  for (int i = 1; i <= now.charts.bound(); ++i) {
    if (!same_chart(told, now, i)) {
      SetAutoScale(session, now.charts(i));
      views.chart_changed(i);
    } else if (!same_age(told, now, now.charts(i))) {
      if (has_answer_marks(now.charts(i)))  // which old data have no answer to
        views.chart_changed(i);
      else
        views.chart_aged(i);
    }
  }
  if (!(told.log == now.log)) views.log_changed();
  session.told = now;
  forget_samples(session.told);
}

}  // namespace tavlo
