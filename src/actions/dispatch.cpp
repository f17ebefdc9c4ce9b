#include "actions/dispatch.h"

#include <optional>

#include "actions/fit_routines.h"
#include "actions/gates.h"
#include "actions/reports.h"
#include "actions/slope_question.h"
#include "life/models.h"
#include "numerics/number_text.h"

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
  const bool log_time = model.x_scale() == x_scale::log || model.routine == FitRoutine::by_mode;
  if (!log_time || data.Count < 1 || !(data.Points(1).X < 0.0F)) return false;
  const DataPoint& row = data.Points(1);
  prompts.show({"Negative times",
                "Row " + std::to_string(row.Order > 0 ? row.Order : 1) + ": Data X is " +
                    number_text(static_cast<double>(row.X), 7) + ".  The model " + model.long_name +
                    " needs times above 0.\nFit Cancelled",
                BoxIcon::exclamation, BoxButtons::ok});
  return true;
}

/// A slope that differs from that of a finished Weibayes asks for a new one.
void forget_other_slope(FitResult& fit, const Model& model, double slope) {
  if (model.code == model_code::weibayes && fit.Status == FitStatus::calculated && fit.nRows >= 1 &&
      fit.Rows(1).Shape != slope)
    fit.Status = FitStatus::stale;
}

/// Fits a slot. A failed attempt leaves its model and rows as they were.
Outcome calculate(Session& session, int data_index, int fit_index, FitResult& fit,
                  const Model& model, double slope) {
  // A refit must not take the slope of the old fit for a slope that was asked for.
  const Slots<FitParam> old_rows = fit.Rows;
  const FitStatus old_status = fit.Status;
  if (fit.nRows >= 1) fit.Rows(1).Shape = slope;
  Outcome outcome;
  outcome.available = run_routine(session, model, data_index, fit_index, fit);
  // A fit by failure mode that ends early leaves the code of a plain Weibull,
  // and would answer for that model.
  outcome.calculated = fit.Status == FitStatus::calculated && fit.ModelCode == model.code;
  if (outcome.calculated) return outcome;
  fit.Rows = old_rows;
  fit.ModelCode = model.code;
  fit.Status = old_status;
  return outcome;
}

/// Finds or makes the slot and fits it unless it stands calculated. A new fit
/// that fails leaves no trace.
Outcome fit_slot(Session& session, int data_index, int fit_index, const Model& model,
                 std::int16_t method_code, double slope) {
  FitSet& fits = session.gFit(fit_index);
  int slot = find_slot(fits, model.code, method_code);
  if (slot == 0) slot = new_slot(fits, model.code, method_code, slope);
  FitResult& fit = fits.Fits(slot);
  forget_other_slope(fit, model, slope);
  Outcome outcome;
  if (fit.Status != FitStatus::calculated)
    outcome = calculate(session, data_index, fit_index, fit, model, slope);
  outcome.slot = slot;
  if (slot == fits.nFits && fits.Fits(slot).Status != FitStatus::calculated) {
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
  if (session.settings.ShowLast) chart.Markers(1).FitNumber = slot;
  // A model without axes of its own is drawn on the paper that the chart has.
  if (session.settings.ShowLast && model.y_scale() != 0) {
    chart.Axes(0).ScaleType = static_cast<std::int16_t>(model.x_scale());
    chart.Axes(1).ScaleType = static_cast<std::int16_t>(model.y_scale());
  }
  session.gChartNow = chart;
  session.ports.views.chart_changed(session.nCharts);
}

struct Request {
  int data_index;
  int fit_index;
  std::int16_t method_code;
  bool draw;
  bool report;
};

void fit_and_show(Session& session, const Request& request, const Model& model, double slope) {
  const auto& [data_index, fit_index, method_code, draw, report] = request;
  const Outcome outcome = fit_slot(session, data_index, fit_index, model, method_code, slope);
  Load_Fit(session, fit_index);
  if (!outcome.available) return;
  const bool slot_stands = outcome.slot <= session.gFit(fit_index).nFits;
  if (draw)
    redraw_chart(session, model, slot_stands ? outcome.slot : session.gFit(fit_index).nFits);
  if (report && outcome.calculated) PostFitLog(session, outcome.slot, data_index, fit_index);
}

/// Slope to offer: that of the model or, for a fit that stands, the one it has.
double slope_to_offer(const FitSet& fits, const Model& model, int method_code) {
  if (model.fixed_slope > 0) return model.fixed_slope;
  const int slot = find_slot(fits, model.code, method_code);
  return slot > 0 && fits.Fits(slot).Rows.bound() >= 1 ? fits.Fits(slot).Rows(1).Shape : 0.0;
}

/// The slope to fit with, free (-1) for most models; nothing when the user has
/// named none. A slope of 1 or 2 makes the model the exponential or the Rayleigh.
std::optional<double> choose_slope(Session& session, int fit_index, std::int16_t& code,
                                   const Model& model, int method_code) {
  constexpr double free_slope = -1.0;
  if (!model.fixes_slope()) return free_slope;
  const double offered = slope_to_offer(session.gFit(fit_index), model, method_code);
  const auto slope =
      ask_slope(session.ports.prompts, session.errors, session.settings.punctuation, offered);
  if (!slope) return std::nullopt;
  code = *slope == 1   ? model_code::exponential
         : *slope == 2 ? model_code::rayleigh
                       : model_code::weibayes;
  return slope;
}

void fit_data(Session& session, const Request& request, std::int16_t& model_code) {
  Prompts& prompts = session.ports.prompts;
  const DataSet& data = session.gData(request.data_index);
  if (!passes_gate(prompts, model_code, request.method_code, data.Points(0).Fails,
                   session.fit_doubts_warned))
    return;
  const Model* model = find_model(model_code);
  if (!model) throw RunTimeError(run_time::invalid_argument);
  if (refuses_negative_times(prompts, *model, data)) return;
  const auto slope =
      choose_slope(session, request.fit_index, model_code, *model, request.method_code);
  if (!slope) return;
  const BusyPointer busy(session.ports.views);
  if (!has_data(session, request.data_index)) {
    AppendLog(session, "Please enter data for set # " + std::to_string(request.data_index) + "\n",
              false);
    return;
  }
  fit_and_show(session, request, *find_model(model_code), *slope);
}

}  // namespace

void Fit_Distribution(Session& session, int data_index, int fit_index, std::int16_t& model_code,
                      std::int16_t method_code, bool draw, bool report) {
  const auto words = error_words("Error calculating Fit: ", "Fit_Distribution routine:");
  session.solver.remark.clear();
  guarded(session.errors, words, [&] {
    fit_data(session, {data_index, fit_index, method_code, draw, report}, model_code);
  });
}

}  // namespace tavlo
