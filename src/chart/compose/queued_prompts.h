// Queued prompts: keeps the boxes of one composition back until it has ended and
// shows each text once. A modal box in the middle would let a paint event begin
// another composition, and a chart with a fault would show the same box at every
// step of a resize.
#pragma once

#include <algorithm>
#include <utility>
#include <vector>

#include "ports/prompts.h"

namespace tavlo {

class QueuedPrompts : public Prompts {
 public:
  explicit QueuedPrompts(Prompts& prompts) : prompts_(prompts) {}

  BoxAnswer show(const Box& box) override {
    const auto same = [&](const Box& other) { return other.text == box.text; };
    if (std::none_of(boxes_.begin(), boxes_.end(), same)) boxes_.push_back(box);
    return BoxAnswer::ok;
  }

  /// A composition asks for nothing.
  std::optional<std::string> ask_line(const std::string&, const std::string&,
                                      const std::string&) override {
    return std::nullopt;
  }
  std::optional<std::string> choose_file(const FileRequest&) override { return std::nullopt; }

  void show_all() {
    for (const Box& box : std::exchange(boxes_, {})) prompts_.show(box);
  }

 private:
  Prompts& prompts_;
  std::vector<Box> boxes_;
};

}  // namespace tavlo
