#include "actions/work.h"

#include <utility>

#include "actions/new_project.h"
#include "actions/recent_files.h"
#include "actions/recovery.h"
#include "actions/undo.h"

namespace tavlo {

namespace {

/// What a chart shows before the project has a file.
constexpr const char* no_file = "(new)";

void offer_last_fit(FitChoices& choices, const FitSet& fits) {
  choose_standard_fit(choices);
  if (fits.nFits < 1) return;
  const FitResult& last = fits.Fits(fits.nFits);
  const Model* model = find_model(last.ModelCode);
  const Model* shown = model ? model_of_panel(*model) : nullptr;
  if (!shown || !find_method(last.Method)) return;
  choices.nModel = model->code;
  choices.nMethod = last.Method;
  choices.censored = last.request.censored;
  choices.txt_Custom = shown->panel_formula;
}

const Work& work_of(const Session& session, const Project& state) {
  static const Work none;
  const auto work = session.works.find(state.work);
  return work == session.works.end() ? none : work->second;
}

}  // namespace

void replace_project(Session& session, Project project, const std::string& path) {
  keep_copy(session, CopyReason::replaced);
  project.work = ++session.last_work;
  session.works[project.work].path = path;
  session.project = std::move(project);
  session.chart_at_work = 0;
  follow_records(session);
  for (int i = 1; i <= session.project.fits.bound(); ++i) {
    FitPanel& panel = *session.gFitForm(i);
    panel.remark.clear();
    offer_last_fit(panel, session.project.fits(i));
  }
}

const Work& present_work(const Session& session) { return work_of(session, session.project); }

std::string title_of(const Session& session, const Project& state) {
  const std::string& path = work_of(session, state).path;
  if (!path.empty()) return bare_file_name(path);
  return state.name.empty() ? "Untitled" : state.name;
}

std::string project_title(const Session& session) { return title_of(session, session.project); }

void show_file_name(Project& project, const std::string& old_path, const std::string& path) {
  for (Chart& chart : project.charts) {
    if (chart.Boxes.bound() < chart_item::file_name || chart.UniqueId == 0) continue;
    std::string& text = chart.Boxes(chart_item::file_name).Text2;
    if (text == no_file || text.ends_with(".tavlo") ||
        (!old_path.empty() && text == bare_file_name(old_path)))
      text = bare_file_name(path);
  }
}

void tie_to_file(Session& session, const std::string& path) {
  session.works[session.project.work].path = path;
  mark_saved(session);
  add_recent_file(session.settings, path);
  drop_copy(session);
}

}  // namespace tavlo
