// Wizard: a walk through the flow chart, with its history. It gives advice only: it knows no
// project and changes nothing.
#pragma once

#include <array>

#include "guidance/wizard_table.h"

namespace tavlo {

class Wizard {
 public:
  /// The number of the present step.
  int state() const { return state_; }

  /// The present step; an empty one at a number without.
  const WizardStep& step() const;

  /// How many answers lead here.
  int depth() const { return depth_; }

  /// The class of the number of failures: 1 none, 2 one, 3 to 9, 4 to 19, 5 to 100, 6 more; 0
  /// before that question. Going back does not take it back.
  int failures() const { return failures_; }

  /// Takes an answer by its place, from 1; does nothing where the step has none of that place.
  void answer(int place);

  /// Goes on from an action. Any other step goes back to the question of the last answer.
  void check();

  /// To the question before the last one: the present step is in no history, so the first time
  /// one is passed over. Does nothing before the second answer.
  void back();

  /// To the question that back() came from last; does nothing at the end of the history.
  void forward();

  /// A turn of the wheel by so many notches: up is back, anything else forward.
  void turn_wheel(int notches);

 private:
  void go_to(int state);

  static constexpr int last_slot = 90;
  int state_ = 0;
  int depth_ = 0;
  int failures_ = 0;
  std::array<int, last_slot + 1> history_{};  ///< the states of the answers, 0 behind the last
};

}  // namespace tavlo
