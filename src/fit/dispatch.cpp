#include "fit/dispatch.h"

#include "fit/classical_fits.h"
#include "fit/gates.h"
#include "fit/reports.h"
#include "numerics/number_text.h"
#include "project/models.h"

namespace tavlo {

namespace {

/// The hourglass, for as long as it lives.
class BusyPointer {
 public:
  explicit BusyPointer(Views& views) : views_(views) { views_.busy_pointer(true); }
  ~BusyPointer() { views_.busy_pointer(false); }
  BusyPointer(const BusyPointer&) = delete;
  BusyPointer& operator=(const BusyPointer&) = delete;

 private:
  Views& views_;
};

/// What became of the fit itself.
struct Outcome {
  int slot = 0;
  bool calculated = false;  ///< in this call; a fit that stood already is only shown
  bool available = true;    ///< false when no routine fits this model by this method
};

bool has_data(const Session& session, int data_index) {
  const DataSheet& sheet = *session.gDataForm(data_index);
  return sheet.bclean || sheet.lrows >= 2;
}

int new_slot(FitSet& fits, std::int16_t model_code, std::int16_t method_code, double slope) {
  FitResult fit = fits.Fits(0);
  fit.Method = method_code;
  fit.ModelCode = model_code;
  fit.Status = FitStatus::not_calculated;
  fit.Label = fs_ModelNames(model_code, method_code).short_name;
  fit.nRows = 1;
  fit.Rows = Slots<FitParam>(1);
  fit.Rows(1).Shape = slope;
  fits.Fits.resize(fits.nFits);
  fits.Fits.push_back(std::move(fit));
  return ++fits.nFits;
}

/// The routines take the size of a time on a logarithmic axis, so a negative one
/// would be fitted as what it is not. Points stand in ascending order of X.
bool refuses_negative_times(Prompts& prompts, const Model& model, const DataSet& data) {
  if (model.x_scale() != x_scale::log || data.Count < 1 || !(data.Points(1).X < 0.0F)) return false;
  const DataPoint& row = data.Points(1);
  prompts.show({"Negative times",
                "Row " + std::to_string(row.Order > 0 ? row.Order : 1) + ": Data X is " +
                    number_text(static_cast<double>(row.X), 7) + ".  The model " + model.long_name +
                    " needs times above 0.\nFit Cancelled",
                BoxIcon::exclamation, BoxButtons::ok});
  return true;
}

/// Runs the routine of the model; false when there is none, after saying so.
bool run_routine(Session& session, const Model& model, DataSet& data, FitResult& fit) {
  if (model.routine == FitRoutine::weibull && !model.fixes_slope()) {
    Fit_Wb123(session.errors, session.ports.prompts, data, fit, 1);
    return true;
  }
  session.ports.prompts.show({"Not available yet",
                              std::string(model.long_name) + " is not available yet.",
                              BoxIcon::exclamation, BoxButtons::ok});
  return false;
}

/// Finds or makes the slot and fits it unless it stands calculated. A new fit
/// that fails leaves no trace.
Outcome fit_slot(Session& session, int data_index, int fit_index, const Model& model,
                 std::int16_t method_code) {
  constexpr double free_slope = -1.0;
  FitSet& fits = session.gFit(fit_index);
  Outcome outcome{find_slot(fits, model.code, method_code), false, true};
  if (outcome.slot == 0) outcome.slot = new_slot(fits, model.code, method_code, free_slope);
  FitResult& fit = fits.Fits(outcome.slot);
  if (fit.Status == FitStatus::calculated) return outcome;

  // A refit must not take the slope of the old fit for a slope that was asked for.
  const Slots<FitParam> old_rows = fit.Rows;
  if (fit.nRows >= 1) fit.Rows(1).Shape = free_slope;
  outcome.available = run_routine(session, model, session.gData(data_index), fit);
  outcome.calculated = fit.Status == FitStatus::calculated;
  if (!outcome.calculated) fit.Rows = old_rows;
  if (outcome.slot == fits.nFits && !outcome.calculated) {
    fits.nFits -= 1;
    fits.Fits.resize(fits.nFits);
  }
  return outcome;
}

/// Shows the fit on the last chart: its first plot set takes the fit, its axes
/// the paper of the model.
void redraw_chart(Session& session, const Model& model, int slot) {
  if (session.nCharts < 1) return;
  Chart& chart = session.gChart(session.nCharts);
  if (session.settings.ShowLast) {
    chart.Markers(1).FitNumber = slot;
    chart.Axes(0).ScaleType = static_cast<std::int16_t>(model.x_scale());
    chart.Axes(1).ScaleType = static_cast<std::int16_t>(model.y_scale());
  }
  session.gChartNow = chart;
  session.ports.views.chart_changed(session.nCharts);
}

void fit_and_show(Session& session, int data_index, int fit_index, const Model& model,
                  std::int16_t method_code, bool draw, bool report) {
  const Outcome outcome = fit_slot(session, data_index, fit_index, model, method_code);
  Load_Fit(session, fit_index);
  if (!outcome.available) return;
  const bool slot_stands = outcome.slot <= session.gFit(fit_index).nFits;
  if (draw)
    redraw_chart(session, model, slot_stands ? outcome.slot : session.gFit(fit_index).nFits);
  if (report && outcome.calculated) PostFitLog(session, outcome.slot, data_index, fit_index);
}

}  // namespace

void Fit_Distribution(Session& session, int data_index, int fit_index, std::int16_t& model_code,
                      std::int16_t method_code, bool draw, bool report) {
  const auto words = error_words("Error calculating Fit: ", "Fit_Distribution routine:");
  guarded(session.errors, words, [&] {
    const double failures = session.gData(data_index).Points(0).Fails;
    if (!passes_gate(session.ports.prompts, model_code, method_code, failures,
                     session.fit_doubts_warned))
      return;
    const Model* model = find_model(model_code);
    if (!model) throw RunTimeError(run_time::invalid_argument);
    if (refuses_negative_times(session.ports.prompts, *model, session.gData(data_index))) return;
    const BusyPointer busy(session.ports.views);
    if (!has_data(session, data_index)) {
      AppendLog(session, "Please enter data for set # " + std::to_string(data_index) + "\n", false);
      return;
    }
    fit_and_show(session, data_index, fit_index, *model, method_code, draw, report);
  });
}

}  // namespace tavlo
