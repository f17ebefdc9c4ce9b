#include "fit/door/fit.h"

#include "fit/door/classical_fits.h"
#include "fit/door/data_notes.h"
#include "fit/door/fit_by_mode.h"
#include "fit/door/gates.h"
#include "fit/line/paper.h"
#include "fit/search/searched_fits.h"

namespace tavlo {
namespace {

FitAnswer refused(RefusalCode code, std::vector<double> values = {}) {
  return {Refusal{code, std::move(values)}, {}};
}

bool is_regression(const FitRequest& request) { return request.method != method_code::mle; }

/// Which routine fits a model: the classical ones, or a search.
FitAnswer run_routine(const Sample& sample, const FitRequest& request, const Model& model,
                      Companion& companion) {
  const bool regression = is_regression(request);
  if (model.routine == FitRoutine::by_mode) return fit_by_mode(sample, request);
  if (model.solver_parameters <= 2 || (model.code == model_code::weibull3 && regression))
    return fit_classical(sample, request, companion);
  if (model.code == model_code::weibull3)
    return fit_minimum_life_by_likelihood(sample, request, companion);
  if (regression)
    if (const auto off_paper = rank_off_paper(sample)) return {*off_paper, {}};
  return fit_mixture(sample, request, companion);
}

/// What stands against the fit before it begins, in the order in which a person meets it.
std::optional<Refusal> refusal_ahead(const Sample& sample, const FitRequest& request,
                                     const Model& model, Companion& companion) {
  if (const auto refusal = refuse_too_few(sample, model, request.method)) return refusal;
  const bool goes_on = !is_doubtful(sample, model) || companion.doubt(Doubt::few_failures);
  if (!goes_on) return Refusal{RefusalCode::stopped, {}};
  if (const auto refusal = refuse_times(sample, model)) return refusal;
  const bool needs_warning =
      model.code == model_code::weibull3 && request.method == method_code::mle;
  if (needs_warning && !companion.doubt(Doubt::minimum_life_by_likelihood))
    return Refusal{RefusalCode::stopped, {}};
  return std::nullopt;
}

FitAnswer fit_checked(const Sample& sample, const FitRequest& request, Companion& companion) {
  const Model* model = find_model(request.model);
  if (!model || !find_method(request.method)) return refused(RefusalCode::no_such_fit);
  if (sample.ranks != request.ranks) throw RunTimeError(run_time::invalid_argument);
  if (const auto refusal = refusal_ahead(sample, request, *model, companion)) return {*refusal, {}};
  FitAnswer answer = run_routine(sample, request, *model, companion);
  if (!answer.fit()) return answer;
  const std::vector<Note> notes =
      data_notes(sample, request, answer.fit()->life.rows, answer.fit()->modes);
  answer.notes.insert(answer.notes.begin(), notes.begin(), notes.end());
  return answer;
}

}  // namespace

FitAnswer fit(const Sample& sample, const FitRequest& request, Companion& companion) {
  try {
    return fit_checked(sample, request, companion);
  } catch (const RunTimeError& error) {
    return refused(RefusalCode::arithmetic, {static_cast<double>(error.number())});
  }
}

}  // namespace tavlo
