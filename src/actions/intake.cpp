#include "actions/intake.h"

#include <algorithm>
#include <string>
#include <utility>

#include "actions/busy_panel.h"
#include "actions/compare.h"
#include "actions/dispatch.h"
#include "actions/read_rows.h"
#include "actions/reports.h"
#include "numerics/number_text.h"
#include "project/fit_records.h"

namespace tavlo {

namespace {

std::string listed(double count, const std::string& time) {
  if (count <= 0.0) return {};
  return time + (count == 1.0 ? "" : "x" + number_text(count)) + ", ";
}

/// One line with all points of a short data set, as the sheet takes them: "54, 187x2, >500x10".
void list_short_set(Session& session, const DataSet& data) {
  constexpr std::size_t short_set = 30;
  constexpr int single_digits = 7;
  const Sample& sample = data.sample();
  if (sample.size() >= short_set) return;
  std::string line;
  for (std::size_t i = 0; i < sample.size(); ++i) {
    const std::string x = number_text(outer_time(sample, sample.time[i]), single_digits);
    line += listed(sample.failures[i], x) + listed(sample.suspensions[i], ">" + x);
  }
  if (line.size() >= 2) line.resize(line.size() - 2);
  AppendLog(session, data.Title + "\n" + line + "\n", false);
}

/// The slot that answers what the panel asks for, whatever its slope; 0 when none does.
int answering_slot(const Session& session, const FitPanel& panel) {
  if (!find_model(panel.nModel)) return 0;  // Fit_Distribution tells so
  FitRequest request = request_of_panel(session, panel.fit_index);
  const FitSet& fits = session.project.fits(panel.fit_index);
  const int slot = find_slot(fits, request);
  if (slot == 0 || !is_current(fits.Fits(slot), session.project.data(panel.data_index))) return 0;
  request.slope = fits.Fits(slot).request.slope;
  return request == fits.Fits(slot).request ? slot : 0;
}

/// The slots of fits that the data as they are now can bring up to date.
std::vector<int> slots_to_refit(const Project& project, int index) {
  std::vector<int> slots;
  for (int slot = 1; slot <= project.fits(index).nFits; ++slot)
    if (wants_refit(project.fits(index).Fits(slot), project.data(index))) slots.push_back(slot);
  return slots;
}

/// The fits follow the data that have been read, and the log tells of all that did.
void bring_up_to_date(Session& session, int index) {
  const std::vector<int> slots = slots_to_refit(session.project, index);
  refit_all(session, index, index);
  bool is_told = false;
  for (const int slot : slots) {
    if (!is_current(session.project.fits(index).Fits(slot), session.project.data(index))) continue;
    if (!std::exchange(is_told, true))
      AppendLog(session, "\\par Data Sets have changed.  Updated Fits below. \\par", true);
    PostFitLog(session, slot, index, index);
  }
}

}  // namespace

bool CheckDirtyData(Session& session, int data_index, bool& clean) {
  DataSheet& sheet = *session.gDataForm(data_index);
  sheet.end_edit();
  const bool is_read = sheet.data().is_read();
  clean = is_read && slots_to_refit(session.project, data_index).empty();
  if (clean) return true;
  if (!is_read && !read_rows(session, data_index)) return false;
  bring_up_to_date(session, data_index);
  if (!is_read && sheet.last_row() > 0) list_short_set(session, session.project.data(data_index));
  return true;
}

void CheckAndFit(Session& session, int fit_index) {
  FitPanel& panel = *session.gFitForm(fit_index);
  if (panel.busy) return;
  if (panel.nModel < 0) return AppendLog(session, "Please select a model\n", false);
  if (panel.nMethod < 0) return;
  const BusyPanel busy(session, fit_index);
  session.step = "Fit";
  bool clean = true;
  if (!CheckDirtyData(session, panel.data_index, clean)) return;
  if (const int slot = clean ? 0 : answering_slot(session, panel)) {
    // Intake has answered this very request: it only gets its place.
    return show_again(session, panel.data_index, fit_index, slot);
  }
  const int fits_before = session.project.fits(fit_index).nFits;
  Fit_Distribution(session, panel.data_index, fit_index, panel.nModel, panel.nMethod, true, true);
  if (session.project.fits(fit_index).nFits > fits_before) Dist_Summary(session, fit_index, false);
}

}  // namespace tavlo
