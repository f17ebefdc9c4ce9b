#include "guidance/wizard.h"

#include <algorithm>

namespace tavlo {

namespace {

constexpr int failures_question = 6;

int next_of(const WizardAnswer& answer, int failures) {
  return failures < answer.below ? answer.next_below : answer.next;
}

}  // namespace

const WizardStep& Wizard::step() const {
  static const WizardStep none;
  const WizardStep* const found = find_wizard_step(state_);
  return found ? *found : none;
}

void Wizard::go_to(int state) {
  state_ = state;
  if (step().kind == StepKind::jump) state_ = next_of(step().answers.front(), failures_);
}

// Back takes one from the depth and two states: who goes on and back for long gets ever deeper,
// and the oldest answers are forgotten.
void Wizard::answer(int place) {
  if (step().kind != StepKind::question || place < 1 || place > ssize(step().answers)) return;
  if (depth_ == last_slot - 1) {
    std::shift_left(history_.begin(), history_.end(), 1);
    --depth_;
  }
  const auto slot = static_cast<std::size_t>(++depth_);
  history_[slot] = state_;
  history_[slot + 1] = 0;
  if (state_ == failures_question) failures_ = place;
  go_to(next_of(step().answers[static_cast<std::size_t>(place) - 1], failures_));
}

void Wizard::check() {
  const int next = step().after_check;
  go_to(next != 0 ? next : history_[static_cast<std::size_t>(depth_)]);
}

void Wizard::back() {
  if (depth_ < 2) return;
  go_to(history_[static_cast<std::size_t>(--depth_)]);
}

// State 0 in the history reads as its end.
void Wizard::forward() {
  const int next = history_[static_cast<std::size_t>(depth_) + 1];
  if (next == 0) return;
  ++depth_;
  go_to(next);
}

void Wizard::turn_wheel(int notches) { notches >= 1 ? back() : forward(); }

}  // namespace tavlo
