#include "fit/door/data_notes.h"

#include "fit/door/gates.h"
#include "fit/ranks/adjusted_rank.h"

namespace tavlo {
namespace {

/// A counted row in a regression has the rank of its last unit; listed, each unit has its own.
bool ranks_depend_on_listing(const Sample& sample, std::span<const ModeFit> modes) {
  const auto by_regression = [&](std::size_t row) {
    if (modes.empty()) return true;
    const auto mode = sample.mode.empty() ? 0 : static_cast<std::size_t>(sample.mode[row]);
    return mode >= 1 && mode <= modes.size() && !modes[mode - 1].refusal &&
           modes[mode - 1].method != method_code::mle;
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

}  // namespace

std::vector<Note> data_notes(const Sample& sample, const FitRequest& request,
                             std::span<const FitParam> rows, std::span<const ModeFit> modes) {
  std::vector<Note> notes;
  const Model* model = find_model(request.model);
  if (!model || rows.empty()) return notes;
  const bool regression = request.method != method_code::mle;
  if (is_doubtful(sample, *model))
    notes.push_back({NoteCode::few_failures, 0, {sample.total_failures, model->gate->doubt_below}});
  if (leaves_suspensions_out(sample, request))
    notes.push_back({NoteCode::suspensions_left_out, 0, {sample.total_suspensions}});
  if (regression && ranks_depend_on_listing(sample, modes))
    notes.push_back({NoteCode::counted_rows, 0, {}});
  if (regression && model->code == model_code::weibull3 && has_run_off(sample, rows.front()))
    notes.push_back({NoteCode::no_interior_maximum, 0, {}});
  return notes;
}

}  // namespace tavlo
