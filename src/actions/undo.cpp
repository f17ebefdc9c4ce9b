#include "actions/undo.h"

#include <algorithm>
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

/// `now` with its charts seen as they were before.
Project seen_as_before(const Project& before, Project now) {
  const int last = std::min(now.charts.bound(), before.charts.bound());
  for (int i = 1; i <= last; ++i)
    if (now.charts(i).ZoomedFrom != before.charts(i).ZoomedFrom)
      copy_view(before.charts(i), now.charts(i));
  return now;
}

/// A zoom shows another part of a chart and changes nothing in it.
bool only_zoomed(const Project& before, const Project& now) {
  return is_zoomed(before, now) && seen_as_before(before, now) == before;
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

void mark_saved(Session& session) {
  session.saved = session.project;
  forget_samples(session.saved);
}

// Counters of changes go up when a row is typed and deleted again.
bool is_unsaved(const Session& session) {
  const Project& saved = session.saved;
  Project now = seen_as_before(saved, session.project);
  for (int i = 1; i <= std::min(now.data.bound(), saved.data.bound()); ++i) {
    now.data(i).revision = saved.data(i).revision;
    now.data(i).read_revision = saved.data(i).read_revision;
  }
  return now != saved;
}

}  // namespace tavlo
