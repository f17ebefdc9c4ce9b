#include "fit/door/gates.h"

namespace tavlo {

std::optional<Refusal> refuse_too_few(const Sample& sample, const Model& model, int method) {
  if (!model.gate) return std::nullopt;
  const SufficiencyGate& gate = *model.gate;
  if (gate.mle_always_passes && method == method_code::mle) return std::nullopt;
  const double failures = sample.total_failures;
  const bool enough = gate.stop_at_limit ? failures > gate.stop_below : failures >= gate.stop_below;
  if (enough) return std::nullopt;
  const double needed = gate.stop_at_limit ? gate.stop_below + 1 : gate.stop_below;
  return Refusal{RefusalCode::too_few_failures, {failures, needed}};
}

bool is_doubtful(const Sample& sample, const Model& model) {
  return model.gate && sample.total_failures < model.gate->doubt_below;
}

std::optional<Refusal> refuse_times(const Sample& sample, const Model& model) {
  const bool log_time = model.x_scale() == x_scale::log || model.routine == FitRoutine::by_mode;
  if (!log_time || sample.size() == 0 || sample.time.front() > 0) return std::nullopt;
  return Refusal{
      RefusalCode::time_not_above_zero,
      {static_cast<double>(sample.entry.front()), outer_time(sample, sample.time.front())}};
}

}  // namespace tavlo
