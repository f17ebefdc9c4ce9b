#include "project/session.h"

#include <algorithm>

#include "project/chart_types.h"
#include "project/plot_rows.h"

namespace tavlo {

namespace {

/// Words for the failure of a creation: prefix, the count of forms, place.
auto form_words(const char* kind, int count) {
  return [kind = std::string(kind), count](ErrorReporter& reporter) {
    reporter.add_lines({"New " + kind + " Form: ", "Forms:" + std::to_string(count),
                        "New_frm_" + kind + " routine:"});
  };
}

template <class Records>
bool holds_id(const Records& records, std::int32_t id) {
  return std::any_of(records.begin(), records.end(),
                     [id](const auto& record) { return record.UniqueId == id; });
}

/// An identity that no record of the project has, whatever the clock says.
std::int32_t unused_id(Session& session) {
  std::int32_t id = 0;
  while (id == 0 || holds_id(session.gData, id) || holds_id(session.gFit, id) ||
         holds_id(session.gChart, id))
    id = session.ids.fl_NewUniqueId(session.ports.clock);
  return id;
}

template <class Records>
int index_of(const Records& records, int count, std::int32_t unique_id) {
  for (int i = 1; i <= count; ++i)
    if (records(i).UniqueId == unique_id) return i;
  return 0;
}

/// Shows each data set and its fits on a plot set of the chart.
void link_markers(Session& session, Chart& chart) {
  const int last = std::min(session.nData, session.nFit);
  ensure_plot_row(chart, last);
  for (int i = 1; i <= last; ++i) {
    chart.Markers(i).DataId = session.gData(i).UniqueId;
    chart.Markers(i).FitId = session.gFit(i).UniqueId;
  }
}

}  // namespace

Session::Session(const Ports& world) : ports(world), errors(world.prompts, world.clock) {
  reset_project(*this);
}

void reset_project(Session& session) {
  session.gData = Slots<DataSet>(0, fuStandardData());
  session.gFit = Slots<FitSet>(0, fuStandard_Fit());
  session.gChart = Slots<Chart>(0, fuStandard_Chart());
  session.gDataForm = {};
  session.gFitForm = {};
  session.nData = session.nFit = session.nCharts = 0;
  session.log.clear();
  New_frm_Data(session);
  New_frm_Fit(session);
  New_frm_Chart(session);
}

int New_frm_Data(Session& session) {
  return guarded(session.errors, 0, form_words("Data", session.nData), [&] {
    const int index = session.nData + 1;
    DataSet data = fuStandardData();
    data.UniqueId = unused_id(session);
    data.Title = "Data" + std::to_string(index);
    auto sheet = std::make_unique<DataSheet>(session.errors, session.settings);
    sheet->L_ID = data.UniqueId;
    session.gData.push_back(std::move(data));
    session.gDataForm.push_back(std::move(sheet));
    return session.nData = index;
  });
}

int New_frm_Fit(Session& session) {
  return guarded(session.errors, 0, form_words("Fit", session.nFit), [&] {
    const int index = session.nFit + 1;
    FitSet fits = fuStandard_Fit();
    fits.UniqueId = unused_id(session);
    fits.Title = "Fit" + std::to_string(index);
    fits.nDataIds = 1;
    fits.DataIds.push_back(index <= session.nData ? session.gData(index).UniqueId : 0);
    auto panel = std::make_unique<FitPanel>();
    panel->L_ID = fits.UniqueId;
    panel->data_index = panel->fit_index = index;
    session.gFit.push_back(std::move(fits));
    session.gFitForm.push_back(std::move(panel));
    session.nFit = index;
    if (session.nCharts > 0) link_markers(session, session.gChart(session.nCharts));
    return index;
  });
}

int New_frm_Chart(Session& session) {
  return guarded(session.errors, 0, form_words("Chart", session.nCharts), [&] {
    Chart chart = chart_of_type(session.settings.ChartType);
    chart.UniqueId = unused_id(session);
    chart.nDataIds = chart.nFitIds = 1;
    chart.DataIds.push_back(session.nData > 0 ? session.gData(1).UniqueId : 0);
    chart.FitIds.push_back(session.nFit > 0 ? session.gFit(1).UniqueId : 0);
    link_markers(session, chart);
    session.gChart.push_back(std::move(chart));
    return ++session.nCharts;
  });
}

int find_data(const Session& session, std::int32_t unique_id) {
  return index_of(session.gData, session.nData, unique_id);
}

int find_fit(const Session& session, std::int32_t unique_id) {
  return index_of(session.gFit, session.nFit, unique_id);
}

}  // namespace tavlo
