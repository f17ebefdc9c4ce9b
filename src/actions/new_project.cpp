#include "actions/new_project.h"

#include "actions/reports.h"
#include "actions/undo.h"
#include "actions/work.h"
#include "life/models.h"
#include "numerics/date_text.h"

namespace tavlo {

namespace {

std::string head_line(Clock& clock) {
  const DateTime now = clock.now();
  return std::string("Tavlo ") + TAVLO_VERSION + "  " + format_date(now, "yyyy") +
         format_date(now, "  ddd dd mmm yyyy    hh:mmampm") + "\n";
}

}  // namespace

void choose_standard_fit(FitChoices& panel) {
  const Model* model = find_model(model_code::weibull2);
  panel.nModel = model->code;
  panel.txt_Custom = model->panel_formula;
  panel.nMethod = method_code::x_on_y;
}

Project begun_project(Session& session) {
  Project project = fresh_project(session);
  project.log.append_plain(head_line(session.ports.clock));
  return project;
}

void start_project(Session& session) {
  replace_project(session, begun_project(session), {});
  mark_saved(session);
  session.step = "New Project";
}

void add_data_set(Session& session) {
  const int data = New_frm_Data(session);
  const int fits = New_frm_Fit(session);
  if (data == 0 || fits == 0) return;
  choose_standard_fit(*session.gFitForm(fits));
  session.step = "New Data/Fit";
}

void add_chart(Session& session) {
  if (New_frm_Chart(session) > 0) session.step = "New Chart";
}

}  // namespace tavlo
