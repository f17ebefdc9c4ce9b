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
std::int32_t unused_id(Session& session, const Project& project) {
  std::int32_t id = 0;
  while (id == 0 || holds_id(project.data, id) || holds_id(project.fits, id) ||
         holds_id(project.charts, id))
    id = session.ids.fl_NewUniqueId(session.ports.clock);
  return id;
}

/// "Data3", or with a higher number where that name is taken.
template <class Records>
std::string unused_title(const Records& records, const std::string& kind) {
  int number = records.bound() + 1;
  const auto is_taken = [&] {
    return std::any_of(records.begin() + 1, records.end(), [&](const auto& record) {
      return record.Title == kind + std::to_string(number);
    });
  };
  while (is_taken()) ++number;
  return kind + std::to_string(number);
}

/// Shows the data sets from `first` on with their fits.
void link_markers(const Project& project, Chart& chart, int first) {
  for (int i = first; i <= std::min(project.data.bound(), project.fits.bound()); ++i)
    add_plot_set(chart, project.data(i).UniqueId, project.fits(i).UniqueId, 1);
}

void add_data(Session& session, Project& project) {
  DataSet data = fuStandardData();
  data.UniqueId = unused_id(session, project);
  data.Title = unused_title(project.data, "Data");
  project.data.push_back(std::move(data));
}

void add_fits(Session& session, Project& project) {
  const int index = project.fits.bound() + 1;
  FitSet fits = fuStandard_Fit();
  fits.UniqueId = unused_id(session, project);
  fits.Title = unused_title(project.fits, "Fit");
  fits.nDataIds = 1;
  fits.DataIds.push_back(index <= project.data.bound() ? project.data(index).UniqueId : 0);
  project.fits.push_back(std::move(fits));
  if (project.charts.bound() > 0)
    link_markers(project, project.charts(project.charts.bound()), index);
}

void add_chart_record(Session& session, Project& project) {
  Chart chart = chart_of_type(session.settings.ChartType);
  chart.UniqueId = unused_id(session, project);
  chart.nDataIds = chart.nFitIds = 1;
  chart.DataIds.push_back(project.data.bound() > 0 ? project.data(1).UniqueId : 0);
  chart.FitIds.push_back(project.fits.bound() > 0 ? project.fits(1).UniqueId : 0);
  link_markers(project, chart, 1);
  project.charts.push_back(std::move(chart));
}

/// Each panel shows what was chosen for its set, wherever this stands now.
void follow_fit_sets(Session& session) {
  const Slots<FitSet>& fits = session.project.fits;
  for (int i = 1; i <= session.gFitForm.bound(); ++i)
    if (const std::int32_t id = session.gFitForm(i)->L_ID)
      session.choices[id] = *session.gFitForm(i);
  session.gFitForm.resize(std::max(session.gFitForm.bound(), fits.bound()));
  for (int i = 1; i <= fits.bound(); ++i) {
    std::unique_ptr<FitPanel>& panel = session.gFitForm(i);
    if (!panel) panel = std::make_unique<FitPanel>();
    panel->data_index = panel->fit_index = i;
    if (panel->L_ID == fits(i).UniqueId) continue;
    panel->L_ID = fits(i).UniqueId;
    panel->remark.clear();
    static_cast<FitChoices&>(*panel) = session.choices[panel->L_ID];
  }
  for (int i = fits.bound() + 1; i <= session.gFitForm.bound(); ++i) session.gFitForm(i)->L_ID = 0;
}

}  // namespace

Session::Session(const Ports& world)
    : ports(world), errors(world.prompts, world.clock), history(Project{}) {
  reset_project(*this);
  works[project.work].saved = project;
  history.restart(project);
}

Project fresh_project(Session& session) {
  Project project;
  add_data(session, project);
  add_fits(session, project);
  add_chart_record(session, project);
  return project;
}

void reset_project(Session& session) {
  session.project = fresh_project(session);
  follow_records(session);
  for (int i = 1; i <= session.gFitForm.bound(); ++i) *session.gFitForm(i) = FitPanel();
  follow_records(session);
}

void follow_records(Session& session) {
  Project& project = session.project;
  session.gDataForm.resize(std::max(session.gDataForm.bound(), project.data.bound()));
  for (int i = 1; i <= project.data.bound(); ++i) {
    std::unique_ptr<DataSheet>& sheet = session.gDataForm(i);
    const std::int32_t id = project.data(i).UniqueId;
    if (!sheet) sheet = std::make_unique<DataSheet>(project, session.settings, id);
    sheet->show(id);
  }
  for (int i = project.data.bound() + 1; i <= session.gDataForm.bound(); ++i)
    session.gDataForm(i)->cancel_edit();
  follow_fit_sets(session);
}

bool is_busy(const Session& session) {
  for (int i = 1; i <= session.gFitForm.bound(); ++i)
    if (session.gFitForm(i)->busy) return true;
  return false;
}

int New_frm_Data(Session& session) {
  return guarded(session.errors, 0, form_words("Data", session.project.data.bound()), [&] {
    add_data(session, session.project);
    follow_records(session);
    return session.project.data.bound();
  });
}

int New_frm_Fit(Session& session) {
  return guarded(session.errors, 0, form_words("Fit", session.project.fits.bound()), [&] {
    add_fits(session, session.project);
    follow_records(session);
    return session.project.fits.bound();
  });
}

int New_frm_Chart(Session& session) {
  return guarded(session.errors, 0, form_words("Chart", session.project.charts.bound()), [&] {
    add_chart_record(session, session.project);
    return session.project.charts.bound();
  });
}

}  // namespace tavlo
