// History: the states that a project has been in, so that a person can go back and forth
// between them. States share what they have in common.
#pragma once

#include <cstdint>
#include <deque>
#include <string>

#include "project/project.h"

namespace tavlo {

class History {
 public:
  /// The oldest steps go when there are more, or when they take more memory.
  static constexpr std::size_t most_steps = 500;
  static constexpr std::size_t usual_bytes = std::size_t{256} << 20;

  explicit History(const Project& start, std::size_t most_bytes = usual_bytes)
      : most_bytes_(most_bytes) {
    restart(start);
  }

  /// Forgets all steps.
  void restart(const Project& start);

  /// Takes in what a command has made of the project, as a step of that name. Steps that
  /// were undone are gone then.
  void note(const Project& now, const std::string& name);

  /// Takes in a change that is no step of its own, as of the part of a chart that is seen.
  void note_view(const Project& now);

  /// The state that was noted last, or gone back to.
  const Project& now() const { return states_[at_].project; }

  bool can_undo() const { return at_ > 0; }
  bool can_redo() const { return at_ + 1 < states_.size(); }
  /// Of the step that would be undone or done again; empty when there is none.
  std::string undo_name() const { return can_undo() ? states_[at_].step : std::string(); }
  std::string redo_name() const { return can_redo() ? states_[at_ + 1].step : std::string(); }

  /// The project as it was before the last step, or after the next; as it is at an end.
  const Project& undo();
  const Project& redo();

  /// True when undo or redo can bring a state of the work back.
  bool holds_work(std::int64_t work) const;

  /// What the states take, but for what they share: an estimate.
  std::size_t bytes() const;

 private:
  struct State {
    Project project;
    std::string step;  ///< that led here
    std::size_t bytes = 0;
  };
  void keep(std::size_t place, const Project& now);
  void drop_oldest();

  std::size_t most_bytes_;
  std::deque<State> states_;
  std::size_t at_ = 0;
};

}  // namespace tavlo
