#include "fit/door/fit.h"

#include "fit/door/classical_fits.h"
#include "fit/door/fit_by_mode.h"
#include "fit/door/gates.h"
#include "fit/line/paper.h"
#include "fit/ranks/adjusted_rank.h"
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

/// A counted row in a regression has the rank of its last unit; listed, each unit has its own.
bool ranks_depend_on_listing(const Sample& sample, const Fit& fit) {
  const auto by_regression = [&](std::size_t row) {
    if (fit.modes.empty()) return true;
    const auto mode = static_cast<std::size_t>(sample.mode[row]);
    return mode >= 1 && mode <= fit.modes.size() && !fit.modes[mode - 1].refusal &&
           fit.modes[mode - 1].method != method_code::mle;
  };
  for (std::size_t i = 0; i < sample.size(); ++i)
    if (whole_steps(sample.failures[i]) > 1 && by_regression(i)) return true;
  return false;
}

/// From so many spans of the failures below them on, ln(t - t0) is a straight line.
bool has_run_off(const Sample& sample, const FitParam& row) {
  constexpr double far_away = 1000;
  double first = 0, last = 0;
  for (std::size_t i = sample.size(); i-- > 0;)
    if (sample.failures[i] > 0) {
      first = outer_time(sample, sample.time[i]);
      if (last == 0) last = first;
    }
  return first - row.T0 > far_away * (last - first);
}

std::vector<Note> notes_of(const Sample& sample, const FitRequest& request, const Model& model,
                           const Fit& fit) {
  std::vector<Note> notes;
  if (is_doubtful(sample, model))
    notes.push_back({NoteCode::few_failures, 0, {sample.total_failures, model.gate->doubt_below}});
  if (is_regression(request) && ranks_depend_on_listing(sample, fit))
    notes.push_back({NoteCode::counted_rows, 0, {}});
  if (is_regression(request) && model.code == model_code::weibull3 &&
      has_run_off(sample, fit.life.rows.front()))
    notes.push_back({NoteCode::no_interior_maximum, 0, {}});
  return notes;
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
  const std::vector<Note> notes = notes_of(sample, request, *model, *answer.fit());
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
