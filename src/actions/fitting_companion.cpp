#include "actions/fitting_companion.h"

#include "actions/words.h"

namespace tavlo {

bool FittingCompanion::fault(const char* where, const RunTimeError& error) {
  constexpr double seconds_between_equal_boxes = 5;
  FitDialogue& run = session_.fitting;
  Clock& clock = session_.ports.clock;
  if (stop_wanted()) return false;
  const bool repeated = error.number() == run.fault_error;
  if (repeated && clock.steady_seconds() - run.fault_seconds <= seconds_between_equal_boxes)
    return true;
  cancelled_ = session_.ports.prompts.show(retry_box(where, error)) == BoxAnswer::cancel;
  run.fault_error = error.number();
  run.fault_seconds = clock.steady_seconds();  // the time to answer doesn't count
  return !cancelled_;
}

bool FittingCompanion::doubt(Doubt code) {
  return code == Doubt::few_failures ? accepts_few_failures() : accepts_minimum_life();
}

bool FittingCompanion::accepts_few_failures() {
  int& warned = session_.fitting.doubts_warned;
  const int flag = model_.gate ? model_.gate->warned_flag : 0;
  if ((warned & flag) != 0) return true;
  const Box box = doubt_box(Doubt::few_failures, model_);
  if (session_.ports.prompts.show(box) != BoxAnswer::ok) return false;
  warned |= flag;
  return true;
}

bool FittingCompanion::accepts_minimum_life() {
  bool& warned = session_.fitting.minimum_life_warned;
  if (warned) return true;
  warned = true;
  const Box box = doubt_box(Doubt::minimum_life_by_likelihood, model_);
  return session_.ports.prompts.show(box) != BoxAnswer::cancel;
}

}  // namespace tavlo
