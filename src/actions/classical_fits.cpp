#include "actions/classical_fits.h"

#include <cmath>
#include <limits>
#include <optional>
#include <string>

#include "actions/compensated_sum.h"
#include "actions/likelihood.h"
#include "actions/paper_coordinates.h"
#include "actions/polynomial_fit.h"
#include "actions/row_faults.h"
#include "actions/slope_equation.h"
#include "life/models.h"
#include "numerics/elementary.h"
#include "numerics/real.h"
#include "solver/mixture_functions.h"

namespace tavlo {
namespace {

constexpr int mode_index = 2;

/// What a fit leaves behind when it succeeds; until then nothing is stored.
struct WeibullFit {
  double scale = 0;
  double shape = 0;
  double quality = 0;
};

/// A fit at work: what the steps share.
struct WeibullTask {
  ErrorReporter& reporter;
  DataSet& data;
  const Model& model;
  int method;
  int index;
  double shape;              ///< the slope on entry
  std::string refusal = {};  ///< why there is no fit, for the report

  bool one_mode() const { return index == mode_index; }
};

/// The slope that the model itself gives, or the one on entry.
double slope_of_model(const Model& model, double shape) {
  if (model.fixed_slope > 0) return model.fixed_slope;
  return model.fixes_slope() && shape <= 0 ? 1.0 : shape;
}

LikelihoodValue likelihood_at_fixed_slope(const WeibullTask& task) {
  return WeibullLikelihood(task.data, task.one_mode()).at(task.shape);
}

LikelihoodValue maximum_likelihood(WeibullTask& task) {
  const WeibullLikelihood likelihood(task.data, task.one_mode());
  if (likelihood.failures() == 0) {
    task.refusal = "There is no failure among the data.";
    throw RunTimeError(run_time::division_by_zero);
  }
  if (const auto closed = one_failure_one_suspension(task.data, likelihood.failures()))
    return *closed;
  if (const auto solved = solve_slope(likelihood, task.shape)) return *solved;
  task.refusal = likelihood.has_maximum()
                     ? "The likelihood equation has no solution."
                     : "No failure comes before the largest time: the slope has no limit.";
  throw RunTimeError(run_time::overflow);
}

WeibullFit fit_by_likelihood(WeibullTask& task) {
  const LikelihoodValue value =
      task.model.fixes_slope() ? likelihood_at_fixed_slope(task) : maximum_likelihood(task);
  return {value.scale, value.shape, value.ln_likelihood};
}

/// r squared of a given line, over all rows with failures. By failure mode too:
/// rows of other modes take part, which stored results depend on.
double quality_of_line(const WeibullTask& task, double beta, double ln_eta) {
  const auto index = static_cast<std::size_t>(task.index);
  const DataPoint* rows = task.data.Points.data();
  const bool y_on_x = task.method == method_code::y_on_x;
  CompensatedSum about_line;
  CompensatedSum about_mean;
  std::optional<double> first;
  bool has_spread = false;
  for (int i = 1; i <= task.data.Count; ++i) {
    if (!(rows[i].Fails > 0)) continue;
    const double x = rows[i].XT[index];
    const double y = rows[i].YT[index];
    const double off_line = y_on_x ? y - (beta * x - beta * ln_eta) : x - (y / beta + ln_eta);
    const double off_mean = y_on_x ? y - rows[0].YT[index] : x - rows[0].XT[index];
    about_line += rows[i].Fails * off_line * off_line;
    about_mean += rows[i].Fails * off_mean * off_mean;
    if (!first) first = y_on_x ? y : x;
    has_spread = has_spread || *first != (y_on_x ? y : x);
  }
  // Equal values differ from their mean by rounding alone, which is no spread.
  const double spread = has_spread ? finite(about_mean.value()) : 0.0;
  return fd_RSquared(task.reporter, finite(about_line.value()), spread);
}

/// A line of the given slope through the weighted means.
WeibullFit line_of_fixed_slope(const WeibullTask& task) {
  const auto index = static_cast<std::size_t>(task.index);
  const DataPoint& means = task.data.Points(0);
  const Real beta = task.shape;
  const Real ln_scale = Real(means.YT[index]) / beta - means.XT[index];
  return {exp(ln_scale).value(), beta.value(),
          quality_of_line(task, beta.value(), (-ln_scale).value())};
}

WeibullFit line_of_free_slope(const WeibullTask& task, const Slots<double>& c, double quality) {
  const Real c0 = c(0);
  const Real c1 = c(1);
  if (task.method == method_code::y_on_x) return {exp(c0 / c1).value(), c1.value(), quality};
  return {exp(-c0).value(), (1 / c1).value(), quality};
}

/// Nothing when the regression has failed and said so. Without coefficients a
/// free slope ends in a division by zero, which is reported on top.
std::optional<WeibullFit> fit_by_regression(const WeibullTask& task) {
  if (!task.one_mode())
    write_coordinates(task.data, true, [](double Y) { return fd_WblY(std::fabs(Y)); });
  const bool y_on_x = task.method == method_code::y_on_x;
  const bool is_fixed = y_on_x ? task.shape >= 0 : task.shape > 0;
  Slots<double> coefficients(1);
  double r_squared = 0;
  const bool solved =
      PolyFitD(task.reporter, task.data,
               {.order = y_on_x ? 1 : -1, .index = task.index, .means_suffice = is_fixed},
               coefficients, r_squared);
  if (is_fixed) {
    const bool has_means = solved || r_squared <= -4.0;
    return has_means ? std::optional(line_of_fixed_slope(task)) : std::nullopt;
  }
  const WeibullFit line = line_of_free_slope(task, coefficients, r_squared);
  return solved ? std::optional(line) : std::nullopt;
}

/// A scale that has sunk to nothing would show as an eta of 0.
WeibullFit with_real_scale(WeibullTask& task, const WeibullFit& fit) {
  if (fit.scale >= std::numeric_limits<double>::min()) return fit;
  task.refusal = "The fit has a characteristic life beyond all numbers.";
  throw RunTimeError(run_time::overflow);
}

std::optional<WeibullFit> fit_weibull(WeibullTask& task) {
  if (task.method == method_code::mle) return with_real_scale(task, fit_by_likelihood(task));
  const auto fit = fit_by_regression(task);
  return fit ? std::optional(with_real_scale(task, *fit)) : std::nullopt;
}

void store(FitResult& fit, FitParam& row, const WeibullFit& result) {
  fit.Quality = result.quality;
  fit.Status = FitStatus::calculated;
  row = {.Scale = result.scale, .Fraction = 1, .Shape = result.shape, .T0 = 0, .Applies = 1};
}

}  // namespace

void Fit_Wb123(ErrorReporter& reporter, Prompts& prompts, DataSet& data, FitResult& fit,
               int index) {
  std::string refusal;
  const auto words = [&](ErrorReporter& to) {
    to.add_lines({"Weibull 123Par Fit: "});
    if (!refusal.empty()) to.add_lines({refusal});
    add_zero_time_line(to, data);
    if (fit.Method != method_code::mle) add_rank_line(to, data);
    to.add_lines({"Fit_Wb123 routine:"});
  };
  guarded(reporter, words, [&] {
    const Model* model = find_model(fit.ModelCode);
    if (!model || model->routine != FitRoutine::weibull) {
      prompts.show({"", fit.Method == method_code::mle
                            ? "Model not programmed in Fit_wb123"
                            : "Fit_WB123 Min Life model not programmed yet"});
      return;
    }
    FitParam& row = fit.Rows(index == mode_index ? data.Points(0).Mode : 1);
    WeibullTask task{reporter, data, *model, fit.Method, index, slope_of_model(*model, row.Shape)};
    try {
      if (const auto result = fit_weibull(task)) store(fit, row, *result);
    } catch (const RunTimeError&) {
      refusal = task.refusal;
      throw;
    }
  });
}

}  // namespace tavlo
