#include "project/history.h"

namespace tavlo {

void History::restart(const Project& start) {
  states_.assign(1, {});
  at_ = 0;
  keep(states_.front(), start);
}

void History::note(const Project& now, const std::string& name) {
  states_.resize(++at_);
  keep(states_.emplace_back(), now);
  states_.back().step = name;
  if (states_.size() > most_steps + 1) {
    states_.pop_front();
    --at_;
  }
}

void History::note_view(const Project& now) { keep(states_[at_], now); }

const Project& History::undo() {
  if (can_undo()) --at_;
  return states_[at_].project;
}

const Project& History::redo() {
  if (can_redo()) ++at_;
  return states_[at_].project;
}

void History::keep(State& state, const Project& now) {
  state.project = now;
  forget_samples(state.project);
}

}  // namespace tavlo
