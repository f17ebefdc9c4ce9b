#include "actions/undo.h"

#include <algorithm>
#include <utility>

#include "actions/recovery.h"
#include "actions/work.h"
#include "chart/scales/chart_view.h"

namespace tavlo {

namespace {

/// The chart as it is seen before any zoom, without the limits that each drawing takes from
/// the data.
Chart without_view(Chart chart) {
  end_zoom(chart);
  for (ChartAxis& axis : chart.Axes) take_data_limits(axis, {0, 0});
  return chart;
}

bool differ_in_view_only(const Slots<Chart>& a, const Slots<Chart>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const Chart& x, const Chart& y) {
    return x == y || without_view(x) == without_view(y);
  });
}

/// To rank a large set again takes a while.
void share_samples(const Project& from, const Project& to) {
  for (const DataSet& data : to.data)
    if (const int same = find_data(from, data.UniqueId))
      data.reading.share_sample(from.data(same).reading);
}

/// What a person sees of a chart stays where the step has changed nothing else in it.
void keep_views(const Project& before, Project& now) {
  for (Chart& chart : now.charts)
    for (const Chart& old : before.charts)
      if (old.UniqueId == chart.UniqueId && old.ZoomedFrom != chart.ZoomedFrom &&
          without_view(old) == without_view(chart))
        chart = old;
}

/// An edit that is open ends without being taken.
void bring_back(Session& session, const Project& state) {
  if (state.work != session.project.work) keep_copy(session, CopyReason::replaced);
  const Project before = session.project;
  session.project = state;
  keep_views(before, session.project);
  share_samples(before, session.project);
  follow_records(session);
}

/// Works that no undo brings back, and that no question has to.
void forget_ended_works(Session& session) {
  std::erase_if(session.works, [&](const auto& work) {
    return work.first != session.project.work && !work.second.uncopied &&
           !session.history.holds_work(work.first);
  });
}

}  // namespace

bool differ_in_view_only(const Project& a, const Project& b) {
  return a.work == b.work && a.data == b.data && a.fits == b.fits && a.log == b.log &&
         differ_in_view_only(a.charts, b.charts);
}

void end_step(Session& session) {
  const std::string name = std::exchange(session.step, {});
  tell_missing_copy(session);
  if (session.project == session.history.now()) return;
  if (differ_in_view_only(session.history.now(), session.project))
    session.history.note_view(session.project);
  else
    session.history.note(session.project, name.empty() ? "Change" : name);
  forget_ended_works(session);
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

void return_to_work(Session& session, std::int64_t work) {
  const auto former = session.works.find(work);
  const auto state = former == session.works.end() ? nullptr : former->second.uncopied;
  if (!state) return;
  bring_back(session, *state);
  session.step = "Return to " + project_title(session);
}

void mark_saved(Session& session) {
  Project& saved = session.works[session.project.work].saved;
  saved = session.project;
  forget_samples(saved);
}

bool is_unsaved(const Session& session) {
  const Project& now = session.project;
  const auto work = session.works.find(now.work);
  if (work == session.works.end()) return true;
  const Project& saved = work->second.saved;
  const bool same_data = std::equal(now.data.begin(), now.data.end(), saved.data.begin(),
                                    saved.data.end(), same_content);
  return !same_data || !(now.fits == saved.fits) || !(now.log == saved.log) ||
         !differ_in_view_only(now.charts, saved.charts);
}

}  // namespace tavlo
