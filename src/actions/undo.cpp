#include "actions/undo.h"

#include <utility>

#include "actions/reports.h"
#include "chart/scales/chart_view.h"

namespace tavlo {

namespace {

/// The charts as they are seen before any zoom, without the limits that each drawing takes
/// from the data.
Slots<Chart> without_views(Slots<Chart> charts) {
  for (Chart& chart : charts) {
    end_zoom(chart);
    for (ChartAxis& axis : chart.Axes) take_data_limits(axis, {0, 0});
  }
  return charts;
}

/// What charts and fit grids show of a project: not the rows that nobody has read yet.
Project without_new_rows(Project project) {
  project.log.clear();
  for (DataSet& data : project.data) {
    data.rows = {};
    data.revision = data.read_revision = 0;
  }
  return project;
}

/// To rank a large set again takes a while.
void share_samples(const Project& from, const Project& to) {
  for (const DataSet& data : to.data)
    if (const int same = find_data(from, data.UniqueId))
      data.reading.share_sample(from.data(same).reading);
}

/// The windows show what has come back. An edit that is open ends without being taken.
void show(Session& session, const Project& state) {
  const Project before = session.project;
  session.project = state;
  share_samples(before, session.project);
  follow_records(session);
  Views& views = session.ports.views;
  for (int i = 1; i <= session.project.data.bound(); ++i) views.sheet_changed(i);
  for (int i = 1; i <= session.project.fits.bound(); ++i) Load_Fit(session, i);
  if (!(without_new_rows(before) == without_new_rows(session.project)))
    for (int i = 1; i <= session.project.charts.bound(); ++i) views.chart_changed(i);
  views.log_changed();
}

}  // namespace

bool differ_in_view_only(const Project& a, const Project& b) {
  Project with_charts_of_a = b;
  with_charts_of_a.charts = a.charts;
  return with_charts_of_a == a && without_views(a.charts) == without_views(b.charts);
}

void end_step(Session& session) {
  const std::string name = std::exchange(session.step, {});
  if (session.project == session.history.now()) return;
  if (differ_in_view_only(session.history.now(), session.project))
    session.history.note_view(session.project);
  else
    session.history.note(session.project, name.empty() ? "Change" : name);
}

bool undo(Session& session) {
  if (is_busy(session) || !session.history.can_undo()) return false;
  const std::string name = session.history.undo_name();
  show(session, session.history.undo());
  session.ports.views.status("Undone: " + name);
  return true;
}

bool redo(Session& session) {
  if (is_busy(session) || !session.history.can_redo()) return false;
  const std::string name = session.history.redo_name();
  show(session, session.history.redo());
  session.ports.views.status("Done again: " + name);
  return true;
}

}  // namespace tavlo
