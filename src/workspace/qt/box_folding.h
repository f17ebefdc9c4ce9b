// Box folding: a routine that fails on ten thousand rows reports ten thousand
// times. Within one command of the user the first three of a run of equal boxes
// are shown and the others become one box that tells how many there were.
#pragma once

#include <optional>

#include "ports/prompts.h"

namespace tavlo {

class BoxFolding {
 public:
  static constexpr int shown_at_most = 3;

  /// Counts the box; false when it is one more of a long run and stays away. A
  /// box that asks something is always shown: nobody may answer for the user.
  bool wants_showing(const Box& box);

  /// Ends the run: the box that stands for those that stayed away, or nothing.
  std::optional<Box> end_run();

  /// True when the box goes on with the present run.
  bool continues(const Box& box) const;

 private:
  Box last_;
  int count_ = 0;
};

}  // namespace tavlo
