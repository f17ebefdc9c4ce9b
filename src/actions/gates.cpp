#include "actions/gates.h"

#include <string>

namespace tavlo {

namespace {

std::string stop_text(const SufficiencyGate& gate) {
  std::string text = gate.stop_words;
  if (text.empty()) {
    const std::string parameters = gate.parameters;
    text = "At least " + parameters + " points are needed to do a " + parameters +
           " parameter Weibull.  At least " + gate.preferred + " points are preferred.";
  }
  return text + "\nFit Cancelled";
}

std::string doubt_text(const SufficiencyGate& gate) {
  return std::string("At least ") + gate.doubt_names + " failures are preferred for a " +
         gate.parameters +
         " parameter Weibull.  The program may not converge.  Be careful with your "
         "interpretation of the fit.\nClick 'OK' to continue, 'Cancel' to cancel analysis.";
}

bool stops(const SufficiencyGate& gate, int method_code, double failures) {
  if (gate.mle_always_passes && method_code == method_code::mle) return false;
  return gate.stop_at_limit ? !(failures > gate.stop_below) : !(failures >= gate.stop_below);
}

}  // namespace

bool passes_gate(Prompts& prompts, int model_code, int method_code, double failures, int& warned) {
  const Model* model = find_model(model_code);
  if (!model || !model->gate) return true;
  const SufficiencyGate& gate = *model->gate;
  if (stops(gate, method_code, failures)) {
    const std::string title = gate.stop_title;
    if (!title.empty())
      prompts.show({title, stop_text(gate), BoxIcon::exclamation, BoxButtons::ok});
    return false;
  }
  if (failures >= gate.doubt_below || (warned & gate.warned_flag) != 0) return true;
  const Box doubt{gate.doubt_title, doubt_text(gate), BoxIcon::question, BoxButtons::ok_cancel};
  if (prompts.show(doubt) != BoxAnswer::ok) return false;
  warned |= gate.warned_flag;
  return true;
}

}  // namespace tavlo
