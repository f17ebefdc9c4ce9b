#include "actions/undo.h"

#include <utility>

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

/// An edit that is open ends without being taken.
void bring_back(Session& session, const Project& state) {
  session.project = state;
  follow_records(session);
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
  bring_back(session, session.history.undo());
  session.ports.views.status("Undone: " + name);
  return true;
}

bool redo(Session& session) {
  if (is_busy(session) || !session.history.can_redo()) return false;
  const std::string name = session.history.redo_name();
  bring_back(session, session.history.redo());
  session.ports.views.status("Done again: " + name);
  return true;
}

}  // namespace tavlo
