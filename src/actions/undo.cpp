#include "actions/undo.h"

#include <utility>

#include "actions/reports.h"
#include "chart/scales/chart_view.h"

namespace tavlo {

namespace {

bool is_zoomed(const Project& before, const Project& now) {
  if (now.charts.bound() != before.charts.bound()) return false;
  for (int i = 1; i <= now.charts.bound(); ++i)
    if (now.charts(i).ZoomedFrom != before.charts(i).ZoomedFrom) return true;
  return false;
}

/// A zoom shows another part of a chart and changes nothing in it.
bool only_zoomed(const Project& before, const Project& now) {
  if (!is_zoomed(before, now)) return false;
  Project seen_as_before = now;
  for (int i = 1; i <= now.charts.bound(); ++i)
    if (now.charts(i).ZoomedFrom != before.charts(i).ZoomedFrom)
      copy_view(before.charts(i), seen_as_before.charts(i));
  return seen_as_before == before;
}

/// The windows show what has come back. An edit that is open ends without being taken.
void show(Session& session, const Project& state) {
  session.project = state;
  follow_records(session);
  Views& views = session.ports.views;
  for (int i = 1; i <= session.project.data.bound(); ++i) views.sheet_changed(i);
  for (int i = 1; i <= session.project.fits.bound(); ++i) Load_Fit(session, i);
  for (int i = 1; i <= session.project.charts.bound(); ++i) views.chart_changed(i);
  views.log_changed();
}

}  // namespace

void end_step(Session& session) {
  const std::string name = std::exchange(session.step, {});
  if (session.project == session.history.now()) return;
  if (only_zoomed(session.history.now(), session.project))
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
