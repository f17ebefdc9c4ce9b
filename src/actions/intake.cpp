#include "actions/intake.h"

#include <algorithm>
#include <string>

#include "actions/dispatch.h"
#include "actions/reports.h"
#include "files/sync_data.h"
#include "numerics/number_text.h"
#include "project/fit_records.h"

namespace tavlo {

namespace {

constexpr const char* calculate_caption = "&Calculate Fit";
constexpr const char* working_caption = "working";

bool has_row_without_x(const Grid& grid, int rows) {
  for (int r = 1; r <= rows; ++r)
    if (grid.text(r, sheet_column::x).empty()) return true;
  return false;
}

/// Rows without an X go to the end and are emptied; the sheet forgets them.
void drop_empty_rows(DataSheet& sheet) {
  Grid& grid = sheet.grd_Data;
  const int old_rows = std::min(sheet.lrows, grid.rows() - 1);
  if (!has_row_without_x(grid, old_rows)) return;
  grid.sort_rows(1, old_rows, sheet_column::x, false);
  int last = old_rows;
  while (last > 0 && grid.text(last, sheet_column::x).empty()) --last;
  if (last == old_rows) return;
  grid.clear({last + 1, sheet_column::x, old_rows, sheet_column::comment});
  sheet.lrows = last;
}

void number_rows(DataSheet& sheet) {
  for (int r = 1; r < sheet.grd_Data.rows(); ++r)
    sheet.grd_Data.set_text(r, sheet_column::order, std::to_string(r));
}

/// Cleans and reads the sheet: the record gets the rows in ascending order of
/// X, the sheet goes back to the order of entry. False when a cell can't be read.
bool read_sheet(Session& session, int data_index) {
  DataSheet& sheet = *session.gDataForm(data_index);
  Grid& grid = sheet.grd_Data;
  const int row = grid.row();
  const int column = grid.column();
  drop_empty_rows(sheet);
  grid.sort_rows(1, sheet.lrows, sheet_column::order, true);
  number_rows(sheet);
  grid.sort_rows(1, sheet.lrows, sheet_column::x, true);
  if (session.settings.SortRaw) number_rows(sheet);
  const bool readable = Sync_Data(session, data_index, true, true);
  grid.sort_rows(1, sheet.lrows, sheet_column::order, true);
  grid.go_to(std::min(row, grid.rows() - 1), column);
  session.ports.views.sheet_changed(data_index);
  return readable;
}

std::string listed(double count, const std::string& x, const char* end) {
  if (count <= 0.0) return {};
  return (count == 1.0 ? x : number_text(count) + "x" + x) + end;
}

/// One line with all points of a short data set: "54, 2x187, 10x500S".
void list_short_set(Session& session, int data_index) {
  constexpr int short_set = 30;
  constexpr int single_digits = 7;
  const DataSet& data = session.project.data(data_index);
  if (data.Count >= short_set) return;
  std::string line;
  for (int i = 1; i <= data.Count; ++i) {
    const std::string x = number_text(data.Points(i).X, single_digits);
    line += listed(data.Points(i).Fails, x, ", ") + listed(data.Points(i).Susps, x, "S, ");
  }
  if (line.size() >= 2) line.resize(line.size() - 2);
  AppendLog(session, data.Title + "\n" + line + "\n", false);
}

/// The busy flag and the caption of the button, for as long as it lives.
class BusyPanel {
 public:
  BusyPanel(Session& session, int fit_index) : session_(session), index_(fit_index) {
    session_.gFitForm(index_)->busy = true;
    session_.ports.views.fit_button_caption(index_, working_caption);
  }
  ~BusyPanel() {
    session_.gFitForm(index_)->busy = false;
    session_.ports.views.fit_button_caption(index_, calculate_caption);
    const std::string& remark = session_.gFitForm(index_)->remark;
    session_.ports.views.status(remark.empty() ? "Ready" : "Ready.  " + remark);
  }
  BusyPanel(const BusyPanel&) = delete;
  BusyPanel& operator=(const BusyPanel&) = delete;

 private:
  Session& session_;
  int index_;
};

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

/// Fits and chart follow the data that have just been read.
void bring_up_to_date(Session& session, int index) {
  DataSet& data = session.project.data(index);
  DataSheet& sheet = *session.gDataForm(index);
  refit_all(session, index, index);
  sheet.bclean = true;
  sheet.nclean = 0;
  data.FitsCurrent = true;
  data.Changed = 0;
  if (const int last = session.project.fits(index).nFits; last > 0)
    show_on_chart(session, index, last);
}

}  // namespace

bool CheckDirtyData(Session& session, int data_index, bool& clean, bool refit) {
  DataSheet& sheet = *session.gDataForm(data_index);
  sheet.txt_Edit_LostFocus();
  clean = sheet.bclean;
  if (clean) return true;
  const bool has_fits = session.project.fits(data_index).nFits > 0;
  if (refit && has_fits)
    AppendLog(session, "\\par Data Sets have changed.  Updated Fits below. \\par", true);
  if (sheet.lrows < 1) return true;
  if (!read_sheet(session, data_index)) return false;
  list_short_set(session, data_index);
  if (refit) bring_up_to_date(session, data_index);
  Load_Fit(session, data_index);
  return true;
}

void CheckAndFit(Session& session, int fit_index) {
  FitPanel& panel = *session.gFitForm(fit_index);
  if (panel.busy) return;
  if (panel.nModel < 0) return AppendLog(session, "Please select a model\n", false);
  if (panel.nMethod < 0) return;
  const BusyPanel busy(session, fit_index);
  bool clean = true;
  if (!CheckDirtyData(session, panel.data_index, clean, true)) return;
  if (const int slot = clean ? 0 : answering_slot(session, panel)) {
    // Intake has answered this very request: it only gets its entry and its place.
    show_on_chart(session, fit_index, slot);
    return PostFitLog(session, slot, panel.data_index, fit_index);
  }
  Fit_Distribution(session, panel.data_index, fit_index, panel.nModel, panel.nMethod, true, true);
}

}  // namespace tavlo
