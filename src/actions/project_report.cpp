#include "actions/project_report.h"

#include <algorithm>
#include <string>

#include "actions/announce.h"
#include "actions/busy_panel.h"
#include "actions/intake.h"
#include "actions/recent_files.h"
#include "actions/report.h"
#include "actions/work.h"
#include "project/fit_records.h"

namespace tavlo {

namespace {

bool bring_up_to_date(Session& session) {
  const int last = std::min(session.project.data.bound(), session.project.fits.bound());
  for (int i = 1; i <= last; ++i) {
    if (session.gDataForm(i)->last_row() == 0) continue;
    const BusyPanel busy(session, i);
    bool clean = true;
    if (!CheckDirtyData(session, i, clean)) return false;
  }
  announce(session);  // charts get their limits
  return true;
}

int old_fits(const Project& project) {
  int old = 0;
  for (int i = 1; i <= project.fits.bound(); ++i)
    for (int slot = 1; slot <= project.fits(i).nFits; ++slot)
      old += is_out_of_date(project.fits(i).Fits(slot), project.data(data_of_fits(project, i)));
  return old;
}

// What is out of date is said in the report; its maker is to know it first.
bool wants_old_fits(Session& session) {
  const int old = old_fits(session.project);
  if (old == 0) return true;
  const std::string fits = old == 1 ? "A fit is" : std::to_string(old) + " fits are";
  return session.ports.prompts.show({"Export Report",
                                     fits + " out of date: the report will have no numbers of " +
                                         (old == 1 ? "it" : "them") + ".\nExport it all the same?",
                                     BoxIcon::question, BoxButtons::yes_no}) == BoxAnswer::yes;
}

}  // namespace

std::optional<Report> project_report(Session& session) {
  session.step = "Fit";
  if (!bring_up_to_date(session) || !wants_old_fits(session)) return std::nullopt;
  ReportRequest request{file_title(project_title(session)),
                        bare_file_name(present_work(session).path)};
  request.b_life.clear();
  for (const double percent : session.life_questions.percents)
    request.b_life.push_back(percent / 100);
  request.times = session.life_questions.times;
  return make_report(session, request);
}

}  // namespace tavlo
