#include "actions/new_project.h"

#include "actions/reports.h"
#include "life/models.h"
#include "numerics/date_text.h"

namespace tavlo {

namespace {

std::string head_line(Clock& clock) {
  const DateTime now = clock.now();
  return std::string("Tavlo ") + TAVLO_VERSION + "  " + format_date(now, "yyyy") +
         format_date(now, "  ddd dd mmm yyyy    hh:mmampm") + "\n";
}

void choose_standard_fit(FitPanel& panel) {
  const Model* model = find_model(model_code::weibull2);
  panel.nModel = model->code;
  panel.txt_Custom = model->panel_formula;
  panel.nMethod = method_code::x_on_y;
}

}  // namespace

void start_project(Session& session) {
  reset_project(session);
  for (int i = 1; i <= session.project.fits.bound(); ++i) {
    choose_standard_fit(*session.gFitForm(i));
    Load_Fit(session, i);
  }
  for (int i = 1; i <= session.project.charts.bound(); ++i) session.ports.views.chart_changed(i);
  AppendLog(session, head_line(session.ports.clock), false);
  session.step = "New Project";
}

void add_data_set(Session& session) {
  const int data = New_frm_Data(session);
  const int fits = New_frm_Fit(session);
  if (data == 0 || fits == 0) return;
  choose_standard_fit(*session.gFitForm(fits));
  Load_Fit(session, fits);
  session.ports.views.chart_changed(session.project.charts.bound());
  session.step = "New Data/Fit";
}

void add_chart(Session& session) {
  if (New_frm_Chart(session) > 0) session.step = "New Chart";
}

}  // namespace tavlo
