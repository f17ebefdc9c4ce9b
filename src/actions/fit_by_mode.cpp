#include "actions/fit_by_mode.h"

#include <algorithm>
#include <string>

#include "actions/classical_fits.h"
#include "life/models.h"

namespace tavlo {
namespace {

constexpr int rank_index_of_mode = 2;
constexpr double free_slope = -1.0;

/// Rows, not units: one row with three failures counts as one. Counts up to 2.
int failure_rows(const DataSet& data, int mode) {
  int rows = 0;
  for (int i = 1; i <= data.Count && rows < 2; ++i)
    rows += data.Points(i).Fails > 0 && data.Points(i).Mode == mode;
  return rows;
}

std::string mode_name(const DataSet& data, int mode) {
  return mode <= data.ModeNames.bound() ? data.ModeNames(mode) : std::to_string(mode);
}

void tell_insufficient(Prompts& prompts, const std::string& mode) {
  prompts.show({"Insufficient Data", "For the failure mode:  " + mode +
                                         "\nThere is only one failure and no right-tail "
                                         "suspensions.  A Fit by Failure Mode cannot be "
                                         "calculated."});
}

void tell_likelihood(Prompts& prompts, const std::string& mode) {
  prompts.show({"Only One Failure for Mode",
                "For the failure mode:  " + mode +
                    "\nThere is only one failure and right-tail suspensions.  A Rank Regression "
                    "fit cannot be calculated.  MLE will be used\nFor this failure mode."});
}

/// False when the routine ends with this mode: a fit without one of its modes
/// would show what isn't there.
bool fit_mode(ErrorReporter& reporter, Prompts& prompts, DataSet& data, FitResult& fit, int mode) {
  const auto fit_now = [&] {
    fit.Status = FitStatus::not_calculated;
    Fit_Wb123(reporter, prompts, data, fit, rank_index_of_mode);
    return fit.Status == FitStatus::calculated;
  };
  data.Points(0).Mode = static_cast<std::int16_t>(mode);
  if (failure_rows(data, mode) >= 2) return fit_now();
  if (data.Points(data.Count).Mode == mode) {
    tell_insufficient(prompts, mode_name(data, mode));
    return false;
  }
  if (fit.Method == method_code::mle) return fit_now();
  tell_likelihood(prompts, mode_name(data, mode));
  const std::int16_t asked_for = fit.Method;
  fit.Method = method_code::mle;
  const bool made = fit_now();
  fit.Method = asked_for;
  return made;
}

}  // namespace

void Fit_by_Mode(ErrorReporter& reporter, Prompts& prompts, DataSet& data, FitResult& fit) {
  prompts.show({"", "Fit_ByMode model not programmed yet"});
  const auto words = error_words("Error calculating Fit: ", "Fit_by_Mode routine:");
  guarded(reporter, words, [&] {
    fit.Rows = Slots<FitParam>(std::max(data.nModes, 0));
    for (FitParam& row : fit.Rows) row.Shape = free_slope;
    fit.ModelCode = model_code::weibull2;
    for (int mode = 1; mode <= data.nModes; ++mode)
      if (!fit_mode(reporter, prompts, data, fit, mode)) return;
    fit.ModelCode = model_code::by_failure_mode;
  });
}

}  // namespace tavlo
