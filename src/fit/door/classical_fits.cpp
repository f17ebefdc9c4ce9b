#include "fit/door/classical_fits.h"

#include <cmath>

#include "fit/likelihood/slope_equation.h"
#include "fit/line/line_fits.h"
#include "fit/line/minimum_life.h"

namespace tavlo {
namespace {

RowAnswer fit_weibull_by_likelihood(const Sample& sample, std::optional<double> slope, int mode) {
  const WeibullLikelihood likelihood(sample, mode);
  if (!(likelihood.failures() > 0)) return Refusal{RefusalCode::no_failure, {}};
  const auto found = slope ? likelihood.at(*slope) : solve_slope(likelihood);
  if (!found) return Refusal{RefusalCode::slope_without_limit, {}};
  return RowFit{{.Scale = found->scale, .Fraction = 1, .Shape = found->shape, .Applies = 1},
                found->ln_likelihood};
}

RowAnswer fit_weibull_by_regression(const Sample& sample, bool y_on_x, std::optional<double> slope,
                                    int mode) {
  const auto off_paper = mode == 0 ? rank_off_paper(sample) : rank_off_paper_in_mode(sample, mode);
  if (off_paper) return *off_paper;
  const PaperRows rows =
      mode == 0 ? paper_rows(sample, Paper::weibull, true) : paper_rows_of_mode(sample, mode);
  return fit_weibull_line(rows, y_on_x, slope);
}

bool takes_slope(double slope) { return std::isnormal(slope) && slope > 0; }

/// A Weibayes of slope 1 is the exponential, of slope 2 the Rayleigh.
std::int16_t model_of_slope(double slope) {
  if (slope == 1) return model_code::exponential;
  return slope == 2 ? model_code::rayleigh : model_code::weibayes;
}

struct ClassicalTask {
  const Sample& sample;
  const FitRequest& request;
  const Model& model;
  Companion& companion;

  bool y_on_x() const { return request.method == method_code::y_on_x; }

  /// Of a model that fixes it; the model's own, else the one that the request gives.
  std::optional<double> slope() const {
    if (model.fixed_slope > 0) return model.fixed_slope;
    return model.fixes_slope() ? request.slope : std::nullopt;
  }

  RowAnswer run() const {
    const bool likelihood = request.method == method_code::mle;
    if (model.routine == FitRoutine::weibull) return fit_weibull(sample, request.method, slope());
    if (likelihood) return Refusal{RefusalCode::no_such_fit, {}};
    if (const auto off_paper = rank_off_paper(sample)) return *off_paper;
    if (model.code == model_code::weibull3)
      return fit_minimum_life_line(sample, !y_on_x(), companion);
    if (model.routine == FitRoutine::normal || model.routine == FitRoutine::gumbel)
      return fit_other_line(sample, model, y_on_x());
    return Refusal{RefusalCode::no_such_fit, {}};
  }
};

FitAnswer in_outer_unit(const ClassicalTask& task, const RowFit& inner) {
  const Sample& sample = task.sample;
  const auto row = outer_row(task.model.code, inner.row, sample.exponent);
  if (const auto* refusal = std::get_if<Refusal>(&row)) return {*refusal, {}};
  Fit fit;
  fit.life.model = task.model.fixes_slope() ? model_of_slope(inner.row.Shape) : task.model.code;
  fit.life.rows = {std::get<FitParam>(row)};
  fit.quality =
      task.request.method == method_code::mle
          ? ln_likelihood_in_outer_unit(inner.quality, sample.total_failures, sample.exponent)
          : inner.quality;
  return {fit, {}};
}

}  // namespace

RowAnswer fit_weibull(const Sample& sample, int method, std::optional<double> slope, int mode) {
  if (method == method_code::mle) return fit_weibull_by_likelihood(sample, slope, mode);
  return fit_weibull_by_regression(sample, method == method_code::y_on_x, slope, mode);
}

FitAnswer fit_classical(const Sample& sample, const FitRequest& request, Companion& companion) {
  const Model& model = *find_model(request.model);
  const ClassicalTask task{sample, request, model, companion};
  if (model.fixes_slope() && !takes_slope(task.slope().value_or(0)))
    return {Refusal{RefusalCode::slope_missing, {}}, {}};
  const RowAnswer answer = task.run();
  if (const auto* refusal = std::get_if<Refusal>(&answer)) return {*refusal, {}};
  return in_outer_unit(task, std::get<RowFit>(answer));
}

}  // namespace tavlo
