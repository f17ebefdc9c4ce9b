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
  while (id == 0 || holds_id(session.project.data, id) || holds_id(session.project.fits, id) ||
         holds_id(session.project.charts, id))
    id = session.ids.fl_NewUniqueId(session.ports.clock);
  return id;
}

/// Shows each data set that the chart doesn't show yet, with its fits.
void link_markers(const Project& project, Chart& chart) {
  const int last = std::min(project.data.bound(), project.fits.bound());
  for (int i = 1; i <= last; ++i)
    if (!shows_set(project, chart, i))
      add_plot_set(chart, project.data(i).UniqueId, project.fits(i).UniqueId, 1);
}

void add_data(Session& session) {
  DataSet data = fuStandardData();
  data.UniqueId = unused_id(session);
  data.Title = "Data" + std::to_string(session.project.data.bound() + 1);
  session.project.data.push_back(std::move(data));
}

void add_fits(Session& session) {
  Project& project = session.project;
  const int index = project.fits.bound() + 1;
  FitSet fits = fuStandard_Fit();
  fits.UniqueId = unused_id(session);
  fits.Title = "Fit" + std::to_string(index);
  fits.nDataIds = 1;
  fits.DataIds.push_back(index <= project.data.bound() ? project.data(index).UniqueId : 0);
  project.fits.push_back(std::move(fits));
  if (project.charts.bound() > 0) link_markers(project, project.charts(project.charts.bound()));
}

void add_chart_record(Session& session) {
  Chart chart = chart_of_type(session.settings.ChartType);
  chart.UniqueId = unused_id(session);
  chart.nDataIds = chart.nFitIds = 1;
  chart.DataIds.push_back(session.project.data.bound() > 0 ? session.project.data(1).UniqueId : 0);
  chart.FitIds.push_back(session.project.fits.bound() > 0 ? session.project.fits(1).UniqueId : 0);
  link_markers(session.project, chart);
  session.project.charts.push_back(std::move(chart));
}

}  // namespace

Session::Session(const Ports& world)
    : ports(world), errors(world.prompts, world.clock), history(Project{}) {
  reset_project(*this);
  history.restart(project);
}

void reset_project(Session& session) {
  session.project = {};
  add_data(session);
  add_fits(session);
  add_chart_record(session);
  follow_records(session);
  for (int i = 1; i <= session.gFitForm.bound(); ++i) *session.gFitForm(i) = {};
  follow_records(session);
}

void follow_records(Session& session) {
  Project& project = session.project;
  session.gDataForm.resize(std::max(session.gDataForm.bound(), project.data.bound()));
  for (int i = 1; i <= project.data.bound(); ++i) {
    std::unique_ptr<DataSheet>& sheet = session.gDataForm(i);
    const std::int32_t id = project.data(i).UniqueId;
    if (!sheet) sheet = std::make_unique<DataSheet>(project, session.errors, session.settings, id);
    sheet->show(id);
  }
  for (int i = project.data.bound() + 1; i <= session.gDataForm.bound(); ++i)
    session.gDataForm(i)->cancel_edit();
  session.gFitForm.resize(std::max(session.gFitForm.bound(), project.fits.bound()));
  for (int i = 1; i <= project.fits.bound(); ++i) {
    std::unique_ptr<FitPanel>& panel = session.gFitForm(i);
    if (!panel) panel = std::make_unique<FitPanel>();
    panel->L_ID = project.fits(i).UniqueId;
    panel->data_index = panel->fit_index = i;
  }
}

bool is_busy(const Session& session) {
  for (int i = 1; i <= session.gFitForm.bound(); ++i)
    if (session.gFitForm(i)->busy) return true;
  return false;
}

int New_frm_Data(Session& session) {
  return guarded(session.errors, 0, form_words("Data", session.project.data.bound()), [&] {
    add_data(session);
    follow_records(session);
    return session.project.data.bound();
  });
}

int New_frm_Fit(Session& session) {
  return guarded(session.errors, 0, form_words("Fit", session.project.fits.bound()), [&] {
    add_fits(session);
    follow_records(session);
    return session.project.fits.bound();
  });
}

int New_frm_Chart(Session& session) {
  return guarded(session.errors, 0, form_words("Chart", session.project.charts.bound()), [&] {
    add_chart_record(session);
    return session.project.charts.bound();
  });
}

}  // namespace tavlo
